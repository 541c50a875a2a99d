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
class PathHandler;

class OSG_STATE_API ImageFileHandlerBase
{
  public:
    static ImageFileHandlerBase *the();

    /// Reads the picture of a file and names it by the full path. A relative name that is no file
    /// in the current folder is looked for by the path handler. Null where no picture can be read.
    /// `typeHint` is the suffix of the type. Without it the suffix of the file chooses the type.
    /// Where this type fails, all types are tried in turn, because suffixes may be wrong.
    virtual TransitPtr<Image> read(char const *fileName, char const *typeHint = nullptr);
    virtual bool write(Image const &image, char const *fileName, char const *typeHint = nullptr);

    /// Finds pictures whose names lead to no file. Not owned; null by default, then nobody looks.
    void setPathHandler(PathHandler const *handler) { _pathHandler = handler; }
    PathHandler const *getPathHandler() const { return _pathHandler; }

    /// The type of a suffix, whose case does not matter. Null where there is none.
    ImageFileType *getFileType(char const *suffix) const;
    void addImageFileType(ImageFileType *type);

  protected:
    ImageFileHandlerBase() = default;
    virtual ~ImageFileHandlerBase();

  private:
    std::string findPicture(char const *fileName) const;

    std::vector<ImageFileType *> _types;
    PathHandler const *_pathHandler = nullptr;
};

template <>
OSG_STATE_API ImageFileHandlerBase *SingletonHolder<ImageFileHandlerBase>::the();
} // namespace OSG
