#include "OSGMaterialResolution.h"

#include "OSGChunkMaterial.h"
#include "OSGGeometry.h"
#include "OSGGroup.h"
#include "OSGMaterialChunkOverrideGroup.h"
#include "OSGMaterialGroup.h"
#include "OSGSwitchMaterial.h"

namespace OSG
{
namespace
{
Material *chosen_material(SwitchMaterial &material)
{
    UInt32 const choice = material.getChoice();
    auto const &materials = *material.getMFMaterials();
    return choice < materials.size() ? materials[choice] : &material;
}

template <class Core>
bool resolve_material_of(Node &node)
{
    auto *const core = dynamic_cast<Core *>(node.getCore());
    if(core == nullptr || core->getMaterial() == nullptr)
        return false;
    if(auto *const choice = dynamic_cast<SwitchMaterial *>(core->getMaterial()))
        core->setMaterial(chosen_material(*choice));
    auto const *const chunks = dynamic_cast<ChunkMaterial *>(core->getMaterial());
    if(chunks != nullptr && chunks->getMFChunks()->empty())
    {
        UnrecordedRefPtr<Group> const group(Group::create());
        node.setCore(group);
    }
    return true;
}
} // namespace

bool resolve_material(Node &node)
{
    return resolve_material_of<MaterialGroup>(node) ||
           resolve_material_of<MaterialChunkOverrideGroup>(node) ||
           resolve_material_of<Geometry>(node);
}
} // namespace OSG
