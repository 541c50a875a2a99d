#pragma once

/// \file
/// Catches what the system logs, so that a test can compare whole lines.

#include <string>
#include <vector>

#include "OSGLog.h"

namespace OSG::Test
{
/// Receives every message while it lives; restores level and receiver at its end. Captures may
/// nest: the innermost receives. Not for messages logged after the end of the system, which go to
/// standard output.
class LogCapture
{
  public:
    struct Message
    {
        LogLevel level;
        std::string text; ///< as it was logged, line break included
    };

    /// `level` is the highest level that is let through meanwhile.
    explicit LogCapture(LogLevel level = LOG_WARNING);
    ~LogCapture();
    LogCapture(LogCapture const &) = delete;
    LogCapture &operator=(LogCapture const &) = delete;

    std::vector<Message> const &messages() const { return _messages; }
    /// The texts of all messages, or of those of one level, line breaks included.
    std::vector<std::string> texts() const;
    std::vector<std::string> texts(LogLevel level) const;
    /// All that was logged, cut at line breaks, which are left out.
    std::vector<std::string> lines() const;
    /// Number of messages with exactly this text.
    std::size_t count(std::string const &text) const;
    void clear() { _messages.clear(); }

  private:
    static void receive(LogLevel level, char const *module, char const *text, void *user);

    std::vector<Message> _messages;
    LogLevel _formerLevel;
    LogCapture *_outer;
};
} // namespace OSG::Test
