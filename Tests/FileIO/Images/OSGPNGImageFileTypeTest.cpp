// Large pictures that pack well: they are counted before memory is taken for them, and none may be
// lost.

#include <gtest/gtest.h>

#include "Pictures.h"

namespace OSG::Test
{
namespace
{
struct ContentCase
{
    char const *name;
    UInt8 (*value)(std::size_t i, RandomNumbers &random);
};

class CountedPictures : public testing::TestWithParam<ContentCase>
{
};

TEST_P(CountedPictures, AreReadAsTheyWere)
{
    RandomNumbers random(2);
    for(UInt32 const channels : {1u, 2u, 3u, 4u})
    {
        ImagePtr const written(Image::create());
        written->set(1700, 1500, channels, nullptr);
        MField<UInt8> &pixel = written->editPixel();
        for(std::size_t i = 0; i < pixel.size(); ++i)
            pixel[i] = GetParam().value(i, random);
        ImagePtr const read = picture_in(file_of(*written, "png"), "png");
        ASSERT_NE(read.get(), nullptr) << channels;
        EXPECT_TRUE(same_picture(*written, *read)) << channels;
    }
}

INSTANTIATE_TEST_SUITE_P(
    PNGImageFileType, CountedPictures,
    testing::Values(ContentCase{"OneColour", [](std::size_t, RandomNumbers &) { return UInt8(7); }},
                    ContentCase{"Slope", [](std::size_t i, RandomNumbers &)
                                { return static_cast<UInt8>(i / 4096); }},
                    ContentCase{"Stripes", [](std::size_t i, RandomNumbers &)
                                { return static_cast<UInt8>(i % 251); }},
                    ContentCase{"Specks", [](std::size_t, RandomNumbers &random)
                                { return static_cast<UInt8>(random.below(200) == 0 ? 255 : 0); }}),
    [](auto const &row) { return std::string(row.param.name); });
} // namespace
} // namespace OSG::Test
