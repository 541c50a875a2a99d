#pragma once

/// \file
/// Pictures and their files in memory for the tests of the image file types.

#include <sstream>
#include <string>

#include "OSGImage.h"
#include "OSGImageFileHandler.h"
#include "OSGImageFileType.h"
#include "RandomNumbers.h"

namespace OSG::Test
{
using ImagePtr = UnrecordedRefPtr<Image>;

inline ImagePtr random_picture(UInt32 width, UInt32 height, UInt32 channels, RandomNumbers &random)
{
    ImagePtr image(Image::create());
    image->set(width, height, channels, nullptr);
    // Runs of equal pixels and pixels of their own, so that packed formats have both.
    MField<UInt8> &pixel = image->editPixel();
    for(std::size_t i = 0; i < pixel.size(); ++i)
    {
        bool const repeats = i >= channels && (i / channels) % 16 < 9;
        pixel[i] = repeats ? pixel[i - channels] : static_cast<UInt8>(random.below(256));
    }
    return image;
}

inline ImageFileType &file_type(char const *suffix)
{
    return *ImageFileHandlerBase::the()->getFileType(suffix);
}

/// The bytes of the file that the type of `suffix` makes of `image`.
inline std::string file_of(Image const &image, char const *suffix)
{
    std::ostringstream out;
    return file_type(suffix).write(image, out) ? out.str() : std::string();
}

inline ImagePtr picture_in(std::string const &file, char const *suffix)
{
    std::istringstream in(file);
    return file_type(suffix).read(in);
}

/// True for the same size, channels and pixels.
inline bool same_picture(Image const &a, Image const &b)
{
    return a.getWidth() == b.getWidth() && a.getHeight() == b.getHeight() &&
           a.getChannels() == b.getChannels() && a.getPixel() == b.getPixel();
}
} // namespace OSG::Test
