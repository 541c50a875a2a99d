#pragma once

/// \file
/// Decoders and encoders of stb. Their memory comes from MemMalloc.

#include <ostream>

#include "OSGPictureBytes.h"
#include "OSGRefCountPtr.h"

namespace OSG
{
class Image;

/// Most pixels of a row or rows of a picture: what OpenGL drivers can show, with room to spare.
constexpr UInt32 MaxPictureExtent = 32768;

/// Whether the decoder may enlarge a block that it has taken. It begins with the size that packed
/// data of the picture come to, so that one that must not stops where there are more.
enum class StbBlocks
{
    Fixed,
    Growing
};

/// The picture in `bytes`, whose format has checked already that they are complete; null where they
/// give none. Memory is taken for it only if it has no more than `maxExpansion` bytes for each byte
/// of the file beyond the first 8 MB, and neither side exceeds MaxPictureExtent. Raises
/// std::bad_alloc.
TransitPtr<Image> decode_picture(PictureBytes const &bytes, UInt64 maxExpansion, StbBlocks blocks);

enum class PictureFormat
{
    Png,
    Jpeg,
    Tga,
    Bmp
};
/// Writes `image` to `out`. False where the image has no pixels or the stream fails. Raises
/// std::bad_alloc.
bool encode_picture(Image const &image, PictureFormat format, std::ostream &out);
} // namespace OSG
