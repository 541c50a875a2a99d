#include "OSGIntersectAction.h"

#include <cmath>
#include <new>

#include <gtest/gtest.h>

#include "GeometryBuilders.h"
#include "LogCapture.h"
#include "MathPrinters.h"
#include "OSGComponentTransform.h"
#include "OSGGeometryIterators.h"
#include "OSGInverseTransform.h"
#include "OSGSwitch.h"
#include "OSGTransform.h"
#include "RandomNumbers.h"
#include "SceneBuilders.h"

using namespace OSG;
using namespace OSG::Test;

namespace
{
using RayPtr = UnrecordedRefPtr<IntersectAction>;

NodePtr triangle_node(std::vector<Pnt3f> const &corners)
{
    return make_node(make_geometry(one_primitive(TrianglesPrimitive, corners)));
}

/// A large triangle in the plane z = `z`, seen from +z.
NodePtr wall(Real32 z) { return triangle_node({{-9, -9, z}, {9, -9, z}, {0, 9, z}}); }

Line ahead() { return Line(Pnt3f(0, 0, 0), Vec3f(0, 0, -1)); }

RayPtr cast(Node *root, Line const &line = ahead(), Real32 reach = 1e30f)
{
    RayPtr ray(IntersectAction::create());
    ray->setLine(line, reach);
    ray->apply(root);
    return ray;
}

TEST(IntersectAction, GivesPointNormalTriangleDistanceAndNode)
{
    NodePtr const node = wall(-3);
    NodePtr const root = make_group({wall(-5), node});
    RayPtr const ray = cast(root);
    ASSERT_TRUE(ray->didHit());
    EXPECT_EQ(ray->getHitDistance(), 3.f);
    EXPECT_EQ(ray->getHitPoint(), Pnt3f(0, 0, -3));
    EXPECT_EQ(ray->getHitNormal(), Vec3f(0, 0, 1));
    EXPECT_EQ(ray->getHitTriangle(), 0);
    EXPECT_EQ(ray->getHitObject(), node.get());
}

TEST(IntersectAction, ForgetsTheLastHit)
{
    NodePtr const node = wall(-3);
    RayPtr const ray = cast(node);
    EXPECT_TRUE(ray->didHit());
    ray->setLine(Line(Pnt3f(), Vec3f(0, 0, 1)), 1e30f);
    ray->apply(node);
    EXPECT_FALSE(ray->didHit());
    EXPECT_EQ(ray->getHitObject(), nullptr);
    EXPECT_EQ(ray->getHitTriangle(), -1);
}

TEST(IntersectAction, NullHoldsNothing) { EXPECT_FALSE(cast(nullptr)->didHit()); }

TEST(IntersectAction, ReachesToTheMaximumAndNotBeyond)
{
    NodePtr const node = wall(-3);
    EXPECT_TRUE(cast(node, ahead(), 3)->didHit());
    EXPECT_FALSE(cast(node, ahead(), 2.999f)->didHit());
    EXPECT_TRUE(cast(node, ahead(), IntersectAction::NoLimit)->didHit());
}

TEST(IntersectAction, OfEqualDistancesTheFirstNodeStays)
{
    NodePtr const root = make_group({wall(-5), wall(-3), wall(-3)});
    EXPECT_EQ(cast(root)->getHitObject(), root->getChild(1));
}

TEST(IntersectAction, SeesWhatTheMaskLetsThrough)
{
    NodePtr const root = make_group({wall(-3), wall(-5)});
    root->getChild(0)->setTravMask(2);
    RayPtr const ray(IntersectAction::create());
    ray->setTravMask(1);
    ray->setLine(ahead(), 1e30f);
    ray->apply(root);
    EXPECT_EQ(ray->getHitObject(), root->getChild(1));
}

// --- spaces ---

TEST(IntersectAction, GoesThroughTransformsOfAnyScale)
{
    for(Real32 const scale : {1e-9f, 1e-3f, 1.f, 1e3f, 1e9f})
    {
        LogCapture const log;
        NodePtr const root = make_transform(scaling(scale, scale, scale), {wall(-3)});
        RayPtr const ray = cast(root);
        ASSERT_TRUE(ray->didHit()) << scale;
        EXPECT_FLOAT_EQ(ray->getHitDistance(), 3 * scale);
        EXPECT_TRUE(ray->getHitNormal().equals(Vec3f(0, 0, 1), 1e-6f));
        EXPECT_EQ(ray->getLine().getDirection(), Vec3f(0, 0, -1));
        EXPECT_TRUE(log.texts().empty());
    }
}

TEST(IntersectAction, ComparesDistancesOfDifferentSpaces)
{
    NodePtr const near = make_transform(scaling(0.001f, 0.001f, 0.001f), {wall(-4000)});
    NodePtr const far = make_transform(scaling(1000, 1000, 1000), {wall(-0.005f)});
    NodePtr const root = make_group({far, near, wall(-4.5f)});
    RayPtr const ray = cast(root);
    EXPECT_EQ(ray->getHitObject(), near->getChild(0));
    EXPECT_FLOAT_EQ(ray->getHitDistance(), 4.f);
}

TEST(IntersectAction, TurnsNormalsAsPlanesTurn)
{
    // A plane at 45 degrees, made flatter: its normal turns the other way.
    NodePtr const slope = triangle_node({{-9, -9, -12}, {9, -9, -12}, {0, 9, 6}});
    NodePtr const root = make_transform(scaling(1, 0.5f, 1), {slope});
    RayPtr const ray = cast(root, Line(Pnt3f(0, 0, 100), Vec3f(0, 0, -1)));
    ASSERT_TRUE(ray->didHit());
    Vec3f expected(0, -2, 1);
    expected.normalize();
    EXPECT_TRUE(ray->getHitNormal().equals(expected, 1e-6f));
}

TEST(IntersectAction, MirroredScenesAreHitAsWell)
{
    NodePtr const root = make_transform(scaling(1, 1, -1), {wall(3)});
    RayPtr const ray = cast(root);
    EXPECT_EQ(ray->getHitPoint(), Pnt3f(0, 0, -3));
    EXPECT_EQ(ray->getHitNormal(), Vec3f(0, 0, -1));
}

TEST(IntersectAction, WhatASingularTransformFlattensIsNotHit)
{
    LogCapture const log;
    NodePtr const flat = make_transform(scaling(1, 1, 0), {wall(-3)});
    NodePtr const root = make_group({flat, wall(-5)});
    RayPtr const ray = cast(root);
    EXPECT_EQ(ray->getHitDistance(), 5.f);
    EXPECT_EQ(log.count("TransformationMatrix<>::calcInverse: Singular matrix, no inverse!\n"), 1u);
}

TEST(IntersectAction, DerivedTransformsAreTransforms)
{
    UnrecordedRefPtr<ComponentTransform> const core(ComponentTransform::create());
    core->setMatrix(translation(0, 0, -4));
    NodePtr const root = make_node(core, {wall(-3)});
    EXPECT_EQ(cast(root)->getHitDistance(), 7.f);
}

TEST(IntersectAction, MatricesThatRenderingKeepsCount)
{
    UnrecordedRefPtr<InverseTransform> const core(InverseTransform::create());
    core->setRenderedMatrix(translation(0, 0, -4));
    NodePtr const root = make_node(core, {wall(-3)});
    EXPECT_EQ(cast(root)->getHitDistance(), 7.f);
}

TEST(IntersectAction, GoesIntoTheTreesThatAreVisited)
{
    NodePtr const other = make_transform(translation(0, 0, -4), {wall(-3)});
    NodePtr const root = make_group({make_visit(nullptr), make_visit(other), wall(-9)});
    RayPtr const ray = cast(root);
    EXPECT_EQ(ray->getHitDistance(), 7.f);
    EXPECT_EQ(ray->getHitObject(), other->getChild(0));
}

TEST(IntersectAction, ManySpacesLeaveTheRayAsItWas)
{
    NodePtr const root = make_chain(1000, wall(-3),
                                    []
                                    {
                                        return make_transform(translation(0.1f, 0, 0) *
                                                              rotation(Vec3f(0, 1, 0), 0.1f) *
                                                              scaling(1.1f, 0.9f, 1.f));
                                    });
    Line const line(Pnt3f(0.3f, 0.7f, 0.1f), Vec3f(1, 2, 3));
    RayPtr const ray = cast(root, line, 100.f);
    EXPECT_EQ(ray->getLine().getPosition(), line.getPosition());
    EXPECT_EQ(ray->getLine().getDirection(), line.getDirection());
    EXPECT_EQ(ray->getMaxDist(), 100.f);
}

TEST(IntersectAction, ScalesMaximumAndBestDistance)
{
    RayPtr const ray(IntersectAction::create());
    ray->setLine(ahead(), 8);
    NodePtr const node = wall(-3);
    ray->apply(node);
    ray->scale(0.5f);
    EXPECT_EQ(ray->getMaxDist(), 4.f);
    EXPECT_EQ(ray->getHitDistance(), 1.5f);
}

// --- volumes ---

TEST(IntersectAction, BoxesThatAreOutOfDateCullNothing)
{
    NodePtr const node = wall(-3);
    node->editVolume().setBounds(Pnt3f(5, 5, 5), Pnt3f(6, 6, 6));
    node->editVolume().setValid(true);
    EXPECT_FALSE(cast(node)->didHit());
    node->invalidateVolume();
    EXPECT_TRUE(cast(node)->didHit());
}

// --- functions of a core of one's own ---

/// Carries rays by itself, as a core may that knows only its own matrix.
struct OwnSpace
{
    static ActionBase::ResultE move(Action *action, Matrix const &matrix)
    {
        auto &ray = dynamic_cast<IntersectAction &>(*action);
        Pnt3f position;
        matrix.multFull(ray.getLine().getPosition(), position);
        Vec3f const direction = matrix * ray.getLine().getDirection();
        ray.setLine(Line(position, direction), ray.getMaxDist());
        ray.scale(direction.length());
        return ActionBase::Continue;
    }
};

TEST(IntersectAction, ACoreMayPutTheRayInPlaceByItself)
{
    NodePtr const root = make_group({make_transform(Matrix(), {wall(-3)}), wall(-6.5f)});
    RayPtr const ray(IntersectAction::create());
    FieldContainerType const &type = Transform::getClassType();
    ray->registerEnterFunction(type, [](NodeCore *, Action *action)
                               { return OwnSpace::move(action, scaling(0.5f, 0.5f, 0.5f)); });
    ray->registerLeaveFunction(type, [](NodeCore *, Action *action)
                               { return OwnSpace::move(action, scaling(2, 2, 2)); });
    ray->setLine(ahead(), 100);
    ray->apply(root);
    EXPECT_EQ(ray->getHitDistance(), 6.f);
    EXPECT_EQ(ray->getMaxDist(), 100.f);
}

// --- compared with a search of all triangles in the space of the root ---

struct WorldTriangles
{
    std::vector<Pnt3f> corners;

