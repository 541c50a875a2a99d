#pragma once

#include <string>

#include "OSGTickClock.h"
#include "OSGTolvaniteKitApi.h"

namespace OSG
{
/// What the file system says of a file: which one it is, how long, and when it was written.
struct FileStamp
{
    bool exists = false; ///< as a regular file; links are followed
    UInt64 device = 0;
    UInt64 node = 0;
    UInt64 size = 0;
    Int64 seconds = 0; ///< of the last write
    Int64 nanoseconds = 0;

    friend bool operator==(FileStamp const &, FileStamp const &) = default;
};
OSG_TOLVANITEKIT_API FileStamp stamp_of(std::string const &file);

/// Tells when a file has become another one: written in place, or replaced by a file of its name.
///
/// A file is looked at every half second. It has changed when it is another one than at the
/// construction and the same as at the look before: whoever writes it has then stopped. A file that
/// is not there has not changed.
class OSG_TOLVANITEKIT_API FileWatch
{
  public:
    /// In milliseconds.
    static constexpr UInt32 TimeBetweenLooks = 500;

    FileWatch() = default; ///< of no file, which never changes
    explicit FileWatch(std::string const &file);

    std::string const &getFile() const { return _file; }
    /// True once for each change. `seconds` counts from a fixed moment; see TickClock.
    bool hasChanged(Real64 seconds);

  private:
    std::string _file;
    FileStamp _known;
    FileStamp _last;
    TickClock _clock;
};
} // namespace OSG
