#pragma once

/// \file
/// Decodes and encodes pictures by stb, with memory from MemMalloc.

#include <ostream>

#include "OSGPictureBytes.h"
#include "OSGRefCountPtr.h"

namespace OSG
{
class Image;

/// Most bytes of pixels that encode_picture takes. The encoders count in ints, with room to spare.
inline constexpr UInt64 MaxEncodedBytes = 0x7FFFFFFF / 4;
/// Largest width and height of a picture. OpenGL drivers support no larger textures, and mostly
/// smaller ones.
constexpr UInt32 MaxPictureExtent = 32768;

/// Whether the decoder may enlarge a block. Its first block has the size of the picture's data
/// before compression. With fixed blocks decoding therefore fails where there is more data.
enum class StbBlocks
{
    Fixed,
    Growing
};

/// Decodes the picture in `bytes`, which the format has checked to be complete. Null where they
/// hold no picture. The picture may have 8 MB, and further `maxExpansion` bytes for each byte of
/// the file; neither side may exceed MaxPictureExtent. Larger pictures are refused before memory is
/// allocated. Raises std::bad_alloc.
TransitPtr<Image> decode_picture(PictureBytes const &bytes, UInt64 maxExpansion, StbBlocks blocks);

enum class PictureFormat
{
    Png,
    Jpeg,
    Tga,
    Bmp
};
/// Writes `image` to `out`. False where the image has no pixels or the stream fails. Raises
/// std::bad_alloc where there is no memory.
bool encode_picture(Image const &image, PictureFormat format, std::ostream &out);
} // namespace OSG
