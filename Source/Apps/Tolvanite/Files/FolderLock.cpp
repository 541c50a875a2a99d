#include "FolderLock.h"

#include <cerrno>
#include <chrono>
#include <thread>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace Tool
{
FolderLock::FolderLock(std::filesystem::path const &folder)
    : _folder(open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC))
{
    // Files are moved in much less time, so a lock that stays is that of another program.
    constexpr int MostTries = 100;
    constexpr std::chrono::milliseconds Pause(10);
    for(int i = 0; i < MostTries && flock(_folder, LOCK_EX | LOCK_NB) != 0; ++i)
    {
        if(errno != EWOULDBLOCK && errno != EINTR)
            return;
        std::this_thread::sleep_for(Pause);
    }
}

FolderLock::~FolderLock()
{
    if(_folder >= 0)
        close(_folder);
}
} // namespace Tool
