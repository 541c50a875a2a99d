#pragma once

#include <iosfwd>
#include <string>

#include <boost/function.hpp>

#include "OSGFileIOApi.h"
#include "OSGIOFileType.h"
#include "OSGRefCountPtr.h"

namespace OSG
{
class FieldContainer;
class Node;

/// A format of scenes. The constructor registers it with the scene file handler, which does not own
/// it. The object lives as long as the process.
class OSG_FILEIO_API SceneFileType : public IOFileTypeBase
{
  public:
    /// Finds a container that a file names but does not hold. The arguments are its name, the
    /// container that refers to it, and a number whose meaning depends on the format.
    using Resolver =
        boost::function<FieldContainer *(std::string const &, FieldContainer const *, int)>;

    // The virtual operations of every file type, in slot order.
    ~SceneFileType() override;
    char const *getName() const override = 0;
    std::list<std::string> &suffixList() override;
    /// Reads a scene from the current place of the stream. Null, with log lines, where there is
    /// none. `fileNameOrExtension` may be null.
    virtual TransitPtr<Node> read(std::istream &in, char const *fileNameOrExtension,
                                  Resolver resolver) const;
    /// False where the type does not write.
    virtual bool write(Node *node, std::ostream &out, char const *fileNameOrExtension) const;
    /// Called when the system ends.
    virtual void terminate();

  protected:
    /// See the constructor of IOFileTypeBase.
    SceneFileType(char const *suffixes[], UInt16 sizeInBytes, bool override,
                  UInt32 overridePriority, UInt32 flags);
    SceneFileType(SceneFileType const &source);
};
} // namespace OSG
