#pragma once

#include "OSGContribTolvaniteApi.h"
#include "OSGSceneFileType.h"

namespace OSG
{
/// 3DS, suffix "3ds".
///
/// Reads meshes, materials with their textures, and the tree of the keyframer. The nodes'
/// transformations at frame 0 are applied to the vertices. Each mesh is a Group with a Group for
/// each material of the file and one for faces without a material. In each of these is a Geometry
/// of separate triangles for each smoothing group; its normals are those of the faces. Materials
/// are `ChunkMaterial`s.
///
/// A texture is looked for under the name in the file, and then with the letters of its last part
/// in the other case; see ImageFileHandlerBase::setPathHandler for further folders.
class OSG_CONTRIBTOLVANITE_API A3DSLibSceneFileType : public SceneFileType
{
  public:
    static A3DSLibSceneFileType &the() { return _the; }

    ~A3DSLibSceneFileType() override;
    char const *getName() const override;
    /// The name and the resolver are not used. Null, with a warning, where the stream holds no 3DS
    /// file, a part of it is damaged, or it would give more than 4,000,000 nodes or 20,000,000
    /// faces. Commits the thread's changes.
    TransitPtr<Node> read(std::istream &in, char const *fileNameOrExtension,
                          Resolver resolver) const override;

  protected:
    A3DSLibSceneFileType(char const *suffixes[], UInt16 sizeInBytes, bool override,
                         UInt32 overridePriority, UInt32 flags);
    A3DSLibSceneFileType(A3DSLibSceneFileType const &source);

    static char const *_suffixA[1];
    static A3DSLibSceneFileType _the;
};
} // namespace OSG
