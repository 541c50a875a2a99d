#include "WritePicture.h"

#include "OSGFrameImage.h"
#include "OSGStbCodec.h"
#include "ReplaceFile.h"

namespace Tool
{
std::string refusal_of_size(OSG::UInt32 width, OSG::UInt32 height)
{
    constexpr OSG::UInt64 Channels = 3;
    if(Channels * width * height <= OSG::MaxEncodedBytes)
        return {};
    return "a size of " + std::to_string(width) + 'x' + std::to_string(height) +
           " is more than a picture file holds";
}

std::string write_picture(std::string const &target, std::vector<OSG::UInt8> const &pixels,
                          OSG::UInt32 width, OSG::UInt32 height)
{
    OSG::UnrecordedRefPtr<OSG::Image> const image(OSG::image_of(pixels, width, height));
    std::string const reason =
        replace_file(target, [&image](std::string const &path)
                     { return image != nullptr && image->write(path.c_str()); });
    return reason.empty() ? reason : "cannot write " + target + ": " + reason;
}
} // namespace Tool
