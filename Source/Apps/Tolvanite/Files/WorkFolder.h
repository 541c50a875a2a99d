#pragma once

#include <csignal>
#include <filesystem>
#include <functional>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

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

    /// Moves the file `name` to `target`, and before it all others into `beside`, each as a whole.
    /// A file that would replace one that stays is not moved. Each file gets the permissions of the
    /// one that it replaces, so that nobody can read it who could not read that one. No signal
    /// interrupts this.
    ///
    /// Nothing is moved where a folder is in the way of any of them. Empty on success, otherwise
    /// the reason, with the name of the file where it is not `target`.
    std::string moveOut(std::string const &name, std::filesystem::path const &target,
                        std::filesystem::path const &beside, Stays const &stays);

  private:
    /// A file of the folder and its final place.
    struct Move
    {
        std::filesystem::path from;
        std::filesystem::path to;
    };

    void watch();
    void remove();
    std::vector<Move> movesInto(std::filesystem::path const &beside, std::string const &without,
                                Stays const &stays) const;

    sigset_t _signals;
    sigset_t _formerSignals;
    std::filesystem::path _path;
    std::mutex _mutex; // held while files are moved, and while the folder is removed
    bool _isDone = false;
    std::thread _watcher;
};
} // namespace Tool
