#include "OSGImageFileType.h"

#include "OSGImageFileHandler.h"

namespace OSG
{
ImageFileType::ImageFileType(char const **suffixes, UInt16 suffixBytes, bool overrides,
                             UInt32 overridePriority, UInt32 flags)
    : IOFileTypeBase(suffixes, suffixBytes, overrides, overridePriority, flags)
{
    ImageFileHandlerBase::the()->addImageFileType(this);
}

ImageFileType::~ImageFileType() = default;
} // namespace OSG
