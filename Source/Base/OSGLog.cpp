#include "OSGLog.h"

#include <algorithm>
#include <atomic>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <iostream>
#include <mutex>
#include <new>
#include <streambuf>

#include "OSGMemManager.h"

namespace OSG
{
Log *osgLogP = nullptr;
Int32 GlobalSystemState = 0;
std::ostream *Log::_nilstreamP = nullptr;

namespace
{
constexpr int LevelCount = LOG_PROGRESS + 1;
char const *const LevelNames[LevelCount] = {"DUMP",   "FATAL", "WARNING",
                                            "NOTICE", "INFO",  "PROGRESS"};
constexpr char const *DefaultModule = "OpenSG";

int level_index(LogLevel level) { return std::clamp(static_cast<int>(level), 0, LevelCount - 1); }

/// Discards what is written to it.
class NilBuffer : public std::streambuf
{
  protected:
    int_type overflow(int_type c) override { return traits_type::not_eof(c); }
    std::streamsize xsputn(char const *, std::streamsize n) override { return n; }
};

/// Collects stream output and hands it to the sink as one message when it is flushed.
class SinkBuffer : public std::streambuf
{
  public:
    void setTarget(Log *log, LogLevel level)
    {
        _log = log;
        _level = level;
    }
    using Deliver = void (*)(Log *log, LogLevel level, char const *text);
    Deliver deliver = nullptr;

  protected:
    int_type overflow(int_type c) override
    {
        if(!traits_type::eq_int_type(c, traits_type::eof()))
            _text.push_back(traits_type::to_char_type(c));
        return traits_type::not_eof(c);
    }
    std::streamsize xsputn(char const *text, std::streamsize n) override
    {
        _text.append(text, static_cast<std::size_t>(n));
        return n;
    }
    int sync() override
    {
        if(_text.empty())
            return 0;
        std::string text;
        text.swap(_text);
        deliver(_log, _level, text.c_str());
        return 0;
    }

  private:
    std::string _text;
    Log *_log = nullptr;
    LogLevel _level = LOG_WARNING;
};

/// The text `begin` followed by a formatted message of any length. A short message needs no memory.
/// Where there is no memory for a long one, its beginning is kept, because logging must not raise
/// errors.
class FormattedText
{
  public:
    FormattedText(char const *begin, char const *format, std::va_list arguments)
    {
        std::va_list again;
        va_copy(again, arguments);
        int const beginSize = std::snprintf(_inline, sizeof(_inline), "%s", begin);
        std::size_t const before = std::min(std::size_t(beginSize), sizeof(_inline) - 1);
        int const length =
            std::vsnprintf(_inline + before, sizeof(_inline) - before, format, arguments);
        if(length >= static_cast<int>(sizeof(_inline) - before))
            formatInBlock(begin, std::size_t(beginSize), format, std::size_t(length) + 1, again);
        va_end(again);
    }
    ~FormattedText() { MemFree(_block); }
    FormattedText(FormattedText const &) = delete;
    FormattedText &operator=(FormattedText const &) = delete;

    char const *c_str() const { return _block != nullptr ? _block : _inline; }

  private:
    void formatInBlock(char const *begin, std::size_t beginSize, char const *format,
                       std::size_t size, std::va_list arguments)
    {
        _block = static_cast<char *>(MemMalloc(beginSize + size));
        if(_block == nullptr)
            return;
        std::memcpy(_block, begin, beginSize);
        std::vsnprintf(_block + beginSize, size, format, arguments);
    }

    char _inline[1024] = {};
    char *_block = nullptr;
};
} // namespace

struct Log::State
{
    State()
        : nil(&nilBuffer)
    {
        for(int i = 0; i < LevelCount; ++i)
        {
            sinkBuffers[i].deliver = &State::deliver;
            sinkStreams[i].rdbuf(&sinkBuffers[i]);
            sinkStreams[i].clear();
        }
    }

    static void deliver(Log *log, LogLevel level, char const *text)
    {
        State &state = *log->_state;
        std::lock_guard<std::recursive_mutex> const guard(state.mutex);
        if(state.sink != nullptr)
            state.sink(level, DefaultModule, text, state.user);
    }

