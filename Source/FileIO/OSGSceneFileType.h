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

/// A format of scenes. Constructing one makes it known to the scene file handler, which does not
/// own it; it lives as long as the process.
class OSG_FILEIO_API SceneFileType : public IOFileTypeBase
{
  public:
    /// Resolves a container that a file names but does not hold: name, the container that refers to
    /// it, a number of the format's own.
    using Resolver =
        boost::function<FieldContainer *(std::string const &, FieldContainer const *, int)>;

    // The virtual operations of every file type, in slot order.
    ~SceneFileType() override;
    char const *getName() const override = 0;
    std::list<std::string> &suffixList() override;
    /// The scene that the stream holds from where it stands; null, with log lines, where it holds
    /// none. `fileNameOrExtension` may be null.
    virtual TransitPtr<Node> read(std::istream &in, char const *fileNameOrExtension,
                                  Resolver resolver) const;
    /// False where the type does not write.
    virtual bool write(Node *node, std::ostream &out, char const *fileNameOrExtension) const;
    /// Called when the system ends.
    virtual void terminate();

  protected:
    /// As for IOFileTypeBase.
    SceneFileType(char const *suffixes[], UInt16 sizeInBytes, bool override,
                  UInt32 overridePriority, UInt32 flags);
    SceneFileType(SceneFileType const &source);
};
} // namespace OSG
