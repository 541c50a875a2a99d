#pragma once

#include "OSGSceneFileType.h"

namespace OSG
{
/// The binary scene format, suffix "osb". It stores every container of a scene, shared ones once.
/// Docs/osb.md describes the bytes.
///
/// Reading gives null, with log lines, where the stream does not hold a complete scene: it is cut
/// short, sizes do not fit, pointers lead to the wrong class, or the nodes are not one tree.
/// Records of unknown types and fields that a container does not have are skipped with a warning.
/// Memory grows with the bytes of the stream, never with the sizes that it claims. Writing stores
/// all containers that counted pointers reach from the node. An uncounted pointer (a light's
/// beacon) is stored where its target is one of them. A read commits the thread's changes.
class OSG_FILEIO_API OSBSceneFileType : public SceneFileType
{
  public:
    OSBSceneFileType(OSBSceneFileType const &) = delete;
    OSBSceneFileType &operator=(OSBSceneFileType const &) = delete;

    static OSBSceneFileType &the() { return _the; }

    char const *getName() const override;
    TransitPtr<Node> read(std::istream &in, char const *fileNameOrExtension,
                          Resolver resolver) const override;
    bool write(Node *node, std::ostream &out, char const *fileNameOrExtension) const override;

  private:
    OSBSceneFileType();
    ~OSBSceneFileType() override;

    static OSBSceneFileType _the;
};
} // namespace OSG
