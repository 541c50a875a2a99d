#include "OSG3DSLibLoader.h"

#include <istream>

#include "OSGHelper3DS.h"
#include "OSGNode.h"

namespace OSG
{
char const *A3DSLibSceneFileType::_suffixA[1] = {"3ds"};

A3DSLibSceneFileType::A3DSLibSceneFileType(char const *suffixes[], UInt16 sizeInBytes,
                                           bool override, UInt32 overridePriority, UInt32 flags)
    : SceneFileType(suffixes, sizeInBytes, override, overridePriority, flags)
{
}

A3DSLibSceneFileType::A3DSLibSceneFileType(A3DSLibSceneFileType const &source) = default;
A3DSLibSceneFileType::~A3DSLibSceneFileType() = default;

char const *A3DSLibSceneFileType::getName() const { return "3DS Geometry"; }

TransitPtr<Node> A3DSLibSceneFileType::read(std::istream &in, char const *, Resolver) const
{
    if(in.fail())
        return nullptr;
    return Helper3DS(in)();
}
} // namespace OSG
