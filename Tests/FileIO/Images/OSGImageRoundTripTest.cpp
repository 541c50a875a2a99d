// The image file types read back what they write.

#include <cstdlib>

#include <gtest/gtest.h>

#include "Pictures.h"

namespace OSG::Test
{
namespace
{
struct LosslessCase
{
    char const *suffix;
    UInt32 channels;
};

std::string name_of(testing::TestParamInfo<LosslessCase> const &info)
{
    return info.param.suffix + std::to_string(info.param.channels);
}

class LosslessPictures : public testing::TestWithParam<LosslessCase>
{
};

TEST_P(LosslessPictures, ComeBackAsTheyWere)
{
    RandomNumbers random(7);
    for(int round = 0; round < 20; ++round)
    {
        UInt32 const width = 1 + random.below(90);
        UInt32 const height = 1 + random.below(40);
        ImagePtr const written = random_picture(width, height, GetParam().channels, random);
        ImagePtr const read = picture_in(file_of(*written, GetParam().suffix), GetParam().suffix);
        ASSERT_NE(read.get(), nullptr) << width << " x " << height;
        EXPECT_TRUE(same_picture(*written, *read)) << width << " x " << height;
    }
}

INSTANTIATE_TEST_SUITE_P(Formats, LosslessPictures,
                         testing::Values(LosslessCase{"png", 1}, LosslessCase{"png", 2},
                                         LosslessCase{"png", 3}, LosslessCase{"png", 4},
                                         LosslessCase{"tga", 1}, LosslessCase{"tga", 2},
                                         LosslessCase{"tga", 3}, LosslessCase{"tga", 4},
                                         LosslessCase{"bmp", 3}, LosslessCase{"bmp", 4}),
                         name_of);

TEST(BMPImageFileType, GreyComesBackAsColour)
{
    RandomNumbers random(8);
    ImagePtr const grey = random_picture(5, 3, 1, random);
    ImagePtr const read = picture_in(file_of(*grey, "bmp"), "bmp");
    ASSERT_NE(read.get(), nullptr);
    ASSERT_EQ(read->getChannels(), 3u);
    for(std::size_t i = 0; i < read->getPixel().size(); ++i)
        EXPECT_EQ(read->getPixel()[i], grey->getPixel()[i / 3]);
}

// A slope in x and y that no two corners share.
ImagePtr slope(UInt32 width, UInt32 height)
{
    ImagePtr image(Image::create());
    image->set(width, height, 3, nullptr);
    for(UInt32 y = 0; y < height; ++y)
    {
        for(UInt32 x = 0; x < width; ++x)
        {
            UInt8 *const pixel = &image->editPixel()[(y * width + x) * 3];
            pixel[0] = static_cast<UInt8>(200 * x / width);
            pixel[1] = static_cast<UInt8>(200 * y / height);
            pixel[2] = 60;
        }
    }
    return image;
}

TEST(JPEGImageFileType, ASmoothPictureComesBackNearlyAsItWas)
{
    for(UInt32 const size : {1u, 7u, 16u, 61u})
    {
        ImagePtr const written = slope(size, size + 3);
        ImagePtr const read = picture_in(file_of(*written, "jpg"), "jpg");
        ASSERT_NE(read.get(), nullptr);
        ASSERT_EQ(read->getWidth(), size);
        ASSERT_EQ(read->getHeight(), size + 3);
        ASSERT_EQ(read->getChannels(), 3u);
        for(std::size_t i = 0; i < read->getPixel().size(); ++i)
            ASSERT_NEAR(read->getPixel()[i], written->getPixel()[i], 24) << size << " at " << i;
    }
}

TEST(ImageFileTypes, TheBottomRowIsTheFirstOne)
{
    ImagePtr const image = slope(4, 4);
    // An uncompressed bitmap has its bottom row first as well: its first pixel is ours.
    std::string const file = file_of(*image, "bmp");
    ASSERT_EQ(file.size(), 54u + 4 * 12);
    EXPECT_EQ(static_cast<UInt8>(file[54 + 2]), image->getPixel()[0]);
    EXPECT_EQ(static_cast<UInt8>(file[54 + 1]), image->getPixel()[1]);
    EXPECT_EQ(static_cast<UInt8>(file[54 + 36 + 1]), image->getPixel()[3 * 12 + 1]);
}

class EveryFormat : public testing::TestWithParam<char const *>
{
};

TEST_P(EveryFormat, RefusesToWriteAPictureWithoutPixels)
{
    ImagePtr const image(Image::create());
    std::ostringstream out;
    EXPECT_FALSE(file_type(GetParam()).write(*image, out));
    EXPECT_EQ(out.str(), "");
}

TEST_P(EveryFormat, RefusesToWriteFewerPixelsThanTheSizeSays)
{
    ImagePtr const image = slope(4, 4);
    image->editPixel().resize(47);
    std::ostringstream out;
    EXPECT_FALSE(file_type(GetParam()).write(*image, out));
}

TEST_P(EveryFormat, SaysSoWhenTheStreamFails)
{
    std::ostringstream out;
    out.setstate(std::ios::badbit);
    EXPECT_FALSE(file_type(GetParam()).write(*slope(4, 4), out));
}

INSTANTIATE_TEST_SUITE_P(Formats, EveryFormat, testing::Values("png", "jpg", "tga", "bmp"),
                         [](auto const &row) { return std::string(row.param); });

TEST(ImageFileTypes, OurTexturesAreRead)
{
    std::string const folder = TEST_SOURCE_DIR "/Models/textures/";
    for(char const *file : {"fabric.bmp", "lattice.png", "plaster.tga", "tiles.png", "wood.png"})
    {
        ImagePtr const image(Image::create());
        EXPECT_TRUE(image->read((folder + file).c_str())) << file;
        EXPECT_EQ(image->getName(), folder + file);
    }
}
} // namespace
} // namespace OSG::Test
