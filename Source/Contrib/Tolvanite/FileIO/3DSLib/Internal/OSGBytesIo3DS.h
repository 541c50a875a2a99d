#pragma once

/// \file
/// A stream in memory for a lib3ds that was installed.

#include <iosfwd>
#include <vector>

#include "OSGContribTolvaniteApi.h"
#include "OSGMemManager.h"
#include "lib3ds.h"

namespace OSG
{
/// The rest of a stream, for a library in C through which no exception may pass and which goes on
/// after a read that has failed. What it reads behind the end is zero.
class OSG_CONTRIBTOLVANITE_API BytesIo3DS
{
  public:
    /// Reads the rest of the stream and reports progress. Raises what the stream raises.
    explicit BytesIo3DS(std::istream &in);
    BytesIo3DS(BytesIo3DS const &) = delete;
    BytesIo3DS &operator=(BytesIo3DS const &) = delete;

    /// Sets `self` and the functions that seek, tell and read.
    void connect(Lib3dsIo &io);
    /// Whether bytes behind the end were wanted.
    bool hasEndedEarly() const { return _hasEndedEarly; }

  private:
    static long seek(void *self, long offset, Lib3dsIoSeek origin);
    static long tell(void *self);
    static std::size_t read(void *self, void *buffer, std::size_t size);

    std::vector<char, MemAllocator<char>> _bytes;
    std::size_t _at = 0; // may lie behind the end
    bool _hasEndedEarly = false;
};
} // namespace OSG
