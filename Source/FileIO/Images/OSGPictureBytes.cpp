#include "OSGPictureBytes.h"

#include <algorithm>

namespace OSG
{
namespace
{
constexpr std::size_t BlockSize = 64 * 1024;

// Appends up to `count` bytes of the stream. False where the stream has fewer.
bool append(PictureBytes &bytes, std::istream &in, std::size_t count)
{
    std::size_t const had = bytes.size();
    bytes.resize(had + count);
    in.read(reinterpret_cast<char *>(bytes.data() + had), static_cast<std::streamsize>(count));
    bytes.resize(had + static_cast<std::size_t>(in.gcount()));
    return bytes.size() == had + count;
}
} // namespace

PictureBytes read_picture_bytes(std::istream &in, UInt8 const *signature, std::size_t count)
{
    PictureBytes bytes;
    bool const begins =
        append(bytes, in, count) && std::equal(bytes.begin(), bytes.end(), signature);
    if(!begins)
        return PictureBytes();
    while(append(bytes, in, BlockSize))
    {
    }
    return bytes;
}
} // namespace OSG
