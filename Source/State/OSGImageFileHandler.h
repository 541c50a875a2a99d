#pragma once

/// \file
/// Reads and writes pictures by the suffix of their file.

#include <string>
#include <vector>

#include "OSGRefCountPtr.h"
#include "OSGSingletonHolder.h"
#include "OSGStateApi.h"

namespace OSG
{
class Image;
class ImageFileType;

class OSG_STATE_API ImageFileHandlerBase
{
  public:
    static ImageFileHandlerBase *the();

    /// Reads the picture of a file and names it by the full path. Null where no picture can be
    /// read. `typeHint` is the suffix of the type. Without it the suffix of the file chooses the
    /// type. Where this type fails, all types are tried in turn, because suffixes may be wrong.
    virtual TransitPtr<Image> read(char const *fileName, char const *typeHint = nullptr);
    virtual bool write(Image const &image, char const *fileName, char const *typeHint = nullptr);

    /// The type of a suffix, whose case does not matter. Null where there is none.
    ImageFileType *getFileType(char const *suffix) const;
    void addImageFileType(ImageFileType *type);

  protected:
    ImageFileHandlerBase() = default;
    virtual ~ImageFileHandlerBase();

  private:
    std::vector<ImageFileType *> _types;
};

template <>
OSG_STATE_API ImageFileHandlerBase *SingletonHolder<ImageFileHandlerBase>::the();
} // namespace OSG
