#include "OSGStbImageFileType.h"

#include "OSGImage.h"

namespace OSG
{
StbImageFileType::StbImageFileType(char const **suffixes, UInt16 suffixBytes, Format const &format)
    : ImageFileType(suffixes, suffixBytes, false, 0, ReadSupported | WriteSupported)
    , _format(format)
{
}

StbImageFileType::~StbImageFileType() = default;

TransitPtr<Image> StbImageFileType::read(std::istream &in) const
{
    PictureBytes bytes = read_picture_bytes(in, _format.signature, _format.signatureSize);
    if(bytes.empty() || !_format.isComplete(bytes))
        return nullptr;
    StbBlocks const blocks = _format.prepare != nullptr ? _format.prepare(bytes) : StbBlocks::Fixed;
    return decode_picture(bytes, _format.maxExpansion, blocks);
}

bool StbImageFileType::write(Image const &image, std::ostream &out) const
{
    return encode_picture(image, _format.format, out);
}
} // namespace OSG
