#include "OSGSharpEdges.h"

#include <gtest/gtest.h>

#include "GeometryBuilders.h"
#include "OSGChangeList.h"
#include "OSGGeometryIterators.h"
#include "OSGThread.h"
#include "SceneBuilders.h"

namespace OSG::Test
{
namespace
{
void commit() { Thread::getCurrentChangeList()->commitChanges(); }

/// `count` squares of side 1 in a row, which do not touch: each has four borders.
GeometryPtr make_squares(int count)
{
    std::vector<Pnt3f> corners;
    for(int i = 0; i < count; ++i)
    {
        Real32 const x = static_cast<Real32>(2 * i);
        for(Pnt3f const &corner :
            {Pnt3f(x, 0, 0), Pnt3f(x + 1, 0, 0), Pnt3f(x + 1, 1, 0), Pnt3f(x, 1, 0)})
            corners.push_back(corner);
    }
    return make_geometry(one_primitive(QuadsPrimitive, corners));
}

struct SharpEdgesTest : testing::Test
{
    GeometryPtr const squares = make_squares(3);
    NodePtr const part = make_node(squares);
    NodePtr const root = make_group({part});
    UnrecordedRefPtr<RenderAction> const action{RenderAction::create()};
    SharpEdges edges;

    void SetUp() override
    {
        // Everything is in view.
        Matrix projection;
        projection.setScale(0.01f, 0.01f, 0.01f);
        action->editDrawEnv().setView(Matrix(), Matrix(), projection, {0, 99, 0, 99});
        edges.drawBy(*action);
        commit();
    }

    std::size_t drawn()
    {
        action->apply(root);
        return action->getDrawList().opaque.size() + action->getDrawList().transparent.size();
    }
    std::size_t linesOf(Geometry const &geometry) const
    {
        Geometry const *const lines = edges.getLines(geometry);
        if(lines == nullptr)
            return 1000;
        std::size_t count = 0;
        for(LineIterator it = lines->beginLines(); it != lines->endLines(); ++it)
            ++count;
        return count;
    }
    bool buildAll()
    {
        for(int i = 0; i < 100; ++i)
        {
            if(edges.build())
                return true;
        }
        return false;
    }
};

TEST_F(SharpEdgesTest, AreKnownAfterTheSceneWasDrawnOnce)
{
    EXPECT_TRUE(edges.build());
    EXPECT_EQ(edges.getLines(*squares), nullptr);
    EXPECT_EQ(drawn(), 1u);
    EXPECT_EQ(linesOf(*squares), 0u);
    EXPECT_FALSE(edges.build());
    EXPECT_TRUE(edges.build());
    EXPECT_EQ(linesOf(*squares), 12u);
}

TEST_F(SharpEdgesTest, OfManyTrianglesAreFoundStepByStep)
{
    squares->setPositions(make_squares(50)->getPositions());
    squares->setLengths(make_property<GeoUInt32Property>(std::vector<UInt32>{200}));
    commit();
    drawn();
    int steps = 0;
    for(; !edges.build(11); ++steps)
        ASSERT_EQ(linesOf(*squares), steps < 9 ? 0u : 200u) << steps;
    EXPECT_EQ(steps, 10); // of 100 triangles
    EXPECT_EQ(linesOf(*squares), 200u);
}

TEST_F(SharpEdgesTest, AreSharedWhereAGeometryIs)
{
    root->addChild(make_transform(translation(0, 5, 0), {make_node(squares)}));
    EXPECT_EQ(drawn(), 2u);
    EXPECT_EQ(action->getDrawList().shapes.size(), 1u);
}

TEST_F(SharpEdgesTest, AreHiddenIsolatedAndSwitchedOffAsTheirPartsAre)
{
    NodePtr const other = make_node(make_squares(1));
    root->addChild(make_multi_switch(-1, {}, {make_node(make_squares(2))}));
    root->addChild(other);
    EXPECT_EQ(drawn(), 2u);
    action->editAppearances().hide(NodePath(part));
    EXPECT_EQ(drawn(), 1u);
    action->editAppearances().clear();
    action->editAppearances().isolate({NodePath(part)});
    EXPECT_EQ(drawn(), 1u);
    action->editAppearances().endIsolation();
    Plane const far[] = {Plane(Vec3f(1, 0, 0), Pnt3f(3, 0, 0))};
    action->editDrawEnv().setSections(far);
    EXPECT_EQ(drawn(), 1u);
}

TEST_F(SharpEdgesTest, AreKeptWhileTheirGeometryDoesNotChange)
{
    drawn();
    ASSERT_TRUE(buildAll());
    GeoProperty const *const positions = edges.getLines(*squares)->getPositions();
    root->addChild(make_node(make_squares(2)));
    commit();
    drawn();
    ASSERT_TRUE(buildAll());
    EXPECT_EQ(edges.getLines(*squares)->getPositions(), positions);
}

TEST_F(SharpEdgesTest, AreFoundAgainAfterACommit)
{
    drawn();
    ASSERT_TRUE(buildAll());
    squares->setLengths(make_property<GeoUInt32Property>(std::vector<UInt32>{4}));
    EXPECT_TRUE(edges.build());
    EXPECT_EQ(linesOf(*squares), 12u);
    commit();
    EXPECT_FALSE(edges.build());
    EXPECT_EQ(linesOf(*squares), 4u);
    EXPECT_TRUE(edges.build());
}

TEST_F(SharpEdgesTest, OfAGeometryThatChangesMeanwhileAreThoseOfTheNewOne)
{
    drawn();
    EXPECT_FALSE(edges.build(3));
    squares->setPositions(make_squares(2)->getPositions());
    squares->setLengths(make_property<GeoUInt32Property>(std::vector<UInt32>{8}));
    commit();
    ASSERT_TRUE(buildAll());
    EXPECT_EQ(linesOf(*squares), 8u);
}

TEST_F(SharpEdgesTest, OfAGeometryThatEndsMeanwhileAreNoMore)
{
    GeometryPtr gone = make_squares(9);
    root->addChild(make_node(gone));
    commit();
    drawn();
    edges.build(1);
    edges.build(1);
    root->subChild(root->getChild(1));
    gone = nullptr;
    commit();
    drawn();
    ASSERT_TRUE(buildAll());
    EXPECT_EQ(linesOf(*squares), 12u);
    EXPECT_EQ(drawn(), 1u);
}

TEST_F(SharpEdgesTest, OfLinesAndOfNothingAreNone)
{
    GeometryPtr const line = make_geometry(one_primitive(LinesPrimitive, {{0, 0, 0}, {1, 1, 0}}));
    GeometryPtr const nothing(Geometry::create());
    root->addChild(make_node(line));
    root->addChild(make_node(nothing));
    commit();
    drawn();
    ASSERT_TRUE(buildAll());
    EXPECT_EQ(linesOf(*line), 0u);
}
} // namespace
} // namespace OSG::Test
