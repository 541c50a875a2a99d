// The operations on random scenes: the visible triangles stay the same, and a second run changes
// nothing.

#include <map>

#include <gmock/gmock.h>

#include "OSGBillboard.h"
#include "OSGGrpMergeGraphOp.h"
#include "OSGMaterialGroup.h"
#include "OSGMemManager.h"
#include "OSGMrgGraphOp.h"
#include "OSGNodeWalker.h"
#include "OSGSimplifyRenderEngineGraphOp.h"
#include "OSGSwitch.h"
#include "OperationScenes.h"
#include "RandomNumbers.h"

namespace OSG::Test
{
namespace
{
/// Makes scenes of groups, affine transforms, material groups and geometries, every node with a
/// core. A geometry has one material group above it at most, and then no material of its own. Cores
/// are shared among nodes that have the same material group above them, or none.
class RandomScene
{
  public:
    explicit RandomScene(UInt64 seed)
        : _random(seed)
    {
    }

    NodePtr scene() { return fill(make_group(), 0, nullptr); }

  private:
    NodePtr fill(NodePtr const &node, UInt32 depth, Node *materialGroup)
    {
        UInt32 const count = depth > 6 ? 0 : _random.below(5);
        for(UInt32 i = 0; i < count; ++i)
            node->addChild(child(depth + 1, materialGroup));
        return node;
    }

    NodePtr child(UInt32 depth, Node *materialGroup)
    {
        switch(_random.below(materialGroup == nullptr ? 7 : 6))
        {
        case 0:
        case 1:
            return fill(make_group(), depth, materialGroup);
        case 2:
        case 3:
            return fill(make_transform(matrix()), depth, materialGroup);
        case 6:
        {
            NodePtr const group = Test::make<MaterialGroup>();
            core_of<MaterialGroup>(group)->setMaterial(make_material());
            return fill(group, depth, group);
        }
        default:
        {
            NodePtr const node = make_node(shape(materialGroup));
            return _random.below(4) == 0 ? fill(node, depth, materialGroup) : node;
        }
        }
    }

    GeometryPtr shape(Node const *materialGroup)
    {
        std::vector<GeometryPtr> &known = _shapes[materialGroup];
        if(!known.empty() && _random.below(3) == 0)
            return known[_random.below(static_cast<UInt32>(known.size()))];
        std::vector<Pnt3f> positions;
        for(UInt32 i = 0; i < 3 * (1 + _random.below(3)); ++i)
            positions.push_back(_random.point(-3, 3));
        GeometryPtr const made = make_geometry(one_primitive(TrianglesPrimitive, positions));
        // What tells the shapes apart, whatever becomes of their positions.
        made->setTexCoords(make_property<GeoVec2fProperty>(
            std::vector<Vec2f>{{static_cast<Real32>(_number++), 0}}));
        if(materialGroup == nullptr && _random.below(2) == 0)
            made->setMaterial(make_material());
        known.push_back(made);
        return made;
    }

    Matrix matrix()
    {
        Matrix result = translation(_random.real(-5, 5), _random.real(-5, 5), _random.real(-5, 5));
        Vec3f axis = _random.vector();
        axis.normalize();
        result.mult(rotation(axis, _random.real(-3, 3)));
        result.mult(scaling(_random.real(0.5f, 2), _random.real(-2, -0.5f), _random.real(0.5f, 2)));
        return result;
    }

