#pragma once

#include "OSGSceneFileType.h"

namespace OSG
{
/// The binary scene format, suffix "osb": every container of a scene with all its fields, shared
/// ones once. Docs/osb.md has the layout byte by byte.
///
/// Reading gives null, with log lines, for whatever is no complete scene of this version: cut
/// short, unknown container types, sizes that do not fit, pointers to the wrong kind, nodes that
/// are not one tree. A field that the container does not have is passed over with a warning. Memory
/// grows with what is in the stream, never with what it claims. Writing takes what counted pointers
/// reach from the node; what is only looked at (a light's beacon) is kept where it is part of that.
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
