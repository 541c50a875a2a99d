#include "WorkFolder.h"

#include <cerrno>
#include <cstdlib>
#include <new>
#include <string>
#include <system_error>

#include <pthread.h>

#include "FolderLock.h"

namespace Tool
{
namespace fs = std::filesystem;

namespace
{
constexpr int EndingSignals[] = {SIGHUP, SIGINT, SIGQUIT, SIGTERM};
constexpr int WakingSignal = SIGTERM; // the destructor sends it to the watching thread

fs::path make_folder(fs::path const &parent)
{
    std::string name = (parent / ".tolvanite-XXXXXX").string();
    if(mkdtemp(name.data()) == nullptr)
        throw fs::filesystem_error("no folder", std::error_code(errno, std::generic_category()));
    return name;
}

bool is_ignored(int signal)
{
    struct sigaction action = {};
    return sigaction(signal, nullptr, &action) == 0 && action.sa_handler == SIG_IGN;
}

void end_by(int signal)
{
    std::signal(signal, SIG_DFL);
    sigset_t only;
    sigemptyset(&only);
    sigaddset(&only, signal);
    pthread_sigmask(SIG_UNBLOCK, &only, nullptr);
    std::raise(signal);
}

// A file does not replace a folder.
std::error_code obstacle_of(fs::path const &, fs::path const &to)
{
    std::error_code error;
    return fs::is_directory(fs::symlink_status(to, error))
               ? std::make_error_code(std::errc::is_a_directory)
               : std::error_code();
}

std::error_code move_file(fs::path const &from, fs::path const &to)
{
    std::error_code error;
    fs::file_status const old = fs::status(to, error);
    if(fs::exists(old))
        fs::permissions(from, old.permissions(), error);
    fs::rename(from, to, error);
    return error;
}
} // namespace

WorkFolder::WorkFolder(fs::path const &parent)
{
    sigemptyset(&_signals);
    for(int const signal : EndingSignals)
        sigaddset(&_signals, signal);
    pthread_sigmask(SIG_BLOCK, &_signals, &_formerSignals);
    try
    {
        _path = make_folder(parent);
        _watcher = std::thread([this] { watch(); });
    }
    catch(...)
    {
        bool const lacksThread = !_path.empty();
        remove();
        pthread_sigmask(SIG_SETMASK, &_formerSignals, nullptr);
        if(lacksThread)
            throw std::bad_alloc();
        throw;
    }
}

WorkFolder::~WorkFolder()
{
    {
        std::lock_guard<std::mutex> const guard(_mutex);
        _isDone = true;
        remove();
    }
    pthread_kill(_watcher.native_handle(), WakingSignal);
    _watcher.join();
    pthread_sigmask(SIG_SETMASK, &_formerSignals, nullptr);
}

// The loop ends with the destructor's signal or with the program.
void WorkFolder::watch()
{
    for(int signal = 0; sigwait(&_signals, &signal) == 0;)
    {
        std::lock_guard<std::mutex> const guard(_mutex);
        if(_isDone)
            return;
        if(is_ignored(signal))
            continue;
        remove();
        end_by(signal);
    }
}

// The writing thread may go on making files. Under another name of the folder its paths lead
// nowhere, so that at most the file that it is just making comes after the first try.
void WorkFolder::remove()
{
    constexpr int MostTries = 100;
    if(_path.empty())
        return;
    std::error_code error;
    fs::path gone = _path;
    gone += "~";
    fs::rename(_path, gone, error);
    if(error)
        gone = _path;
    for(int i = 0; i < MostTries && fs::exists(gone, error); ++i)
        fs::remove_all(gone, error);
}

std::vector<WorkFolder::Move>
WorkFolder::movesInto(fs::path const &beside, std::string const &without, Stays const &stays) const
{
    std::vector<Move> moves;
    for(fs::directory_entry const &entry : fs::directory_iterator(_path))
    {
        fs::path const name = entry.path().filename();
        if(name != without && !stays(beside / name))
            moves.push_back({entry.path(), beside / name});
    }
    return moves;
}

std::string WorkFolder::moveOut(std::string const &name, fs::path const &target,
                                fs::path const &beside, Stays const &stays)
{
    FolderLock const lock(target.parent_path());
    std::lock_guard<std::mutex> const guard(_mutex);
    std::vector<Move> moves = movesInto(beside, name, stays);
    moves.push_back({_path / name, target});
    for(auto const &step : {&obstacle_of, &move_file})
    {
        for(Move const &move : moves)
        {
            if(std::error_code const error = step(move.from, move.to))
                return (&move == &moves.back() ? "" : move.to.filename().string() + ": ") +
                       error.message();
        }
    }
    return {};
}
} // namespace Tool
