#pragma once

#include <csignal>
#include <filesystem>
#include <mutex>
#include <thread>

namespace Tool
{
/// A folder of an unpredictable name that nobody else may enter, gone with the object.
///
/// Signals that end the program are held back in the making thread while it lives; another thread
/// waits for them, clears the folder away and lets the signal have its way. That thread is no
/// signal handler, so it may do what clearing away takes.
class WorkFolder
{
  public:
    /// Made in `parent`, "" for the current folder. Raises std::filesystem::filesystem_error where
    /// it cannot be made, std::bad_alloc where there is no memory for the thread.
    explicit WorkFolder(std::filesystem::path const &parent);
    WorkFolder(WorkFolder const &) = delete;
    WorkFolder &operator=(WorkFolder const &) = delete;
    ~WorkFolder();

    std::filesystem::path const &path() const { return _path; }

    /// Moves the files of the folder to `parent`, the one called `name` to `target`, last. No
    /// signal comes between. False, with `error` set, where one cannot be moved.
    bool moveOut(std::string const &name, std::filesystem::path const &target,
                 std::error_code &error);

  private:
    void watch();
    void remove();

    sigset_t _signals;
    sigset_t _formerSignals;
    std::filesystem::path _path;
    std::mutex _mutex; // held while files are moved and while the folder is cleared away
    bool _isDone = false;
    std::thread _watcher;
};
} // namespace Tool
