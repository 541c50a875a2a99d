#pragma once

#include <map>

#include "OSGContribTolvaniteApi.h"
#include "OSGObjElements.h"
#include "OSGSceneFileType.h"

namespace OSG
{
class ObjReadClient;
class ObjRecords;
class SimpleTexturedMaterial;
struct ObjVertexArrays;

/// Wavefront OBJ, suffix "obj".
///
/// Reads vertices, texture coordinates, normals, polygon faces and material assignments. Groups,
/// objects and smoothing are ignored. A file's vertices are in three arrays that its geometries
/// share. Each run of faces with one material becomes a Geometry. Runs and faces are in the reverse
/// order of the file. A single run is the root of the scene. Several runs are the children of a
/// Group.
class OSG_CONTRIBTOLVANITE_API OBJSceneFileTypeTN : public SceneFileType
{
  public:
    using MaterialPtr = RefCountPtr<SimpleTexturedMaterial, UnrecordedRefCountPolicy>;
    using MaterialMap = std::map<std::string, MaterialPtr>;

    static OBJSceneFileTypeTN &the() { return _the; }

    ~OBJSceneFileTypeTN() override;
    char const *getName() const override;
    /// The name and the resolver are not used. The read ends at the first value that cannot be
    /// read, with a warning, and gives everything before it. Null where there is no geometry.
    /// Commits the thread's changes.
    TransitPtr<Node> read(std::istream &in, char const *fileNameOrExtension,
                          Resolver resolver) const override;
    /// Writes triangles in the space of the tree's root; the numbers have the format of the stream.
    /// `fileName` is the real name of the target: the material library and the textures are written
    /// beside it, and replace files of their names. The library has the target's name with the
    /// suffix "mtl". A null node is an empty scene.
    ///
    /// Always true, as the state of `out` tells of the text. The scene file handler knows which of
    /// the other files could not be written, and what readers will miss. Each geometry has a
    /// material entry of its own, but a "usemtl" line only where a group above it has a material.
    bool write(Node *node, std::ostream &out, char const *fileName) const override;

  protected:
    OBJSceneFileTypeTN(char const *suffixes[], UInt16 sizeInBytes, bool override,
                       UInt32 overridePriority, UInt32 flags);
    OBJSceneFileTypeTN(OBJSceneFileTypeTN const &source);

    static char const *_suffixA[1];
    static OBJSceneFileTypeTN _the;

  private:
    class Read;

    void initElemMap();
    /// Reads the text to its end, or to the first value that cannot be read, into arrays and
    /// records.
    void readText(std::istream &in, ObjVertexArrays arrays, ObjRecords &records,
                  ObjReadClient &client) const;
    /// Adds the materials of a library to `materials`, replacing those of the same name. Returns
    /// the number of its "newmtl" entries; 0 where the file cannot be opened.
    Int32 readMTL(char const *fileName, MaterialMap &materials) const;

    ObjElementMap dataElemMap;
    MtlElementMap mtlElemMap;
};
} // namespace OSG
