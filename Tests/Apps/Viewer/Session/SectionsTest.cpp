#include "Sections.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "GeometryBuilders.h"
#include "SceneBuilders.h"

using namespace OSG;
using namespace OSG::Test;
using testing::IsEmpty;
using testing::SizeIs;
using Viewer::Sections;

namespace
{
/// A scene from (1, 2, 3) to (5, 4, 9).
struct SectionsTest : testing::Test
{
    SectionsTest()
    {
        scene = make_node(
            make_geometry(one_primitive(TrianglesPrimitive, {{1, 2, 3}, {5, 4, 9}, {1, 4, 3}})));
        view.setScene(scene);
    }

    bool keeps(Pnt3f const &point) const
    {
        bool isKept = true;
        for(Plane const &plane : view.getSections().getPlanes())
            isKept =
                isKept && plane.getNormal().dot(point.subZero()) >= plane.getDistanceFromOrigin();
        return isKept;
    }

    NodePtr scene;
    SceneView view;
    Sections sections{view};
};

TEST_F(SectionsTest, APlaneAcrossAnAxisGoesThroughTheMiddleAndKeepsWhatLiesBefore)
{
    ASSERT_TRUE(sections.addAcross(2));
    Sections::Cut const &cut = sections.getCuts().front();
    EXPECT_EQ(cut.name, "z");
    EXPECT_EQ(cut.first, 3);
    EXPECT_EQ(cut.last, 9);
    EXPECT_EQ(cut.place, 6);
    EXPECT_TRUE(keeps({0, 0, 5}));
    EXPECT_FALSE(keeps({0, 0, 7}));
}

TEST_F(SectionsTest, APlaneIsMovedFlippedAndSwitchedOff)
{
    ASSERT_TRUE(sections.addAcross(0));
    Sections::Cut cut = sections.getCuts().front();
    cut.place = 2;
    sections.set(0, cut);
    EXPECT_FALSE(keeps({2.5f, 0, 0}));
    cut.isFlipped = true;
    sections.set(0, cut);
    EXPECT_TRUE(keeps({2.5f, 0, 0}));
    EXPECT_FALSE(keeps({1.5f, 0, 0}));
    cut.isOn = false;
    sections.set(0, cut);
    EXPECT_TRUE(view.getSections().isEmpty());
}

TEST_F(SectionsTest, APlaneAtAFaceCutsAwayWhatLiesInFrontOfIt)
{
    ASSERT_TRUE(sections.addAtFace({3, 3, 6}, {0, 2, 0}));
    EXPECT_EQ(sections.getCuts().front().place, 3);
    EXPECT_EQ(sections.getCuts().front().first, 2);
    EXPECT_EQ(sections.getCuts().front().last, 4);
    EXPECT_TRUE(keeps({0, 2.9f, 0}));
    EXPECT_FALSE(keeps({0, 3.1f, 0}));
}

TEST_F(SectionsTest, AnObliqueFaceHasTheRangeOfTheScenesCorners)
{
    ASSERT_TRUE(sections.addAtFace({3, 3, 6}, {1, 0, -1}));
    float const root = std::sqrt(0.5f);
    EXPECT_FLOAT_EQ(sections.getCuts().front().first, (1 - 9) * root);
    EXPECT_FLOAT_EQ(sections.getCuts().front().last, (5 - 3) * root);
}

TEST_F(SectionsTest, WhatIsNoPlaneAddsNothing)
{
    float const nan = std::numeric_limits<float>::quiet_NaN();
    EXPECT_FALSE(sections.addAcross(3));
    EXPECT_FALSE(sections.addAtFace({1, 1, 1}, {0, 0, 0}));
    EXPECT_FALSE(sections.addAtFace({1, 1, 1}, {nan, 0, 0}));
    EXPECT_FALSE(sections.addAtFace({nan, 1, 1}, {0, 0, 1}));
    sections.set(0, {});
    sections.remove(0);
    EXPECT_THAT(sections.getCuts(), IsEmpty());
}

TEST_F(SectionsTest, ThereAreSixPlanesAtMost)
{
    for(UInt32 i = 0; i < 6; ++i)
        EXPECT_TRUE(sections.addAcross(i % 3));
    EXPECT_TRUE(sections.isFull());
    EXPECT_FALSE(sections.addAcross(0));
    EXPECT_FALSE(sections.addAtFace({1, 1, 1}, {0, 0, 1}));
    EXPECT_THAT(sections.getCuts(), SizeIs(6));
    sections.remove(5);
    EXPECT_FALSE(sections.isFull());
}

TEST_F(SectionsTest, RemovingAndClearingShowTheSceneWhole)
{
    sections.addAcross(0);
    sections.addAcross(1);
    sections.remove(0);
    EXPECT_EQ(sections.getCuts().front().name, "y");
    sections.clear();
    EXPECT_TRUE(view.getSections().isEmpty());
}

TEST_F(SectionsTest, WithoutASceneThereIsNothingToCut)
{
    view.setScene(nullptr);
    EXPECT_FALSE(sections.addAcross(0));
    EXPECT_FALSE(sections.addAtFace({1, 1, 1}, {0, 0, 1}));
}
} // namespace
