#pragma once

#include <istream>
#include <ostream>

#include "OSGIOFileType.h"
#include "OSGRefCountPtr.h"
#include "OSGStateApi.h"

namespace OSG
{
class Image;

/// A format of pictures. Constructing one makes it known to the image file handler; it lives as
/// long as the process.
class OSG_STATE_API ImageFileType : public IOFileTypeBase
{
  public:
    /// Null where the stream holds no picture of the format. What a header claims is checked
    /// against the bytes that are there before memory is taken for it.
    virtual TransitPtr<Image> read(std::istream &in) const = 0;
    virtual bool write(Image const &image, std::ostream &out) const = 0;

  protected:
    /// As for IOFileTypeBase.
    ImageFileType(char const **suffixes, UInt16 suffixBytes, bool overrides, UInt32 overridePriority,
                  UInt32 flags);
    ~ImageFileType() override;
};
} // namespace OSG
