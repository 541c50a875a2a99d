#include <limits>

#include <gtest/gtest.h>

#include "../PictureScenes.h"
#include "MathPrinters.h"
#include "SlowPicture.h"

namespace OSG::Test
{
namespace
{
constexpr Color3f Red(1, 0, 0);
constexpr Color3f Green(0, 1, 0);

Vec3d middle_of(Node *root, ViewSetup const &setup = square_view())
{
    return slow_picture(root, view_of(setup)).at(50, 40).color;
}

Vec3d steps(int red, int green, int blue) { return Vec3d(red, green, blue) / 255.0; }

TEST(SlowPicture, ALitSquareHasItsDiffuseColour)
{
    for(ViewSetup const &setup : {square_view(), square_perspective()})
    {
        NodePtr const root = make_node(square(0.5f, 0, simple_material(Color3f(0.8f, 0.4f, 0))));
        EXPECT_EQ(middle_of(root, setup), steps(204, 102, 0));
    }
}
TEST(SlowPicture, TheSquareCoversHalfOfTheColumns)
{
    NodePtr const root = make_node(square(0.5f, 0, plain_material(Red)));
    for(ViewSetup const &setup : {square_view(), square_perspective()})
    {
        SlowPicture const picture = slow_picture(root, view_of(setup));
        EXPECT_FALSE(picture.at(24, 50).isCovered());
        EXPECT_TRUE(picture.at(25, 50).isCovered());
        EXPECT_TRUE(picture.at(74, 50).isCovered());
        EXPECT_FALSE(picture.at(75, 50).isCovered());
        EXPECT_EQ(picture.at(0, 0).color, steps(255, 255, 255));
    }
}
TEST(SlowPicture, RowsComeFromTheTop)
{
    NodePtr const root =
        make_transform(translation(0, 0.5f, 0), {make_node(square(0.4f, 0, plain_material(Red)))});
    SlowPicture const picture = slow_picture(root, view_of(square_view()));
    EXPECT_TRUE(picture.at(50, 20).isCovered());
    EXPECT_FALSE(picture.at(50, 80).isCovered());
}
TEST(SlowPicture, TheNearestTriangleIsSeenInEitherOrder)
{
    NodePtr const near = make_node(square(0.5f, 1, plain_material(Red)));
    NodePtr const far = make_node(square(0.5f, -1, plain_material(Green)));
    EXPECT_EQ(middle_of(make_group({near, far})), steps(255, 0, 0));
    NodePtr const first = make_node(square(0.5f, -1, plain_material(Green)));
    NodePtr const second = make_node(square(0.5f, 1, plain_material(Red)));
    EXPECT_EQ(middle_of(make_group({first, second})), steps(255, 0, 0));
}
TEST(SlowPicture, WhatIsBeforeNearOrBehindFarIsNotSeen)
{
    for(Real32 const z : {4.95f, -5.5f})
    {
        NodePtr const root = make_node(square(0.5f, z, plain_material(Red)));
        EXPECT_EQ(middle_of(root), steps(255, 255, 255)) << z;
    }
}
TEST(SlowPicture, BothSidesAreLit)
{
    NodePtr const root =
        make_transform(rotation(Vec3f(0, 1, 0), 3.14159265f),
                       {make_node(square(0.5f, 0, simple_material(Color3f(0.8f, 0.4f, 0))))});
    EXPECT_EQ(middle_of(root), steps(204, 102, 0));
}
TEST(SlowPicture, AMirrorKeepsTheFrontInFront)
{
    // The normal leans away from its side, so that the sides differ.
    Vec3f const normal(0.6f, 0, 0.8f);
    NodePtr const front = make_node(square(0.5f, 0, simple_material(Color3f(1, 1, 1)), normal));
    EXPECT_EQ(middle_of(make_transform(scaling(-1, 1, 1), {front})), steps(204, 204, 204));
    NodePtr const wrong =
        make_node(square(0.5f, 0, simple_material(Color3f(1, 1, 1)), Vec3f(0.6f, 0, -0.8f)));
    EXPECT_EQ(middle_of(make_transform(scaling(-1, 1, 1), {wrong})), steps(0, 0, 0));
}
// A surface that rises by 45 degrees rises twice as steeply where z is scaled by 2.
TEST(SlowPicture, NormalsGoByTheInverseTranspose)
{
    Real32 const half = std::sqrt(0.5f);
    NodePtr const square45 =
        make_node(square(0.5f, 0, simple_material(Color3f(1, 1, 1)), Vec3f(0, half, half)));
    Vec3d const color = middle_of(make_transform(scaling(1, 1, 2), {square45}));
    EXPECT_NEAR(color[0], 1 / std::sqrt(5.0), 1 / 255.0);
}
TEST(SlowPicture, TransparencyMixesWithWhatIsBehind)
{
    UnrecordedRefPtr<SimpleMaterial> const glass = plain_material(Green);
    glass->setTransparency(0.75f);
    NodePtr const root = make_group(
        {make_node(square(0.5f, 1, glass)), make_node(square(0.5f, 0, plain_material(Red)))});
    EXPECT_EQ(middle_of(root), steps(191, 64, 0));
}
TEST(SlowPicture, TransparentOnesComeFromBackToFront)
{
    UnrecordedRefPtr<SimpleMaterial> const near = plain_material(Green);
    near->setTransparency(0.5f);
    UnrecordedRefPtr<SimpleMaterial> const far = plain_material(Red);
    far->setTransparency(0.5f);
    NodePtr const root =
        make_group({make_node(square(0.5f, 1, near)), make_node(square(0.5f, 0, far))});
    EXPECT_EQ(middle_of(root), steps(128, 192, 64));
}
TEST(SlowPicture, ATriangleWithACornerThatIsNotFiniteIsDropped)
{
    Real32 const nan = std::numeric_limits<Real32>::quiet_NaN();
    GeometryPtr const geometry = make_geometry(one_primitive(
        TriangleFanPrimitive, {{-0.9f, -0.9f, 0}, {0.9f, -0.9f, 0}, {0.9f, 0.9f, 0}, {nan, 0, 0}}));
    geometry->setMaterial(plain_material(Red));
    SlowPicture const picture = slow_picture(make_node(geometry), view_of(square_view()));
    EXPECT_TRUE(picture.at(60, 60).isCovered());
    EXPECT_FALSE(picture.at(40, 40).isCovered());
}
TEST(SlowPicture, PixelsAtEdgesAndLinesAreNotCompared)
{
    GeometryPtr const line =
        make_geometry(one_primitive(LinesPrimitive, {{-1, 0.8f, 0}, {1, 0.8f, 0}}));
    NodePtr const root =
        make_group({make_node(square(0.5f, 0, plain_material(Red))), make_node(line)});
    SlowPicture const picture = slow_picture(root, view_of(square_view()));
    EXPECT_TRUE(picture.isAwayFromEdges(60, 60));
    EXPECT_TRUE(picture.isAwayFromEdges(10, 60));
    EXPECT_FALSE(picture.isAwayFromEdges(25, 60)) << "the square's left edge";
    EXPECT_FALSE(picture.isAwayFromEdges(50, 49)) << "its diagonal";
    EXPECT_FALSE(picture.isAwayFromEdges(10, 10)) << "the line";
}
TEST(SlowPicture, FacesAtOneDepthAreNotCompared)
{
    NodePtr const root = make_group({make_node(square(0.5f, 0, plain_material(Red))),
                                     make_node(square(0.4f, 0, plain_material(Green)))});
    SlowPicture const picture = slow_picture(root, view_of(square_view()));
    EXPECT_FALSE(picture.isAwayFromEdges(60, 60));
    EXPECT_TRUE(picture.isAwayFromEdges(72, 60));
}
} // namespace
} // namespace OSG::Test
