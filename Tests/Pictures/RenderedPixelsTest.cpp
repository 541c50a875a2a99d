#include "RenderedPixels.h"

#include <gtest/gtest.h>

#include "LogCapture.h"
#include "ModelPictures.h"
#include "NeedsContext.h"
#include "PerceivedDifference.h"
#include "RandomScenes.h"

namespace OSG::Test
{
namespace
{
constexpr std::uint64_t Scenes = 60;

class RenderedScenes : public testing::TestWithParam<RandomMaterials>
{
};

TEST_P(RenderedScenes, TheirPixelsAwayFromEdgesAreThoseOfTheSlowRasterizer)
{
    for(std::uint64_t seed = 0; seed < Scenes; ++seed)
    {
        LogCapture log; // of indices out of range
        RandomScene const scene = random_scene(seed, GetParam());
        PictureComparison const comparison = compare(slow_picture(scene.root, view_of(scene.view)),
                                                     rendered_pixels(scene.root, scene.view));
        EXPECT_TRUE(comparison.isEqual())
            << "seed " << seed << ": " << testing::PrintToString(comparison);
    }
}
INSTANTIATE_TEST_SUITE_P(Materials, RenderedScenes,
                         testing::Values(RandomMaterials::Simple, RandomMaterials::Transparent,
                                         RandomMaterials::Textured, RandomMaterials::Chunks));

TEST(RenderedModels, TheyLookLikeTheStoredPictures)
{
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
