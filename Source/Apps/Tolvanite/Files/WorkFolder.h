#pragma once

#include <csignal>
#include <filesystem>
#include <functional>
#include <mutex>
#include <thread>

namespace Tool
{
/// A folder with an unpredictable name that only this user may enter. The destructor removes it.
///
/// While the object lives, signals that would end the program are blocked in the thread that made
/// it. Another thread waits for them, removes the folder and then lets the signal end the program.
/// A signal handler could not do this, since few functions may be called in one.
class WorkFolder
{
  public:
    /// Makes the folder in `parent`; "" is the current folder. Raises
    /// std::filesystem::filesystem_error where it cannot be made, and std::bad_alloc where there is
    /// no memory for the thread.
    explicit WorkFolder(std::filesystem::path const &parent);
    WorkFolder(WorkFolder const &) = delete;
    WorkFolder &operator=(WorkFolder const &) = delete;
    ~WorkFolder();

    std::filesystem::path const &path() const { return _path; }

    /// Whether a file that exists stays as it is.
    using Stays = std::function<bool(std::filesystem::path const &file)>;

    /// Moves the files of the folder to `parent`, and last the file `name` to `target`. A file that
    /// would replace one that stays is not moved. No signal interrupts this. False, with `error`
    /// set, where a file cannot be moved.
    bool moveOut(std::string const &name, std::filesystem::path const &target, Stays const &stays,
                 std::error_code &error);

  private:
    void watch();
    void remove();

    sigset_t _signals;
    sigset_t _formerSignals;
    std::filesystem::path _path;
    std::mutex _mutex; // held while files are moved, and while the folder is removed
    bool _isDone = false;
    std::thread _watcher;
};
} // namespace Tool
