#pragma once

/// \file
/// The log of the system: levels, modules, a sink, and the macros that every message goes through.
///
/// Up to system state 3 a message goes through the global `Log`, which `doInitLog` makes when the
/// first message finds none: level and module are tested, a header with file, line and function is
/// written, then the text, all under the log's lock and in one write. Above state 3 (the system is
/// going down) the same text goes to standard output without header.

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

/// One message as a sink receives it: the text alone, without header, unbroken.
using LogSink = void (*)(LogLevel level, char const *module, char const *text, void *user);

class OSG_BASE_API Log
{
  public:
    Log();
    ~Log();
    Log(Log const &) = delete;
    Log &operator=(Log const &) = delete;

    // --- what is let through ---
    /// The default is LOG_WARNING; messages of a higher level are dropped.
    void setLogLevel(LogLevel level);
    LogLevel getLogLevel() const;
    bool checkLevel(LogLevel level) const;
    /// Comma-separated names of the modules that may speak; null or empty lets all speak.
    /// A module that is refused gets neither header nor text.
    void setModules(char const *names);
    bool checkModule(char const *module) const;

    // --- where it goes ---
    /// Stream for messages of `level`; nilstream() where the level is not let through.
    std::ostream &stream(LogLevel level);
    /// A stream that swallows everything.
    std::ostream &nilstream();
    /// Stream that header and text are written to; std::cerr by default. Not owned.
    void setStream(std::ostream &out);
    /// Receives every message that is let through, in place of the stream; null restores the
    /// stream.
    void setSink(LogSink sink, void *user);

    // --- writing; hold the lock around header and text ---
    void lock();
    void unlock();
    /// The header is held back until doLog() or unlock(), so that a message is one write.
    void doHeader(LogLevel level, char const *module, char const *file, UInt32 line,
                  char const *function);
    void doLog(char const *format, ...) __attribute__((format(printf, 2, 3)));
    /// For a sink while it receives a message: the format that the text was made by. Messages of
    /// one kind share it.
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

/// Holds the log's lock while it lives; `LogLock(osgLogP->stream(level))` guards stream output.
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

/// One printf-style message by the pattern above. Use the macros, which add the place.
OSG_BASE_API void log_message(LogLevel level, char const *file, UInt32 line, char const *function,
                              char const *format, ...) __attribute__((format(printf, 5, 6)));
} // namespace OSG

#define OSG_LOG(level, ...) ::OSG::log_message(level, __FILE__, __LINE__, __func__, __VA_ARGS__)
#define OSG_LOG_FATAL(...) OSG_LOG(::OSG::LOG_FATAL, __VA_ARGS__)
#define OSG_LOG_WARNING(...) OSG_LOG(::OSG::LOG_WARNING, __VA_ARGS__)
#define OSG_LOG_NOTICE(...) OSG_LOG(::OSG::LOG_NOTICE, __VA_ARGS__)
#define OSG_LOG_PROGRESS(...) OSG_LOG(::OSG::LOG_PROGRESS, __VA_ARGS__)