    RandomNumbers _random;
    UInt32 _number = 0;
    std::map<Node const *, std::vector<GeometryPtr>> _shapes;
};

struct Triangle
{
    Real32 shape;
    Material *material;
    Pnt3f corners[3];
};

/// The triangles in the space above the root, with the material that is seen.
std::vector<Triangle> triangles_of(Node *root)
{
    struct Collector
    {
        std::vector<Triangle> found = {};
        std::vector<Material *> groups = {};

        bool enter(Node *node)
        {
            if(auto const *const group = core_of<MaterialGroup>(node))
                groups.push_back(group->getMaterial());
            if(auto const *const geometry = core_of<Geometry>(node))
                collect(*geometry, node->getToWorld());
            return true;
        }
        void leave(Node *node)
        {
            if(core_of<MaterialGroup>(node) != nullptr)
                groups.pop_back();
        }
        void collect(Geometry const &geometry, Matrix const &matrix)
        {
            Material *const material = groups.empty() ? geometry.getMaterial() : groups.front();
            auto const end = geometry.endTriangles();
            for(auto it = geometry.beginTriangles(); it != end; ++it)
            {
                Triangle triangle{geometry.getTexCoords()->getArray()[0][0], material, {}};
                for(int i = 0; i < 3; ++i)
                    triangle.corners[i] = matrix * it.getPosition(i);
                found.push_back(triangle);
            }
        }
    };
    Collector collector;
    walk_children(root, collector);
    return collector.found;
}

bool same_up_to_rounding(Triangle const &a, Triangle const &b)
{
    for(int corner = 0; corner < 3; ++corner)
    {
        for(int i = 0; i < 3; ++i)
        {
            Real32 const x = a.corners[corner][i];
            if(std::abs(x - b.corners[corner][i]) > 1e-4f * (10 + std::abs(x)))
                return false;
        }
    }
    return a.shape == b.shape && a.material == b.material;
}

/// Each triangle of the one list has its own in the other.
void expect_same(std::vector<Triangle> const &before, std::vector<Triangle> after)
{
    ASSERT_EQ(before.size(), after.size());
    for(Triangle const &triangle : before)
    {
        auto const found = std::find_if(after.begin(), after.end(),
                                        [&](Triangle const &other)
                                        { return same_up_to_rounding(triangle, other); });
        ASSERT_NE(found, after.end()) << "of shape " << triangle.shape;
        after.erase(found);
    }
}

/// Nodes and cores in the order of a walk.
std::vector<void const *> outline(Node *root)
{
    struct Outliner
    {
        std::vector<void const *> seen = {};
        bool enter(Node *node)
        {
            seen.push_back(node);
            seen.push_back(node->getCore());
            return true;
        }
        void leave(Node *) { seen.push_back(nullptr); }
    };
    Outliner outliner;
    walk_children(root, outliner);
    return outliner.seen;
}

template <class Operation>
class RandomScenes : public testing::Test
{
};
using Operations = testing::Types<MrgGraphOp, GrpMergeGraphOp>;
TYPED_TEST_SUITE(RandomScenes, Operations);

TYPED_TEST(RandomScenes, ShowTheSameTrianglesWithTheSameMaterialsAfterwards)
{
    std::size_t seen = 0;
    for(UInt64 seed = 0; seed < 200; ++seed)
    {
        NodePtr const root = RandomScene(seed).scene();
        std::vector<Triangle> const before = triangles_of(root);
        seen += before.size();
        EXPECT_TRUE(run<TypeParam>(root));
        expect_same(before, triangles_of(root));
        ASSERT_FALSE(testing::Test::HasFatalFailure()) << "seed " << seed;
    }
    EXPECT_GT(seen, 1000u);
}

TYPED_TEST(RandomScenes, AreNotChangedByASecondRun)
{
    std::size_t shrunk = 0;
    for(UInt64 seed = 0; seed < 200; ++seed)
    {
        NodePtr const root = RandomScene(seed).scene();
        std::vector<void const *> const before = outline(root);
        run<TypeParam>(root);
        std::vector<void const *> const once = outline(root);
        shrunk += once.size() < before.size() ? 1 : 0;
        run<TypeParam>(root);
        ASSERT_EQ(outline(root), once) << "seed " << seed;
    }
    EXPECT_GT(shrunk, 50u);
}

TYPED_TEST(RandomScenes, LeaveTheExcludeListAsItWas)
{
    for(UInt64 seed = 0; seed < 50; ++seed)
    {
        NodePtr const root = RandomScene(seed).scene();
        NodePtr const outside = make_group();
        UnrecordedRefPtr<TypeParam> const operation(TypeParam::create());
        operation->addToExcludeList(outside);
        operation->addToExcludeList(root);
        operation->traverse(root);
        EXPECT_THAT(operation->getExcludeList().getList(), testing::ElementsAre(outside, root));
    }
}

// --- memory ---

NodePtr bushy(UInt32 depth)
{
    // Every second level is one that the operations keep.
    NodePtr const node = depth % 2 == 0 ? make<Billboard>() : make_group();
    for(int i = 0; depth != 0 && i < 8; ++i)
        node->addChild(bushy(depth - 1));
    return node;
}

template <class Operation>
class Memory : public testing::Test
{
};
using AllOperations = testing::Types<MrgGraphOp, GrpMergeGraphOp, SimplifyRenderEngineGraphOp>;
TYPED_TEST_SUITE(Memory, AllOperations);

TYPED_TEST(Memory, IsThatOfTheWidestNodeNotOfTheScene)
{
    NodePtr const root = bushy(5); // 37,449 nodes, 64 children at most by the end
    // The thread's list of edits holds every node already, as it is not committed yet.
    reset_mem_peak();
    UInt64 const before = get_mem_bytes();
    EXPECT_TRUE(run<TypeParam>(root));
    EXPECT_LE(get_mem_peak_bytes(), before + 100000);
}

// --- beyond what the random scenes hold ---

TEST(BeyondRandomScenes, ACoreInsideAndOutsideAMaterialGroupTakesItsMaterialForBoth)
{
    auto const material = make_material();
    NodePtr const inside = make_triangle();
    NodePtr const outside = make_node(inside->getCore());
    NodePtr const group = make<MaterialGroup>({inside});
    core_of<MaterialGroup>(group)->setMaterial(material);
    NodePtr const root = make_group({outside, group});
    run<MrgGraphOp>(root);
    EXPECT_EQ(core_of<Geometry>(outside)->getMaterial(), material);
}

TEST(BeyondRandomScenes, AProjectionIsDividedAtEachTransformThatIsBaked)
{
    Matrix projection;
    projection[2][3] = -1;
    projection[3][3] = 0;
    NodePtr const shape = make_triangle(Pnt3f(2, 4, -4));
    NodePtr const root = make_group({make_transform(projection, {shape})});
    run<MrgGraphOp>(root);
    EXPECT_EQ(core_of<Geometry>(shape)->beginTriangles().getPosition(0), Pnt3f(0.5f, 1, -1));
}

TEST(BeyondRandomScenes, BeforeAndAfterSimplifyingChoicesShowTheSame)
{
    for(UInt64 seed = 0; seed < 50; ++seed)
    {
        NodePtr const shown = RandomScene(seed).scene();
        NodePtr const hidden = RandomScene(seed + 1000).scene();
        NodePtr const choice = make<Switch>({hidden, shown});
        core_of<Switch>(choice)->setChoice(1);
        NodePtr const root = make_group({choice});
        std::vector<Triangle> const before = triangles_of(shown);
        run<SimplifyRenderEngineGraphOp>(root);
        expect_same(before, triangles_of(root));
    }
}
} // namespace
} // namespace OSG::Test
