#pragma once

/// \file
/// Picture files that tests make up: files ending in ".fakeimg" that begin with a digit. Their
/// bytes are one row of grey and alpha pixels.

#include <iterator>

#include "OSGImage.h"
#include "OSGImageFileHandler.h"
#include "OSGImageFileType.h"

namespace OSG::Test
{
class FakeImages : public ImageFileType
{
  public:
    /// The object that is registered with the image file handler.
    static FakeImages &the()
    {
        static FakeImages *const images = new FakeImages;
        return *images;
    }

    /// Number of read calls. The caller may reset it.
    mutable int reads = 0;

    TransitPtr<Image> read(std::istream &in) const override
    {
        ++reads;
        std::string const bytes((std::istreambuf_iterator<char>(in)), {});
        if(bytes.size() < 2 || bytes[0] < '0' || bytes[0] > '9')
            return nullptr;
        TransitPtr<Image> image = Image::create();
        image->set(static_cast<UInt32>(bytes.size() / 2), 1, 2,
                   reinterpret_cast<UInt8 const *>(bytes.data()));
        return image;
    }
    bool write(Image const &, std::ostream &) const override { return false; }
    char const *getName() const override { return "Pictures of the tests"; }

  private:
    FakeImages()
        : ImageFileType(suffixes(), sizeof(char const *), true, 1, ReadSupported)
    {
    }
    static char const **suffixes()
    {
        static char const *list[1] = {"fakeimg"};
        return list;
    }
};
} // namespace OSG::Test
