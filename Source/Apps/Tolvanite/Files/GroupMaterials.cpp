#include "GroupMaterials.h"

#include <vector>

#include "OSGChangeList.h"
#include "OSGCoreKind.h"
#include "OSGGeometry.h"
#include "OSGMakeNode.h"
#include "OSGMaterialGroup.h"
#include "OSGReachableNodes.h"
#include "OSGThread.h"

namespace Tool
{
namespace
{
using NodePtr = OSG::UnrecordedRefPtr<OSG::Node>;

void group_material(OSG::Node *node)
{
    OSG::Geometry *const geometry = OSG::core_as<OSG::Geometry>(node);
    OSG::UnrecordedRefPtr<OSG::MaterialGroup> const group(OSG::MaterialGroup::create());
    group->setMaterial(geometry->getMaterial());
    NodePtr const below(OSG::make_node(geometry));
    while(node->getNChildren() != 0)
        below->addChild(NodePtr(node->getChild(0)));
    node->setCore(group);
    node->addChild(below);
}
} // namespace

void group_materials(OSG::Node *root)
{
    std::vector<OSG::Node *> shown; // edits have to wait for the end of the walk
    OSG::for_each_reachable_node(root,
                                 [&shown](OSG::Node *node)
                                 {
                                     auto const *const geometry = OSG::core_as<OSG::Geometry>(node);
                                     if(geometry != nullptr && geometry->getMaterial() != nullptr)
                                         shown.push_back(node);
                                 });
    for(OSG::Node *const node : shown)
        group_material(node);
    OSG::Thread::getCurrentChangeList()->commitChanges();
    root->updateVolume();
}
} // namespace Tool
