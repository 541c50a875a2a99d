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
/// Reads vertices, texture coordinates, normals, polygon faces and material assignment; groups,
/// objects and smoothing are passed over. All vertices of a file lie in three arrays that its
/// geometries share; each material run becomes a Geometry. Runs and faces come out newest first.
/// The only run of a file is the root itself, several stand below a Group.
class OSG_CONTRIBTOLVANITE_API OBJSceneFileTypeTN : public SceneFileType
{
  public:
    using MaterialPtr = RefCountPtr<SimpleTexturedMaterial, UnrecordedRefCountPolicy>;
    using MaterialMap = std::map<std::string, MaterialPtr>;

    static OBJSceneFileTypeTN &the() { return _the; }

    ~OBJSceneFileTypeTN() override;
    char const *getName() const override;
    /// Neither the name nor the resolver is used. Ends at the first value that cannot be read and
    /// gives everything before it, with a warning; null where no geometry could be made. Commits
    /// the thread's changes.
    TransitPtr<Node> read(std::istream &in, char const *fileNameOrExtension,
                          Resolver resolver) const override;

  protected:
    OBJSceneFileTypeTN(char const *suffixes[], UInt16 sizeInBytes, bool override,
                       UInt32 overridePriority, UInt32 flags);
    OBJSceneFileTypeTN(OBJSceneFileTypeTN const &source);

    static char const *_suffixA[1];
    static OBJSceneFileTypeTN _the;

  private:
    class Read;

    void initElemMap();
    /// Reads the text to its end, or to what cannot be read, into arrays and records.
    void readText(std::istream &in, ObjVertexArrays arrays, ObjRecords &records,
                  ObjReadClient &client) const;
    /// Adds the materials of a library to `materials`, replacing those of the same name. Gives the
    /// number of its "newmtl" entries; 0 for a file that cannot be opened.
    Int32 readMTL(char const *fileName, MaterialMap &materials) const;

    ObjElementMap dataElemMap;
    MtlElementMap mtlElemMap;
};
} // namespace OSG
