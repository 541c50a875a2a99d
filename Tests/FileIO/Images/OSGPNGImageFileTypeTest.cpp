// Large pictures that compress well. Their data are measured before memory is allocated, and all of
// them must still be read.

#include <gtest/gtest.h>

#include "OSGMemManager.h"
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

// --- data that say more or less than the picture needs ---

namespace OSG::Test
{
namespace
{
std::string big32(std::size_t value)
{
    std::string bytes;
    for(int shift = 24; shift >= 0; shift -= 8)
        bytes += static_cast<char>(value >> shift & 255);
    return bytes;
}

std::string chunk(std::string const &name, std::string const &data)
{
    return big32(data.size()) + name + data + big32(0); // check sums are not read
}

/// A zlib stream of stored blocks that comes to `data`.
std::string stored(std::string const &data)
{
    std::string stream("\x78\x01", 2);
    for(std::size_t at = 0; at < data.size() || at == 0; at += 65535)
    {
        std::string const block = data.substr(at, 65535);
        auto const size = static_cast<UInt32>(block.size());
        stream += at + 65535 >= data.size() ? '\1' : '\0';
        for(UInt32 const half : {size, ~size})
            stream += {static_cast<char>(half & 255), static_cast<char>(half >> 8 & 255)};
        stream += block;
    }
    return stream + std::string(4, '\0');
}

/// A fixed block that makes `count` times 258 zeros behind the first byte.
std::string inflating(std::size_t count)
{
    std::string bits = "110"
                       "00110000"; // last block, fixed codes; the byte 0
    for(std::size_t i = 0; i < count; ++i)
        bits += "11000101"
                "00000"; // length 258, distance 1
    bits += "0000000";
    std::string stream("\x78\x01", 2);
    for(std::size_t at = 0; at < bits.size(); at += 8)
    {
        unsigned byte = 0;
        for(std::size_t i = at; i < std::min(at + 8, bits.size()); ++i)
            byte |= unsigned(bits[i] == '1') << (i - at);
        stream += static_cast<char>(byte);
    }
    return stream + std::string(4, '\0');
}

struct Size
{
    std::size_t width;
    std::size_t height;
    bool interlaced = false;
};

std::string png_of(Size const &size, std::vector<std::string> const &data)
{
    std::string file("\x89PNG\r\n\x1a\n", 8);
    std::string const depthGreyPlain("\x08\0\0\0", 4);
    file += chunk("IHDR", big32(size.width) + big32(size.height) + depthGreyPlain +
                              (size.interlaced ? '\1' : '\0'));
    for(std::string const &part : data)
        file += chunk("IDAT", part);
    return file + chunk("IEND", "");
}

std::string rows(std::size_t width, std::size_t height)
{
    return std::string((width + 1) * height, '\0');
}

TEST(PNGImageFileType, DataThatAreMoreThanThePictureMakeItNone)
{
    std::string const exact = rows(5, 7);
    EXPECT_NE(picture_in(png_of({5, 7}, {stored(exact)}), "png"), nullptr);
    EXPECT_EQ(picture_in(png_of({5, 7}, {stored(exact + '\0')}), "png"), nullptr);
    EXPECT_EQ(picture_in(png_of({5, 7}, {stored(exact + rows(5, 1))}), "png"), nullptr);
    EXPECT_EQ(picture_in(png_of({5, 7}, {stored(exact.substr(1))}), "png"), nullptr);
}

TEST(PNGImageFileType, DataOfAnInterlacedPictureAreCountedPassByPass)
{
    // Passes of 1x1, 1x1, 2x1, 1x2, 3x2, 2x4 and 5x3 pixels, a filter byte before each row.
    std::string const exact(2 + 2 + 3 + 2 * 2 + 2 * 4 + 4 * 3 + 3 * 6, '\0');
    EXPECT_NE(picture_in(png_of({5, 7, true}, {stored(exact)}), "png"), nullptr);
    EXPECT_EQ(picture_in(png_of({5, 7, true}, {stored(exact + '\0')}), "png"), nullptr);
    EXPECT_EQ(picture_in(png_of({5, 7, true}, {stored(exact.substr(1))}), "png"), nullptr);
}

TEST(PNGImageFileType, APictureOfOnePixelInflatesNoFurther)
{
    std::string const file = png_of({1, 1}, {inflating(1200000)}); // 300 MB
    reset_mem_peak();
    UInt64 const before = get_mem_peak_bytes();
    EXPECT_EQ(picture_in(file, "png"), nullptr);
    EXPECT_LE(get_mem_peak_bytes() - before, 5 * file.size());
}

TEST(PNGImageFileType, EmptyDataChunksArePassedOver)
{
    std::string const data = stored(rows(5, 7));
    ImagePtr const plain = picture_in(png_of({5, 7}, {data}), "png");
    ASSERT_NE(plain, nullptr);
    for(std::vector<std::string> const &parts :
        {std::vector<std::string>{"", data}, {"", "", data.substr(0, 3), "", data.substr(3), ""}})
    {
        ImagePtr const read = picture_in(png_of({5, 7}, parts), "png");
        ASSERT_NE(read, nullptr);
        EXPECT_TRUE(same_picture(*plain, *read));
    }
    EXPECT_EQ(picture_in(png_of({5, 7}, {""}), "png"), nullptr);
    EXPECT_EQ(picture_in(png_of({5, 7}, {}), "png"), nullptr);
}
} // namespace
} // namespace OSG::Test
