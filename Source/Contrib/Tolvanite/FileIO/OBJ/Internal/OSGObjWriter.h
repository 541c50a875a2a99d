#pragma once

#include <iosfwd>
#include <set>
#include <vector>

#include "OSGContribTolvaniteApi.h"
#include "OSGMatrix.h"
#include "OSGWriteBuffer.h"

namespace OSG
{
class Geometry;
class Image;
class Material;
class Node;

/// The walk of one export. It writes each geometry that it meets as a group of triangles in the
/// space of the tree's root, and an entry of the material library for it.
///
/// The walk goes where rendering would: through the choices of switches and into the trees that
/// `VisitSubTree`s show. It does not go below a geometry, nor below a core that is no `Group`.
class OSG_CONTRIBTOLVANITE_API ObjWriter
{
  public:
    /// In ascending order of addresses.
    using Images = std::set<Image *>;

    /// The text goes to `out`, the entries to `library`. Both are kept as references.
    ObjWriter(WriteBuffer &out, std::ostream &library)
        : _out(out)
        , _library(library)
    {
    }

    void write(Node *root);
    /// The images that entries of the library have named.
    Images const &getImages() const { return _images; }
    /// The number of geometries whose own material has an entry, but no line that uses it. Those
    /// that a reader shows alike without it are not counted.
    UInt32 countUnusedMaterials() const { return _unusedMaterials; }

    // --- for the walker ---
    bool enter(Node *node);
    bool takeAdded(std::vector<Node *> &nodes);
    void leave(Node *node);

  private:
    /// What the walk has pushed for a node that it is below.
    enum class Pushed
    {
        Nothing,
        ItsMaterial,
        ItsOverride,
        ItsTransform
    };
    struct Level
    {
        Node const *node;
        Matrix toWorld;
        Pushed pushed;
    };
    /// Where the numbers of the next geometry's elements begin.
    struct Offsets
    {
        UInt32 position = 1;
        UInt32 normal = 1;
        UInt32 texCoord = 1;
    };

    Matrix toWorld(Node *node) const;
    bool enterBelow(Node *node, Pushed pushed);
    bool enterChoices(Node *node);
    bool enterChoice(Node *node);
    bool enterVisit(Node *node);
    void writeGeometry(Node *node);
    void writeVertices(Geometry const &geometry, Matrix const &matrix);
    void writeFaces(Geometry const &geometry);
    void writeMaterial(std::string const &name);

    WriteBuffer &_out;
    std::ostream &_library;
    std::vector<Level> _levels;
    std::vector<Node *> _added; // below the node that has just been entered
    bool _hasAdded = false;
    std::vector<Matrix> _transforms; // of the visiting nodes above, outermost first
    std::vector<Material *> _materials;
    std::vector<Material *> _overrideMaterials;
    Images _images;
    Offsets _offsets;
    UInt32 _geometry = 1; // number of the next geometry
    UInt32 _unusedMaterials = 0;
};
} // namespace OSG
