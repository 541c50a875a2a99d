#include "OSGPicture.h"

#include <gmock/gmock.h>

#include "GeometryBuilders.h"
#include "NeedsContext.h"
#include "OSGOffscreenContext.h"
#include "OSGSceneBounds.h"
#include "SceneBuilders.h"

namespace OSG::Test
{
namespace
{
using testing::ElementsAre;

Color3f const Blue(0, 0, 1);

/// A square of two units in the plane z = 0. Without normals it is drawn in its own colour.
NodePtr make_square()
{
    return make_node(make_geometry(
        one_primitive(QuadsPrimitive, {{-1, -1, 0}, {1, -1, 0}, {1, 1, 0}, {-1, 1, 0}})));
}

PictureView fitted_view(Node *scene, OffscreenContext const &context)
{
    return OSG::fitted_view(bounds_of(scene), context.getWidth(), context.getHeight());
}

bool is_blue(std::vector<UInt8> const &pixels, std::size_t pixel)
{
    return pixels[3 * pixel] == 0 && pixels[3 * pixel + 1] == 0 && pixels[3 * pixel + 2] == 255;
}

TEST(Picture, ShowsTheSceneInFrontOfTheBackground)
{
    OffscreenContext context(9, 5);
    OSG_NEEDS_CONTEXT(context);
    NodePtr const scene = make_group({make_square()});
    Picture const picture = draw_picture(context, scene, fitted_view(scene, context), Blue);
    EXPECT_EQ(picture.missing, "");
    EXPECT_EQ(picture.triangles, 2u);
    ASSERT_EQ(picture.pixels.size(), 9u * 5 * 3);
    EXPECT_FALSE(is_blue(picture.pixels, 9 * 2 + 4));
    EXPECT_TRUE(is_blue(picture.pixels, 0));
}

TEST(Picture, OfASinglePixelAndOfFourShowTheScene)
{
    // 2 by 2 pixels have the edges that mean a whole window elsewhere.
    for(UInt32 const side : {1u, 2u})
    {
        OffscreenContext context(side, side);
        OSG_NEEDS_CONTEXT(context);
        NodePtr const scene = make_transform(scaling(9, 9, 9), {make_square()});
        PictureView view = fitted_view(make_group({make_square()}), context);
        view.depths = {0.1, 100};
        Picture const picture = draw_picture(context, scene, view, Blue);
        ASSERT_EQ(picture.pixels.size(), std::size_t(3) * side * side);
        for(UInt32 pixel = 0; pixel < side * side; ++pixel)
            EXPECT_FALSE(is_blue(picture.pixels, pixel)) << side << ' ' << pixel;
    }
}

TEST(Picture, OfNoSceneOrOfNothingBeforeTheEyeIsTheBackground)
{
    OffscreenContext context(2, 1);
    OSG_NEEDS_CONTEXT(context);
    EXPECT_THAT(draw_picture(context, nullptr, fitted_view(nullptr, context), Blue).pixels,
                ElementsAre(0, 0, 255, 0, 0, 255));
    NodePtr const scene = make_group({make_square()});
    PictureView view = fitted_view(scene, context);
    view.depths = {-2, -1};
    Picture const picture = draw_picture(context, scene, view, Blue);
    EXPECT_THAT(picture.pixels, ElementsAre(0, 0, 255, 0, 0, 255));
    EXPECT_EQ(picture.triangles, 2u);
}

TEST(Picture, IsDrawnAgainAfterAnEdit)
{
    OffscreenContext context(1, 1);
    OSG_NEEDS_CONTEXT(context);
    NodePtr const square = make_square();
    NodePtr const scene = make_group({square});
    PictureView const view = fitted_view(scene, context);
    EXPECT_FALSE(is_blue(draw_picture(context, scene, view, Blue).pixels, 0));
    scene->subChild(square);
    EXPECT_TRUE(is_blue(draw_picture(context, scene, view, Blue).pixels, 0));
}

TEST(Picture, IsNoneInAContextThatIsMissing)
{
    OffscreenContext context(0, 1);
    Picture const picture = draw_picture(context, nullptr, {}, Blue);
    EXPECT_EQ(picture.missing, context.missing());
    EXPECT_FALSE(picture.missing.empty());
    EXPECT_TRUE(picture.pixels.empty());
}

TEST(Picture, LeavesTheHostsContextCurrent)
{
    OffscreenContext host(1, 1);
    OffscreenContext context(1, 1);
    OSG_NEEDS_CONTEXT(context);
    ASSERT_TRUE(host.makeCurrent());
    draw_picture(context, nullptr, fitted_view(nullptr, context), Blue);
    // A frame buffer that nobody has drawn into holds what it likes, but has one pixel.
    EXPECT_EQ(host.readPixels().size(), 3u);
    context.release();
    EXPECT_EQ(host.readPixels().size(), 3u);
    host.release();
}
} // namespace
} // namespace OSG::Test
