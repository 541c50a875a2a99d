#include "OSGImage.h"

#include <cstdio>
#include <fstream>

#include <gtest/gtest.h>

namespace OSG::Test
{
namespace
{
using ImagePtr = UnrecordedRefPtr<Image>;

ImagePtr picture(UInt32 channels, std::vector<UInt8> const &pixels)
{
    ImagePtr image(Image::create());
    EXPECT_TRUE(
        image->set(static_cast<UInt32>(pixels.size()) / channels, 1, channels, pixels.data()));
    return image;
}

TEST(Image, TakesTheSizeThatItIsSetTo)
{
    ImagePtr const image(Image::create());
    UInt8 const pixels[] = {1, 2, 3, 4, 5, 6};
    ASSERT_TRUE(image->set(1, 3, 2, pixels));
    EXPECT_EQ(image->getWidth(), 1u);
    EXPECT_EQ(image->getHeight(), 3u);
    EXPECT_EQ(image->getChannels(), 2u);
    EXPECT_EQ(image->getPixel(), MField<UInt8>(pixels, pixels + 6));
}

TEST(Image, WithoutDataIsBlack)
{
    ImagePtr const image = picture(1, {9, 9});
    ASSERT_TRUE(image->set(2, 2, 1, nullptr));
    EXPECT_EQ(image->getPixel(), MField<UInt8>(4, UInt8(0)));
}

struct ImpossibleSize
{
    char const *name;
    UInt32 width, height, channels;
};

class ImpossibleImage : public testing::TestWithParam<ImpossibleSize>
{
};

TEST_P(ImpossibleImage, IsRefusedAndChangesNothing)
{
    ImagePtr const image = picture(1, {7, 8});
    EXPECT_FALSE(image->set(GetParam().width, GetParam().height, GetParam().channels, nullptr));
    EXPECT_EQ(image->getWidth(), 2u);
    EXPECT_EQ(image->getPixel()[1], 8);
}

INSTANTIATE_TEST_SUITE_P(Sizes, ImpossibleImage,
                         testing::Values(ImpossibleSize{"NoWidth", 0, 1, 3},
                                         ImpossibleSize{"NoHeight", 1, 0, 3},
                                         ImpossibleSize{"NoChannels", 1, 1, 0},
                                         ImpossibleSize{"FiveChannels", 1, 1, 5}),
                         [](auto const &row) { return std::string(row.param.name); });

TEST(Image, AlphaIsBinaryWhereItIsOffOrOn)
{
    EXPECT_TRUE(picture(4, {1, 2, 3, 0, 4, 5, 6, 255})->calcIsAlphaBinary());
    EXPECT_TRUE(picture(2, {128, 255, 64, 0})->calcIsAlphaBinary());
    EXPECT_FALSE(picture(4, {1, 2, 3, 0, 4, 5, 6, 254})->calcIsAlphaBinary());
    EXPECT_FALSE(picture(2, {0, 1})->calcIsAlphaBinary());
}

TEST(Image, WithoutAlphaIsNotBinary)
{
    EXPECT_FALSE(picture(1, {0, 255})->calcIsAlphaBinary());
    EXPECT_FALSE(picture(3, {0, 255, 0})->calcIsAlphaBinary());
    EXPECT_FALSE(ImagePtr(Image::create())->calcIsAlphaBinary());
}

TEST(Image, AFailedReadLeavesTheImageAlone)
{
    std::string const path = testing::TempDir() + "no picture.png";
    std::ofstream(path) << "no picture";
    ImagePtr const image = picture(1, {7, 8});
    image->setName("before");
    for(char const *file : {path.c_str(), "missing.png", ""})
    {
        EXPECT_FALSE(image->read(file));
        EXPECT_EQ(image->getName(), "before");
        EXPECT_EQ(image->getWidth(), 2u);
        EXPECT_EQ(image->getPixel()[1], 8);
    }
    std::remove(path.c_str());
}

TEST(Image, AReadReplacesPictureAndName)
{
    std::string const path = TEST_SOURCE_DIR "/Models/textures/lattice.png";
    ImagePtr const image = picture(1, {7, 8});
    ASSERT_TRUE(image->read(path.c_str()));
    EXPECT_EQ(image->getName(), path);
    EXPECT_GT(image->getWidth(), 2u);
    EXPECT_EQ(image->getPixel().size(),
              std::size_t(image->getWidth()) * image->getHeight() * image->getChannels());
}
} // namespace
} // namespace OSG::Test
