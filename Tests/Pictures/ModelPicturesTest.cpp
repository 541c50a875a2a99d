#include "ModelPictures.h"

#include <algorithm>
#include <cstdlib>

#include <gtest/gtest.h>

#include "PerceivedDifference.h"

namespace OSG::Test
{
namespace
{
// Where STORE_PICTURES is set, the pictures are stored anew.
TEST(ModelPictures, TheStoredOnesAreThoseOfTheSlowRasterizer)
{
    for(ModelPicture const &picture : model_pictures())
    {
        SCOPED_TRACE(picture.model);
        NodePtr const scene = model_scene(picture);
        ASSERT_NE(scene, nullptr);
        Pixels const slow = pixels_of(slow_picture(scene, view_of(picture.view)));
        bool const wanted = std::getenv("STORE_PICTURES") != nullptr;
        ASSERT_TRUE(!wanted || store_pixels(picture, slow));
        PerceivedDifference const difference = perceived_difference(stored_pixels(picture), slow);
        EXPECT_LE(difference.mean, 0.05);
        EXPECT_LE(difference.noticed, 0.0005);
    }
}

Pixels shifted(Pixels const &pixels, UInt32 columns)
{
    Pixels result = pixels;
    for(UInt32 y = 0; y < pixels.height; ++y)
    {
        for(UInt32 x = columns; x < pixels.width; ++x)
            std::copy_n(pixels.at(x - columns, y), 3, result.at(x, y));
    }
    return result;
}
Pixels darker(Pixels const &pixels)
{
    Pixels result = pixels;
    for(UInt8 &byte : result.rgb)
        byte = static_cast<UInt8>(byte * 0.9);
    return result;
}

TEST(ModelPictures, WrongPicturesOfThemLookDifferent)
{
    std::vector<Pixels> all;
    for(ModelPicture const &picture : model_pictures())
        all.push_back(stored_pixels(picture));
    for(std::size_t i = 0; i < all.size(); ++i)
    {
        SCOPED_TRACE(model_pictures()[i].model);
        EXPECT_FALSE(perceived_difference(all[i], shifted(all[i], 3)).looksTheSame());
        EXPECT_FALSE(perceived_difference(all[i], darker(all[i])).looksTheSame());
        EXPECT_FALSE(perceived_difference(all[i], all[(i + 1) % all.size()]).looksTheSame());
    }
}
} // namespace
} // namespace OSG::Test
