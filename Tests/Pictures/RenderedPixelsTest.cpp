#include "RenderedPixels.h"

#include <string>

#include <gtest/gtest.h>

#include "LogCapture.h"
#include "ModelPictures.h"
#include "PerceivedDifference.h"
#include "PictureScenes.h"
#include "RandomScenes.h"

namespace OSG::Test
{
namespace
{
constexpr std::uint64_t Scenes = 30;
constexpr std::uint64_t ScenesWithLights = 15;

class RenderedScenes : public testing::TestWithParam<RandomMaterials>
{
  protected:
    void SetUp() override
    {
        if(!missing_renderer().empty())
            GTEST_SKIP() << missing_renderer();
    }

    void expectEqualPictures(std::uint64_t seed, bool headlight)
    {
        LogCapture log; // of indices out of range
        RandomScene scene = random_scene(seed, GetParam());
        scene.view.headlight = headlight;
        PictureComparison const comparison = compare(slow_picture(scene.root, view_of(scene.view)),
                                                     rendered_pixels(scene.root, scene.view));
        EXPECT_TRUE(comparison.isEqual())
            << "seed " << seed << ": " << testing::PrintToString(comparison);
    }
};

TEST_P(RenderedScenes, TheirPixelsAwayFromEdgesAreThoseOfTheSlowRasterizer)
{
    for(std::uint64_t seed = 0; seed < Scenes; ++seed)
        expectEqualPictures(seed, true);
}
TEST_P(RenderedScenes, SoTheyAreInTheLightsOfTheScene)
{
    for(std::uint64_t seed = Scenes; seed < Scenes + ScenesWithLights; ++seed)
        expectEqualPictures(seed, false);
}
std::string name_of(testing::TestParamInfo<RandomMaterials> const &materials)
{
    constexpr char const *Names[] = {"Simple", "Transparent", "Textured", "Chunks"};
    return Names[static_cast<int>(materials.param)];
}
INSTANTIATE_TEST_SUITE_P(All, RenderedScenes,
                         testing::Values(RandomMaterials::Simple, RandomMaterials::Transparent,
                                         RandomMaterials::Textured, RandomMaterials::Chunks),
                         name_of);

// --- lines and points, which the slow rasterizer does not draw ---

struct StrokeCase
{
    char const *name;
    std::vector<Vec3f> normals;
    Vec3d color; ///< in steps of 1/255
};
StrokeCase const StrokeCases[] = {
    {"without normals the colour is diffuse", {}, {204, 102, 51}},
    {"with normals light counts", {{0, 0.8f, 0.6f}, {0, 0.8f, 0.6f}}, {122, 61, 31}},
    {"the side that is turned away has no light", {{0, 0, -1}, {0, 0, -1}}, {0, 0, 0}},
};

Pixels picture_of(PrimitiveType type, std::vector<Pnt3f> const &positions,
                  std::vector<Vec3f> const &normals)
{
    GeometryPtr const geometry = make_geometry(one_primitive(type, positions, normals));
    geometry->setMaterial(simple_material(Color3f(0.8f, 0.4f, 0.2f)));
    return rendered_pixels(make_node(geometry), square_view());
}

bool is_near(UInt8 const *pixel, Vec3d const &color)
{
    return (Vec3d(pixel[0], pixel[1], pixel[2]) - color).length() <= ColorTolerance;
}

// The middle of row 30, from column 25.5 to column 74.5.
std::vector<Pnt3f> const LineEnds = {{-0.49f, 0.39f, 0}, {0.49f, 0.39f, 0}};

TEST(RenderedStrokes, ALineIsOnePixelHighAndHasItsColour)
{
    if(!missing_renderer().empty())
        GTEST_SKIP() << missing_renderer();
    for(StrokeCase const &row : StrokeCases)
    {
        Pixels const pixels = picture_of(LinesPrimitive, LineEnds, row.normals);
        for(UInt32 x = 27; x < 73; ++x)
        {
            EXPECT_TRUE(is_near(pixels.at(x, 30), row.color)) << row.name << ", column " << x;
            EXPECT_TRUE(is_near(pixels.at(x, 29), {255, 255, 255})) << row.name;
            EXPECT_TRUE(is_near(pixels.at(x, 31), {255, 255, 255})) << row.name;
        }
    }
}
TEST(RenderedStrokes, APointIsOnePixel)
{
    if(!missing_renderer().empty())
        GTEST_SKIP() << missing_renderer();
    for(StrokeCase const &row : StrokeCases)
    {
        Pixels const pixels = picture_of(PointsPrimitive, LineEnds, row.normals);
        UInt32 drawn = 0;
        for(UInt32 i = 0; i < 10000; ++i)
            drawn += is_near(pixels.at(i % 100, i / 100), {255, 255, 255}) ? 0 : 1;
        EXPECT_EQ(drawn, 2u) << row.name;
        EXPECT_TRUE(is_near(pixels.at(25, 30), row.color)) << row.name;
        EXPECT_TRUE(is_near(pixels.at(74, 30), row.color)) << row.name;
    }
}

TEST(RenderedModels, TheyLookLikeTheStoredPictures)
{
    if(!missing_renderer().empty())
        GTEST_SKIP() << missing_renderer();
    for(ModelPicture const &picture : model_pictures())
    {
        NodePtr const scene = model_scene(picture);
        ASSERT_NE(scene, nullptr) << picture.model;
        PerceivedDifference const difference =
            perceived_difference(stored_pixels(picture), rendered_pixels(scene, picture.view));
        EXPECT_TRUE(difference.looksTheSame())
            << picture.model << ": " << testing::PrintToString(difference);
    }
}
} // namespace
} // namespace OSG::Test
