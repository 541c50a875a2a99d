#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "OSGLog.h"

namespace Tool
{
/// Shows what the library logs while it lives, a line for each kind of message: its first text, the
/// line of the file where that came up in a read, and how many there were. A missing material
/// library counts the uses of its materials with it. Warnings and worse are kept until print(), the
/// rest is shown at once.
///
/// Control characters stand as \xNN, and long texts are cut.
class LogLines
{
  public:
    enum class Show
    {
        Nothing,
        Lines
    };

    /// Takes the log's sink.
    LogLines(std::ostream &out, Show show);
    /// Prints, and gives the log its stream back.
    ~LogLines();
    LogLines(LogLines const &) = delete;
    LogLines &operator=(LogLines const &) = delete;

    /// Prints what was kept.
    void print();

  private:
    struct Kind
    {
        std::string format;
        std::string text;
        OSG::UInt64 line; ///< of the first; 0 where none is known
        OSG::UInt64 count;
    };

    static void receive(OSG::LogLevel level, char const *module, char const *text, void *user);
    void take(OSG::LogLevel level, char const *text);
    Kind *find(std::string const &format);
    std::string remarksOn(Kind const &kind);

    std::ostream &_out;
    Show _show;
    std::vector<Kind> _kinds;
};
} // namespace Tool
