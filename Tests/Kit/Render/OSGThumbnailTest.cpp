#include "OSGThumbnail.h"

#include <gtest/gtest.h>

#include "GeometryBuilders.h"
#include "NeedsContext.h"
#include "OSGOffscreenContext.h"
#include "OSGSceneBounds.h"
#include "SceneBuilders.h"

namespace OSG::Test
{
namespace
{
// Without normals it is drawn in its own colour, a light grey.
NodePtr scene_at(Pnt3f const &place)
{
    return make_transform(translation(place[0], place[1], place[2]),
                          {make_node(make_geometry(one_primitive(
                              QuadsPrimitive, {{-1, -1, 0}, {1, -1, 0}, {1, 1, 0}, {-1, 1, 0}})))});
}

UInt32 count_of_other_pixels(Picture const &picture, UInt8 red)
{
    UInt32 count = 0;
    for(std::size_t i = 0; i < picture.pixels.size(); i += 3)
        count += picture.pixels[i] == red ? 0 : 1;
    return count;
}

TEST(Thumbnail, ShowsTheSceneWhereverItIs)
{
    OffscreenContext context(32, 24);
    OSG_NEEDS_CONTEXT(context);
    for(Pnt3f const &place : {Pnt3f(0, 0, 0), Pnt3f(1000, -50, 3)})
    {
        Picture const picture = thumbnail_of(scene_at(place), 32, 24);
        EXPECT_EQ(picture.missing, "");
        EXPECT_EQ(picture.triangles, 2u);
        ASSERT_EQ(picture.pixels.size(), 32u * 24 * 3);
        EXPECT_GT(count_of_other_pixels(picture, 255), 40u);
        EXPECT_EQ(picture.pixels[0], 255);
    }
}

TEST(Thumbnail, IsThePictureOfTheFittedView)
{
    OffscreenContext context(40, 20);
    OSG_NEEDS_CONTEXT(context);
    NodePtr const scene = scene_at({1, 2, 3});
    Color3f const background(0, 0, 1);
    PictureView const view = fitted_view(bounds_of(scene), 40, 20);
    Picture const expected = draw_picture(context, scene, view, background);
    EXPECT_EQ(thumbnail_of(scene, 40, 20, background).pixels, expected.pixels);
    EXPECT_EQ(thumbnail_of(context, scene, background).pixels, expected.pixels);
}

TEST(Thumbnail, OfNothingIsTheBackground)
{
    OffscreenContext context(1, 1);
    OSG_NEEDS_CONTEXT(context);
    for(NodePtr const &scene : {NodePtr(), make_group()})
    {
        Picture const picture = thumbnail_of(scene, 5, 4, Color3f(1, 0, 0));
        EXPECT_EQ(picture.missing, "");
        EXPECT_EQ(picture.pixels.size(), 5u * 4 * 3);
        EXPECT_EQ(count_of_other_pixels(picture, 255), 0u);
    }
}

TEST(Thumbnail, OfASizeWithoutPixelsIsEmptyAndSaysWhy)
{
    Picture const picture = thumbnail_of(make_group(), 0, 4);
    EXPECT_TRUE(picture.pixels.empty());
    EXPECT_NE(picture.missing, "");
}
} // namespace
} // namespace OSG::Test
