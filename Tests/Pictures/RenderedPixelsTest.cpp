#include "RenderedPixels.h"

#include <gtest/gtest.h>

#include "LogCapture.h"
#include "ModelPictures.h"
#include "PerceivedDifference.h"
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
INSTANTIATE_TEST_SUITE_P(Materials, RenderedScenes,
                         testing::Values(RandomMaterials::Simple, RandomMaterials::Transparent,
                                         RandomMaterials::Textured, RandomMaterials::Chunks));

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
