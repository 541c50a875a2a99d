#pragma once

/// \file
/// The log of the system: levels, modules, a sink, and the macros that every message goes through.
///
/// Up to system state 3 a message goes through the global `Log`. The first message makes it by
/// `doInitLog`. The log tests level and module, then writes a header with file, line and function
/// and the text, under its lock and in one write. Above state 3 (the system has ended) the text
/// goes to standard output without a header.

#include <cstdarg>
#include <ostream>
#include <string>

#include "OSGBaseApi.h"
#include "OSGBaseTypes.h"

namespace OSG
{
enum LogLevel : int
{
    LOG_DUMP = 0, ///< what `dump` prints
    LOG_FATAL = 1,
    LOG_WARNING = 2,
    LOG_NOTICE = 3, ///< input that an engine does not know
    LOG_INFO = 4,
    LOG_PROGRESS = 5
};

/// Receives one message: its whole text, without the header.
using LogSink = void (*)(LogLevel level, char const *module, char const *text, void *user);

class OSG_BASE_API Log
{
  public:
    Log();
    ~Log();
    Log(Log const &) = delete;
    Log &operator=(Log const &) = delete;

    // --- filter ---
    /// The default is LOG_WARNING; messages of a higher level are dropped.
    void setLogLevel(LogLevel level);
    LogLevel getLogLevel() const;
    bool checkLevel(LogLevel level) const;
    /// Comma-separated names of the modules whose messages are let through. Null or empty lets all
    /// modules through.
    void setModules(char const *names);
    bool checkModule(char const *module) const;

    // --- where it goes ---
    /// The stream for messages of `level`. It is nilstream() where the level is not let through.
    std::ostream &stream(LogLevel level);
    /// A stream that discards everything.
    std::ostream &nilstream();
    /// Sets the stream that header and text are written to. The default is std::cerr. Not owned.
    void setStream(std::ostream &out);
    /// `sink` receives every message that is let through, instead of the stream. Null restores the
    /// stream.
    void setSink(LogSink sink, void *user);

    // --- writing; hold the lock around header and text ---
    void lock();
    void unlock();
    /// Keeps the header until doLog() or unlock(), so that a message is one write.
    void doHeader(LogLevel level, char const *module, char const *file, UInt32 line,
                  char const *function);
    void doLog(char const *format, ...) __attribute__((format(printf, 2, 3)));
    /// For a sink while it receives a message: the format string of the message. All messages of
    /// one kind have the same.
    char const *getMessageFormat() const;

    static std::ostream *_nilstreamP;

  private:
    friend OSG_BASE_API void log_message(LogLevel level, char const *file, UInt32 line,
                                         char const *function, char const *format, ...);
    void doLogList(char const *format, std::va_list arguments);

    struct State;
    State *_state;
};

/// The log, null until doInitLog() has run.
extern OSG_BASE_API Log *osgLogP;
/// Values of GlobalSystemState.
enum SystemState : Int32
{
    SystemLoaded = 0,   ///< before startUp
    SystemStarting = 1, ///< while it runs
    SystemRunning = 2,
    SystemEnding = 3, ///< while shutDown runs
    SystemEnded = 4
};
/// How far the system has come, a SystemState.
extern OSG_BASE_API Int32 GlobalSystemState;
/// Makes the log if there is none yet.
OSG_BASE_API void doInitLog();

/// Holds the log's lock while it lives. `LogLock(osgLogP->stream(level))` guards stream output.
class OSG_BASE_API LogLock
{
  public:
    explicit LogLock(std::ostream &out);
    ~LogLock();
    LogLock(LogLock const &) = delete;
    LogLock &operator=(LogLock const &) = delete;

    std::ostream &stream() { return _out; }

  private:
    std::ostream &_out;
};

/// Logs one printf-style message as described at the top. Use the macros, which add file, line and
/// function.
OSG_BASE_API void log_message(LogLevel level, char const *file, UInt32 line, char const *function,
                              char const *format, ...) __attribute__((format(printf, 5, 6)));
} // namespace OSG

#define OSG_LOG(level, ...) ::OSG::log_message(level, __FILE__, __LINE__, __func__, __VA_ARGS__)
#define OSG_LOG_FATAL(...) OSG_LOG(::OSG::LOG_FATAL, __VA_ARGS__)
#define OSG_LOG_WARNING(...) OSG_LOG(::OSG::LOG_WARNING, __VA_ARGS__)
#define OSG_LOG_NOTICE(...) OSG_LOG(::OSG::LOG_NOTICE, __VA_ARGS__)
#define OSG_LOG_PROGRESS(...) OSG_LOG(::OSG::LOG_PROGRESS, __VA_ARGS__)
