#include "OSGFileWatch.h"

#include <utility>

#include <sys/stat.h>

namespace OSG
{
FileStamp stamp_of(std::string const &file)
{
    struct stat found = {};
    if(stat(file.c_str(), &found) != 0 || !S_ISREG(found.st_mode))
        return {};
    return {true,
            found.st_dev,
            found.st_ino,
            static_cast<UInt64>(found.st_size),
            found.st_mtim.tv_sec,
            found.st_mtim.tv_nsec};
}

FileWatch::FileWatch(std::string const &file)
    : _file(file)
    , _known(stamp_of(file))
    , _last(_known)
{
}

bool FileWatch::hasChanged(Real64 seconds)
{
    if(_file.empty() || _clock.take(seconds, TimeBetweenLooks) == 0)
        return false;
    FileStamp const now = stamp_of(_file);
    FileStamp const before = std::exchange(_last, now);
    bool const isOther = now.exists && now == before && !(now == _known);
    if(isOther)
        _known = now;
    return isOther;
}
} // namespace OSG
