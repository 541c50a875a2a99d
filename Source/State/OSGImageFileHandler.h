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

    /// The picture of a file, named by the full path; null where it gives none. Without a type hint
    /// (a suffix) the file's own suffix chooses the type, and where that fails each known type is
    /// tried in turn: names lie.
    virtual TransitPtr<Image> read(char const *fileName, char const *typeHint = nullptr);
    virtual bool write(Image const &image, char const *fileName, char const *typeHint = nullptr);

    /// Null where no type has the suffix; case does not count.
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
