#pragma once

#include <filesystem>

namespace Tool
{
/// Keeps other runs of the program from moving files into a folder while it lives, so that of two
/// runs with one target all files are those of the later one.
///
/// The lock is the system's own advice (flock) and ends with the process. The constructor waits for
/// another lock for about a second and then goes on without one, as it does where a folder cannot
/// be locked.
class FolderLock
{
  public:
    /// "" is the current folder.
    explicit FolderLock(std::filesystem::path const &folder);
    FolderLock(FolderLock const &) = delete;
    FolderLock &operator=(FolderLock const &) = delete;
    ~FolderLock();

  private:
    int _folder;
};
} // namespace Tool