    // Recursive: a sink may call the log, and a message may be logged while a LogLock is held.
    std::recursive_mutex mutex;
    std::atomic<int> level{LOG_WARNING};
    std::atomic<bool> restricted{false}; // true where `modules` is not empty
    std::string modules;
    std::ostream *out = &std::cerr;
    LogSink sink = nullptr;
    void *user = nullptr;
    LogLevel messageLevel = LOG_WARNING; // of the last header
    char const *messageModule = DefaultModule;
    char const *messageFormat = "";
    char header[512] = {}; // written together with its text; longer headers are cut
    NilBuffer nilBuffer;
    std::ostream nil;
    SinkBuffer sinkBuffers[LevelCount];
    std::ostream sinkStreams[LevelCount] = {std::ostream(nullptr), std::ostream(nullptr),
                                            std::ostream(nullptr), std::ostream(nullptr),
                                            std::ostream(nullptr), std::ostream(nullptr)};
};

Log::Log()
    : _state(new State)
{
    for(int i = 0; i < LevelCount; ++i)
        _state->sinkBuffers[i].setTarget(this, static_cast<LogLevel>(i));
    if(_nilstreamP == nullptr)
        _nilstreamP = &_state->nil;
}

Log::~Log()
{
    if(_nilstreamP == &_state->nil)
        _nilstreamP = nullptr;
    delete _state;
}

void Log::setLogLevel(LogLevel level) { _state->level = level; }

LogLevel Log::getLogLevel() const { return static_cast<LogLevel>(_state->level.load()); }

bool Log::checkLevel(LogLevel level) const
{
    return static_cast<int>(level) <= _state->level.load(std::memory_order_relaxed);
}

void Log::setModules(char const *names)
{
    std::lock_guard<std::recursive_mutex> const guard(_state->mutex);
    std::string list;
    for(char const *c = names; c != nullptr && *c != '\0'; ++c)
    {
        if(*c != ' ')
            list.push_back(*c);
    }
    _state->restricted = !list.empty();
    _state->modules = list.empty() ? list : "," + list + ",";
}

bool Log::checkModule(char const *module) const
{
    if(!_state->restricted)
        return true;
    std::lock_guard<std::recursive_mutex> const guard(_state->mutex);
    std::string const wanted = "," + std::string(module != nullptr ? module : "") + ",";
    return _state->modules.find(wanted) != std::string::npos;
}

std::ostream &Log::stream(LogLevel level)
{
    if(!checkLevel(level))
        return nilstream();
    std::lock_guard<std::recursive_mutex> const guard(_state->mutex);
    return _state->sink != nullptr ? _state->sinkStreams[level_index(level)] : *_state->out;
}

std::ostream &Log::nilstream() { return _state->nil; }

void Log::setStream(std::ostream &out)
{
    std::lock_guard<std::recursive_mutex> const guard(_state->mutex);
    _state->out = &out;
}

void Log::setSink(LogSink sink, void *user)
{
    std::lock_guard<std::recursive_mutex> const guard(_state->mutex);
    _state->sink = sink;
    _state->user = user;
}

void Log::lock() { _state->mutex.lock(); }

void Log::unlock()
{
    if(_state->header[0] != '\0')
    {
        *_state->out << _state->header;
        _state->header[0] = '\0';
    }
    _state->mutex.unlock();
}

void Log::doHeader(LogLevel level, char const *module, char const *file, UInt32 line,
                   char const *function)
{
    _state->messageLevel = level;
    _state->messageModule = module;
    if(_state->sink != nullptr)
        return;
    std::snprintf(_state->header, sizeof(_state->header), "%s: (%s:%u %s) ",
                  LevelNames[level_index(level)], file, line, function);
}

void Log::doLog(char const *format, ...)
{
    std::va_list arguments;
    va_start(arguments, format);
    doLogList(format, arguments);
    va_end(arguments);
}

void Log::doLogList(char const *format, std::va_list arguments)
{
    FormattedText const text(_state->header, format, arguments);
    _state->header[0] = '\0';
    _state->messageFormat = format;
    if(_state->sink != nullptr)
        _state->sink(_state->messageLevel, _state->messageModule, text.c_str(), _state->user);
    else
        _state->out->write(text.c_str(), static_cast<std::streamsize>(std::strlen(text.c_str())))
            .flush();
}

char const *Log::getMessageFormat() const { return _state->messageFormat; }

void doInitLog()
{
    static std::mutex mutex;
    std::lock_guard<std::mutex> const guard(mutex);
    std::atomic_ref<Log *> log(osgLogP);
    if(log.load() == nullptr)
        log.store(new Log); // never deleted: messages may come until the process ends
}

LogLock::LogLock(std::ostream &out)
    : _out(out)
{
    if(osgLogP == nullptr)
        doInitLog();
    osgLogP->lock();
}

LogLock::~LogLock()
{
    _out.flush();
    osgLogP->unlock();
}

void log_message(LogLevel level, char const *file, UInt32 line, char const *function,
                 char const *format, ...)
{
    std::va_list arguments;
    va_start(arguments, format);
    if(GlobalSystemState > 3)
    {
        std::vprintf(format, arguments);
        va_end(arguments);
        return;
    }
    std::atomic_ref<Log *> shared(osgLogP);
    try
    {
        if(shared.load() == nullptr)
            doInitLog();
    }
    catch(std::bad_alloc const &)
    {
        // There is no memory for a log. Logging must not raise errors, so the message goes to
        // stderr.
        std::vfprintf(stderr, format, arguments);
        va_end(arguments);
        return;
    }
    Log &log = *shared.load();
    if(log.checkLevel(level) && log.checkModule(DefaultModule))
    {
        std::lock_guard<Log> const guard(log);
        log.doHeader(level, DefaultModule, file, line, function);
        log.doLogList(format, arguments);
    }
    va_end(arguments);
}
} // namespace OSG