    void add(Node *node)
    {
        Matrix const toWorld = node->getToWorld();
        if(auto const *geometry = dynamic_cast<Geometry *>(node->getCore()))
        {
            for(TriangleIterator it = geometry->beginTriangles(); it != geometry->endTriangles();
                ++it)
            {
                for(int i = 0; i < 3; ++i)
                    corners.push_back(toWorld * it.getPosition(i));
            }
        }
        for(UInt32 i = 0; i < node->getNChildren(); ++i)
            add(node->getChild(i));
    }
};

NodePtr random_tree(RandomNumbers &random, UInt32 depth)
{
    std::vector<Pnt3f> corners;
    for(int i = 0; i < 12; ++i)
        corners.push_back(random.point(-1, 1));
    NodePtr const leaf = triangle_node(corners);
    if(depth == 0)
        return leaf;
    Matrix const matrix = translation(random.real(-1, 1), random.real(-1, 1), 0) *
                          rotation(random.vector(), random.real(-3, 3)) *
                          scaling(random.real(0.3f, 3), random.real(-3, -0.3f), 1);
    return make_transform(matrix,
                          {leaf, random_tree(random, depth - 1), random_tree(random, depth - 1)});
}

TEST(IntersectAction, AWalkThatAnExceptionEndsLeavesTheRayAsItWas)
{
    NodePtr const broken = make_node(UnrecordedRefPtr<Switch>(Switch::create()));
    NodePtr const root =
        make_group({wall(-3), make_transform(translation(5, 6, 7), {make_visit(broken)})});
    RayPtr const ray(IntersectAction::create());
    ray->registerEnterFunction(Switch::getClassType(),
                               [](NodeCore *, Action *) -> ActionBase::ResultE
                               { throw std::bad_alloc(); });
    ray->setLine(ahead(), 40.f);
    EXPECT_THROW(ray->apply(root), std::bad_alloc);
    EXPECT_FALSE(ray->didHit());
    EXPECT_EQ(ray->getActNode(), nullptr);
    EXPECT_EQ(ray->getLine().getPosition(), ahead().getPosition());
    EXPECT_EQ(ray->getMaxDist(), 40.f);
    NodePtr const far = wall(-30);
    ray->apply(far);
    EXPECT_EQ(ray->getHitDistance(), 30.f);
}

TEST(IntersectAction, FindsTheNearestOfAllTrianglesInWorldSpace)
{
    RandomNumbers random(21);
    int hits = 0;
    for(int round = 0; round < 20; ++round)
    {
        NodePtr const root = random_tree(random, 3);
        root->updateVolume();
        WorldTriangles world;
        world.add(root);
        NodePtr const flat = triangle_node(world.corners);
        for(int i = 0; i < 50; ++i)
        {
            Pnt3f const from = random.point(-4, 4);
            Line const line(from, random.point(-1, 1) - from);
            RayPtr const tree = cast(root, line);
            RayPtr const all = cast(flat, line);
            ASSERT_EQ(tree->didHit(), all->didHit());
            if(!all->didHit())
                continue;
            ++hits;
            EXPECT_NEAR(tree->getHitDistance(), all->getHitDistance(), 1e-4f);
            Real32 const agreement = tree->getHitNormal().dot(all->getHitNormal());
            EXPECT_NEAR(std::abs(agreement), 1.f, 1e-3f);
        }
    }
    EXPECT_GT(hits, 300);
}

// --- many children ---

struct OpenRay : IntersectAction
{
    OpenRay() = default;
    OpenRay(OpenRay const &) = default;
    ~OpenRay() override = default;
    using IntersectAction::findMissed;
};

TEST(IntersectAction, MissesAtOnceOnlyBoxesThatTheTestOfOneBoxMisses)
{
    RandomNumbers random(8);
    int missed = 0;
    int expected = 0;
    for(int round = 0; round < 2000; ++round)
    {
        // Coordinates on a grid make rays that lie in faces of boxes, or are parallel to them.
        auto const place = [&]
        {
            return Pnt3f(static_cast<Real32>(random.below(4)), static_cast<Real32>(random.below(4)),
                         static_cast<Real32>(random.below(4)));
        };
        Pnt3f const from = place();
        Line const line(from, round % 2 == 0 ? place() - from : random.vector());
        OpenRay ray;
        ray.setLine(line);
        BoxLanes lanes;
        BoxVolume boxes[8];
        for(std::size_t i = 0; i < 8; ++i)
        {
            Pnt3f const min = place();
            boxes[i].setBounds(min, min + (place() - Pnt3f()) * 0.5f);
            for(int axis = 0; axis < 3; ++axis)
            {
                lanes.min[axis][i] = boxes[i].getMin()[axis];
                lanes.max[axis][i] = boxes[i].getMax()[axis];
            }
        }
        UInt8 bits;
        ray.findMissed(&lanes, 1, &bits);
        for(std::size_t i = 0; i < 8; ++i)
        {
            Real32 enter, exit;
            bool const isMissed = !boxes[i].intersect(line, enter, exit);
            ASSERT_TRUE(isMissed || (bits >> i & 1) == 0);
            missed += bits >> i & 1;
            expected += isMissed ? 1 : 0;
        }
    }
    EXPECT_GT(missed, expected * 99 / 100) << "boxes that are nearly met need not be missed";
    EXPECT_GT(expected, 5000);
}

TEST(IntersectAction, LaterRaysThroughNodesOfManyChildrenHitWhatTheFirstWouldHaveHit)
{
    RandomNumbers random(9);
    NodePtr const root = make_group();
    for(int i = 0; i < 12; ++i)
    {
        NodePtr const group = make_group();
        for(int k = 0; k < 12; ++k)
        {
            Vec3f const by = random.vector() * 6.f;
            group->addChild(
                make_transform(translation(by[0], by[1], by[2]) * scaling(0.2f, 0.3f, 0.1f),
                               {wall(random.real(-1, 1))}));
        }
        root->addChild(group);
    }
    root->updateVolume();
    int hits = 0;
    RayPtr const indexed(IntersectAction::create());
    RayPtr const plain(IntersectAction::create());
    plain->registerEnterFunction(Switch::getClassType(),
                                 [](NodeCore *, Action *) { return ActionBase::Continue; });
    for(int i = 0; i < 500; ++i)
    {
        Pnt3f const from = random.point(-8, 8);
        Line const line(from, random.point(-4, 4) - from);
        for(RayPtr const &ray : {indexed, plain})
        {
            ray->setLine(line);
            ray->apply(root);
        }
        ASSERT_EQ(indexed->didHit(), plain->didHit());
        if(!plain->didHit())
            continue;
        ++hits;
        ASSERT_EQ(indexed->getHitObject(), plain->getHitObject());
        ASSERT_EQ(indexed->getHitDistance(), plain->getHitDistance());
        ASSERT_EQ(indexed->getHitTriangle(), plain->getHitTriangle());
        ASSERT_EQ(indexed->getHitNormal(), plain->getHitNormal());
    }
    EXPECT_GT(hits, 100);
}
} // namespace
