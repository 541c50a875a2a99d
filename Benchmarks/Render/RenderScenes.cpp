#include "RenderScenes.h"

#include <algorithm>
#include <cmath>
#include <map>

#include "OSGChangeList.h"
#include "OSGGeometry.h"
#include "OSGNodeWalker.h"
#include "OSGSimpleMaterial.h"
#include "OSGThread.h"
#include "SceneParts.h"
#include "Selection/Scenes.h"

namespace OSG::Bench
{
namespace
{
using MaterialPtr = UnrecordedRefPtr<SimpleMaterial>;

MaterialPtr material_of(UInt32 number)
{
    MaterialPtr material(SimpleMaterial::create());
    material->setDiffuse(Color3f(static_cast<Real32>((number + 9) % 17) / 17,
                                 static_cast<Real32>((number + 23) % 71) / 71,
                                 static_cast<Real32>((number + 97) % 251) / 251));
    return material;
}

// A square of ten by ten cells, of 200 triangles.
NodePtr patch(UInt32 column, UInt32 row)
{
    constexpr UInt32 Cells = 10;
    constexpr UInt32 Side = Cells + 1;
    Positions positions;
    for(UInt32 i = 0; i < Side * Side; ++i)
    {
        Real32 const x = static_cast<Real32>(column * Side + i % Side) * 0.1f;
        Real32 const z = static_cast<Real32>(row * Side + i / Side) * -0.1f;
        positions.emplace_back(x, std::sin(x) * std::cos(z), z);
    }
    Index index;
    for(UInt32 i = 0; i < Cells * Cells; ++i)
    {
        UInt32 const corner = i / Cells * Side + i % Cells;
        index.insert(index.end(), {corner, corner + 1, corner + Side});
        index.insert(index.end(), {corner + 1, corner + Side + 1, corner + Side});
    }
    return shape(positions, index);
}

// Fifty groups of a hundred patches beside one another.
NodePtr patches()
{
    constexpr UInt32 Groups = 50;
    constexpr UInt32 InGroup = 100;
    NodePtr root = group();
    for(UInt32 i = 0; i < Groups; ++i)
    {
        NodePtr const row = group();
        for(UInt32 j = 0; j < InGroup; ++j)
            row->addChild(patch(j, i));
        root->addChild(row);
    }
    return root;
}

struct GeometryDresser
{
    bool enter(Node *node)
    {
        if(auto *const geometry = dynamic_cast<Geometry *>(node->getCore()))
            dress(*geometry);
        return true;
    }
    void leave(Node *) {}

    // The normals of boxes point out of their corners, those of the others upwards.
    void dress(Geometry &geometry)
    {
        VectorArray const positions = geometry.getPositions()->getArray();
        UnrecordedRefPtr<GeoVec3fProperty> const normals(GeoVec3fProperty::create());
        for(UInt32 i = 0; i < positions.size(); ++i)
        {
            Vec3f normal = areBoxes ? Vec3f(positions[i]) : Vec3f(0, 1, 0);
            normal.normalize();
            normals->editValues().push_back(normal);
        }
        geometry.setNormals(normals);
        geometry.setIndex(geometry.getIndex(Geometry::PositionsSlot), Geometry::NormalsSlot);
        if(shared == nullptr || !oneMaterial)
            shared = material_of(count);
        geometry.setMaterial(shared);
        ++count;
    }

    bool areBoxes;
    bool oneMaterial;
    MaterialPtr shared = nullptr;
    UInt32 count = 0;
};

NodePtr made(DrawnScene name)
{
    switch(name)
    {
    case DrawnScene::Patches:
        return patches();
    case DrawnScene::Boxes:
        return NodePtr(scene(SceneName::S3));
    default:
        return NodePtr(scene(SceneName::S1));
    }
}
} // namespace

Node *drawn_scene(DrawnScene name)
{
    static std::map<DrawnScene, NodePtr> scenes;
    NodePtr &root = scenes[name];
    if(root == nullptr)
    {
        scene(SceneName::S3); // starts the system
        root = made(name);
        GeometryDresser dresser{name == DrawnScene::Boxes, name != DrawnScene::Patches};
        walk_children(root, dresser);
        Thread::getCurrentChangeList()->commitChanges();
        root->updateVolume();
        Thread::getCurrentChangeList()->commitChanges();
    }
    return root;
}

FrameView whole_view(DrawnScene name, Real32 angle)
{
    BoxVolume const &box = drawn_scene(name)->getVolume();
    Pnt3f center;
    box.getCenter(center);
    Real32 const radius = (box.getMax() - box.getMin()).length() / 2;
    Real32 const distance = radius * 3;
    Vec3f const away(std::sin(angle) * 0.8f, 0.6f, std::cos(angle) * 0.8f);
    return {center + away * distance, center, distance - radius, distance + radius};
}

FrameView inside_view()
{
    Pnt3f center;
    drawn_scene(DrawnScene::Boxes)->getVolume().getCenter(center);
    return {center, center + Vec3f(1, 0, 0), 0.5f, 17.f, 30.f};
}
} // namespace OSG::Bench
