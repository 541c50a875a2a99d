#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "OSGLog.h"

namespace Tool
{
/// Shows the library's log while it lives. Each kind of message gives one line: the text of the
/// first message, the line of the file that was being read, and the number of messages. The uses of
/// materials of a missing library are counted with the line about the library. Warnings and worse
/// are kept until print(); other messages are shown at once.
///
/// Control characters are shown as \xNN, and long texts are cut.
class LogLines
{
  public:
    enum class Show
    {
        Nothing,
        Lines
    };

    /// Becomes the sink of the log.
    LogLines(std::ostream &out, Show show);
    /// Prints the kept messages and restores the log's stream.
    ~LogLines();
    LogLines(LogLines const &) = delete;
    LogLines &operator=(LogLines const &) = delete;

    /// Keeps a line of the program's own, shown as a warning.
    void note(std::string const &text);
    /// Prints the kept messages.
    void print();

  private:
    struct Kind
    {
        std::string format;
        std::string text;
        OSG::UInt64 line; ///< of the first message; 0 where not known
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
