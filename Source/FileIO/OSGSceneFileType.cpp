#include "OSGSceneFileType.h"

#include "OSGNode.h"
#include "OSGSceneFileHandler.h"

namespace OSG
{
SceneFileType::SceneFileType(char const *suffixes[], UInt16 sizeInBytes, bool override,
                             UInt32 overridePriority, UInt32 flags)
    : IOFileTypeBase(suffixes, sizeInBytes, override, overridePriority, flags)
{
    SceneFileHandlerBase::the()->addSceneFileType(this);
}

SceneFileType::SceneFileType(SceneFileType const &source)
    : IOFileTypeBase(source)
{
    SceneFileHandlerBase::the()->addSceneFileType(this);
}

SceneFileType::~SceneFileType() = default;

std::list<std::string> &SceneFileType::suffixList() { return IOFileTypeBase::suffixList(); }
TransitPtr<Node> SceneFileType::read(std::istream &, char const *, Resolver) const
{
    return nullptr;
}
bool SceneFileType::write(Node *, std::ostream &, char const *) const { return false; }
void SceneFileType::terminate() {}
} // namespace OSG
