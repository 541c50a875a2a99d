#pragma once

#include <istream>
#include <ostream>

#include "OSGIOFileType.h"
#include "OSGRefCountPtr.h"
#include "OSGStateApi.h"

namespace OSG
{
class Image;

/// A format of pictures. The constructor registers it with the image file handler. The object lives
/// as long as the process.
class OSG_STATE_API ImageFileType : public IOFileTypeBase
{
  public:
    /// Reads a picture. Null where the stream holds none of this format. The sizes in a header are
    /// checked against the bytes of the stream before memory is allocated for them.
    virtual TransitPtr<Image> read(std::istream &in) const = 0;
    virtual bool write(Image const &image, std::ostream &out) const = 0;

  protected:
    /// See the constructor of IOFileTypeBase.
    ImageFileType(char const **suffixes, UInt16 suffixBytes, bool overrides,
                  UInt32 overridePriority, UInt32 flags);
    ~ImageFileType() override;
};
} // namespace OSG
