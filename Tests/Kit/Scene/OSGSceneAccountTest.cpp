#include "OSGSceneAccount.h"

#include <gtest/gtest.h>

#include "OSGChunkMaterial.h"
#include "OSGGeometry.h"
#include "OSGGeometryView.h"
#include "OSGGroup.h"
#include "OSGImage.h"
#include "OSGMaterialGroup.h"
#include "OSGNode.h"
#include "OSGSimpleTexturedMaterial.h"
#include "OSGSwitchMaterial.h"
#include "OSGTextureObjChunk.h"
#include "OSGTransform.h"
#include "OSGTypedGeoProperties.h"
#include "OSGVisitSubTree.h"

namespace OSG::Test
{
namespace
{
using NodePtr = UnrecordedRefPtr<Node>;
using GeometryPtr = UnrecordedRefPtr<Geometry>;
template <class T>
using Ptr = UnrecordedRefPtr<T>;

struct Run
{
    UInt32 type, length;
};

Ptr<GeoPnt3fProperty> positions(UInt32 count)
{
    Ptr<GeoPnt3fProperty> property(GeoPnt3fProperty::create());
    for(UInt32 i = 0; i < count; ++i)
        property->editValues().push_back(Pnt3f(Real32(i), Real32(i * i), 0));
    return property;
}

GeometryPtr geometry(GeoPnt3fProperty *positions, std::vector<Run> const &runs)
{
    GeometryPtr result(Geometry::create());
    Ptr<GeoUInt8Property> const types(GeoUInt8Property::create());
    Ptr<GeoUInt32Property> const lengths(GeoUInt32Property::create());
    for(Run const &run : runs)
    {
        types->push_back(run.type);
        lengths->push_back(run.length);
    }
    result->setTypes(types);
    result->setLengths(lengths);
    result->setPositions(positions);
    return result;
}

NodePtr node(NodeCore *core, std::vector<Node *> const &children = {})
{
    NodePtr result(Node::create());
    result->setCore(core);
    for(Node *child : children)
        result->addChild(child);
    return result;
}

TEST(SceneAccount, NothingHasNothing)
{
    SceneAccount const account = account_of(nullptr);
    EXPECT_EQ(account.nodes, 0u);
    EXPECT_TRUE(account.cores.empty());
    EXPECT_TRUE(account.bounds.isEmpty());
}

TEST(SceneAccount, CountsWhatTheIteratorsDeliver)
{
    GeometryPtr const shape = geometry(positions(20), {{PolygonPrimitive, 5},
                                                       {LineStripPrimitive, 4},
                                                       {PointsPrimitive, 3},
                                                       {TrianglesPrimitive, 7}});
    SceneAccount const account = account_of(node(shape));
    EXPECT_EQ(account.triangles, 3u + 2);
    EXPECT_EQ(account.lines, 3u);
    EXPECT_EQ(account.points, 3u);
    EXPECT_EQ(account.vertices, 20u);
}

TEST(SceneAccount, PointsWithoutAPositionDoNotCount)
{
    GeometryPtr const shape = geometry(positions(4), {{PointsPrimitive, 5}});
    Ptr<GeoUInt32Property> const index(GeoUInt32Property::create());
    for(UInt32 entry : {3u, 4u, 0u, 4294967295u})
        index->push_back(entry);
    shape->setIndex(index, Geometry::PositionsSlot);
    EXPECT_EQ(account_of(node(shape)).points, 2u);
}

TEST(SceneAccount, ASharedGeometryIsOneObjectShownTwice)
{
    GeometryPtr const shape = geometry(positions(3), {{TrianglesPrimitive, 3}});
    SceneAccount const account =
        account_of(node(Ptr<Group>(Group::create()), {node(shape), node(shape)}));
    EXPECT_EQ(account.nodes, 3u);
    EXPECT_EQ(account.geometries, 1u);
    EXPECT_EQ(account.triangles, 2u);
    EXPECT_EQ(account.vertices, 3u);
    EXPECT_EQ(account.cores, (std::map<std::string, UInt64>{{"Geometry", 2}, {"Group", 1}}));
}

TEST(SceneAccount, SharedPositionsCountOnce)
{
    Ptr<GeoPnt3fProperty> const shared = positions(9);
    GeometryPtr const first = geometry(shared, {{TrianglesPrimitive, 3}});
    GeometryPtr const second = geometry(shared, {{TrianglesPrimitive, 6}});
    SceneAccount const account =
        account_of(node(Ptr<Group>(Group::create()), {node(first), node(second)}));
    EXPECT_EQ(account.vertices, 9u);
    EXPECT_EQ(account.geometries, 2u);
    EXPECT_EQ(account.triangles, 3u);
}

TEST(SceneAccount, MaterialsAndImagesAreObjectsWhereverTheyHang)
{
    Ptr<Image> const image(Image::create());
    Ptr<SimpleTexturedMaterial> const textured(SimpleTexturedMaterial::create());
    textured->setImage(image);
    Ptr<TextureObjChunk> const texture(TextureObjChunk::create());
    texture->setImage(image);
    Ptr<TextureObjChunk> const otherTexture(TextureObjChunk::create());
    otherTexture->setImage(Ptr<Image>(Image::create()));
    Ptr<ChunkMaterial> const chunks(ChunkMaterial::create());
    chunks->addChunk(texture, 0);
    chunks->addChunk(otherTexture, 1);
    Ptr<SwitchMaterial> const choice(SwitchMaterial::create());
    choice->editMFMaterials()->push_back(chunks);
    choice->editMFMaterials()->push_back(textured);
    choice->editMFMaterials()->push_back(choice); // itself: a circle ends
    choice->editMFMaterials()->push_back(nullptr);

    GeometryPtr const shape = geometry(positions(3), {{TrianglesPrimitive, 3}});
    shape->setMaterial(textured);
    Ptr<MaterialGroup> const group(MaterialGroup::create());
    group->setMaterial(choice);
    SceneAccount const account = account_of(node(group, {node(shape)}));
    EXPECT_EQ(account.materials, 3u);
    EXPECT_EQ(account.images, 2u);
    choice->editMFMaterials()->clear();
}

TEST(SceneAccount, AVisitedTreeCountsOnceHoweverOftenItIsVisited)
{
    NodePtr const shared = node(Ptr<Group>(Group::create()),
                                {node(geometry(positions(3), {{TrianglesPrimitive, 3}}))});
    Ptr<VisitSubTree> const first(VisitSubTree::create());
    first->setSubTreeRoot(shared);
    Ptr<VisitSubTree> const second(VisitSubTree::create());
    second->setSubTreeRoot(shared->getChild(0));
    SceneAccount const account =
        account_of(node(Ptr<Group>(Group::create()), {node(first), node(second)}));
    EXPECT_EQ(account.nodes, 5u);
    EXPECT_EQ(account.triangles, 1u);
    EXPECT_EQ(account.cores.at("VisitSubTree"), 2u);
}

TEST(SceneAccount, VisitsInACircleEnd)
{
    Ptr<VisitSubTree> const visit(VisitSubTree::create());
    NodePtr const root = node(Ptr<Group>(Group::create()), {node(visit)});
    visit->setSubTreeRoot(root);
    EXPECT_EQ(account_of(root).nodes, 2u);
    visit->setSubTreeRoot(nullptr);
}

TEST(SceneAccount, BoundsLieInTheCoordinatesOutsideTheRoot)
{
    Ptr<Transform> const transform(Transform::create());
    Matrix moved;
    moved.setTranslate(Vec3f(10, 0, 0));
    transform->setMatrix(moved);
    SceneAccount const account =
        account_of(node(transform, {node(geometry(positions(3), {{TrianglesPrimitive, 3}}))}));
    EXPECT_EQ(account.bounds.getMin(), Pnt3f(10, 0, 0));
    EXPECT_EQ(account.bounds.getMax(), Pnt3f(12, 4, 0));
}

TEST(SceneAccount, ADeepChainIsCounted)
{
    NodePtr root(Node::create());
    for(int depth = 1; depth < 100000; ++depth)
    {
        NodePtr const above(Node::create());
        above->addChild(root);
        root = above;
    }
    EXPECT_EQ(account_of(root).nodes, 100000u);
}
} // namespace
} // namespace OSG::Test
