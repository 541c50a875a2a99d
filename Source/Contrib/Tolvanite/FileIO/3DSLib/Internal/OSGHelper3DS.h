#pragma once

/// \file
/// Makes a scene of a 3DS file.

#include <iosfwd>

#include "OSGNode.h"
#include "lib3ds.h"

namespace OSG
{
class Meshes3DS;

/// One read: parses the stream, then makes the materials and the tree.
class Helper3DS
{
  public:
    /// Keeps a reference to the stream.
    explicit Helper3DS(std::istream &in);
    Helper3DS(Helper3DS const &) = delete;
    Helper3DS &operator=(Helper3DS const &) = delete;
    ~Helper3DS();

    /// Null, with a warning, where the stream holds no file that can be read, or one that would
    /// give too large a scene. Also null for a single node that shows nothing. Commits the thread's
    /// changes after a read.
    TransitPtr<Node> operator()();

  private:
    using NodePtr = UnrecordedRefPtr<Node>;

    bool readFile();
    NodePtr convertFile();
    bool announceMeshes(Meshes3DS &meshes) const;
    void convertMaterials(Meshes3DS &meshes) const;
    NodePtr convertMeshes(Meshes3DS &meshes) const;
    NodePtr convertNodes(Meshes3DS &meshes) const;

    Lib3dsFile *file; // owned
    Lib3dsIo io;
};
} // namespace OSG
