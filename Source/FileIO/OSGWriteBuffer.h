#pragma once

/// \file
/// Text output for the scene file types: formatted insertion into a stream, in large blocks.

#include <iosfwd>
#include <memory>
#include <string_view>
#include <vector>

#include "OSGBaseTypes.h"
#include "OSGFileIOApi.h"
#include "OSGMemManager.h"

namespace OSG
{
/// Writes to a stream what the stream's own insertion operators would write, but in blocks.
///
/// Numbers with a fraction have the format of the stream: its flags, precision and locale as they
/// are when the buffer is made. Whole numbers are decimal and have no separators, because a reader
/// could not read others. Field widths do not count. Formatting is fast where nobody has changed
/// the stream's format.
///
/// Errors are those of the stream: once it has failed, nothing more is written to it. The text
/// reaches the stream with flush(), which the destructor does not call.
class OSG_FILEIO_API WriteBuffer
{
  public:
    /// Bytes given to the stream at a time.
    static constexpr std::size_t BlockBytes = 64 * 1024;

    /// Keeps a reference to `out`.
    explicit WriteBuffer(std::ostream &out);
    WriteBuffer(WriteBuffer const &) = delete;
    WriteBuffer &operator=(WriteBuffer const &) = delete;
    ~WriteBuffer();

    WriteBuffer &put(std::string_view text);
    WriteBuffer &put(char c)
    {
        makeRoom(1);
        *_end++ = c;
        return *this;
    }
    WriteBuffer &put(UInt32 number);
    WriteBuffer &put(Real32 number);
    /// Gives the text to the stream, and flushes the stream.
    void flush();

  private:
    void makeRoom(std::size_t bytes)
    {
        if(static_cast<std::size_t>(_block.data() + BlockBytes - _end) < bytes)
            empty();
    }
    void empty();

    std::ostream &_out;
    std::vector<char, MemAllocator<char>> _block;
    char *_end;
    std::unique_ptr<std::ostringstream> _format; // null where the stream has the plain format
};
} // namespace OSG
