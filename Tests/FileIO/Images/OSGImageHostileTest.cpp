// Picture files that are cut off, have wrong headers, or are no pictures at all.

#include <fstream>
#include <new>

#include <gtest/gtest.h>

#include "OSGMemManager.h"
#include "Pictures.h"

namespace OSG::Test
{
namespace
{
std::string big32(UInt32 value)
{
    std::string bytes;
    for(int shift = 24; shift >= 0; shift -= 8)
        bytes += static_cast<char>(value >> shift);
    return bytes;
}

/// Most bytes that were held at a time while `file` was read.
UInt64 bytes_held(std::string const &file, char const *suffix)
{
    reset_mem_peak();
    UInt64 const before = get_mem_bytes();
    picture_in(file, suffix);
    return get_mem_peak_bytes() - before;
}

UInt64 allowed(std::string const &file) { return 64 * 1024 * 1024 + 40 * file.size(); }

struct Sample
{
    char const *name;
    char const *suffix;
    UInt32 channels;
};

class HostilePictures : public testing::TestWithParam<Sample>
{
  protected:
    std::string file() const
    {
        RandomNumbers random(3);
        return file_of(*random_picture(19, 11, GetParam().channels, random), GetParam().suffix);
    }
};

TEST_P(HostilePictures, CutOffAnywhereAreNone)
{
    std::string const whole = file();
    ASSERT_NE(picture_in(whole, GetParam().suffix).get(), nullptr);
    for(std::size_t length = 0; length < whole.size(); ++length)
        ASSERT_EQ(picture_in(whole.substr(0, length), GetParam().suffix).get(), nullptr) << length;
}

// Calls `work` with a memory limit that grows a little each time, until it succeeds.
template <class Work>
int failures_of(Work const &work)
{
    UInt64 const before = get_mem_bytes();
    for(int failures = 0;; ++failures)
    {
        set_mem_limit(get_mem_bytes() + 64 * static_cast<UInt64>(failures));
        try
        {
            work();
            set_mem_limit(0);
            return failures;
        }
        catch(std::bad_alloc const &)
        {
            set_mem_limit(0);
            // Lists of the system may have grown by a block. A leak would add up over the
            // repetitions.
            EXPECT_LE(get_mem_bytes(), before + 1024) << failures;
        }
    }
}

TEST_P(HostilePictures, WithoutMemoryAreReadAndWrittenByAnException)
{
    std::string const whole = file();
    ImagePtr const image = picture_in(whole, GetParam().suffix);
    auto const read = [&whole]
    {
        ImagePtr const again = picture_in(whole, GetParam().suffix);
        ASSERT_NE(again, nullptr);
    };
    EXPECT_GT(failures_of(read), 5);
    std::ostringstream out;
    out.str(std::string(4 * whole.size(), ' ')); // has its room from now on
    auto const write = [&out, &image]
    {
        out.seekp(0);
        ASSERT_TRUE(file_type(GetParam().suffix).write(*image, out));
    };
    EXPECT_GT(failures_of(write), 5);
}

TEST_P(HostilePictures, WithChangedBytesStayWithinTheBounds)
{
    std::string const whole = file();
    RandomNumbers random(11);
    int read = 0;
    for(int mutant = 0; mutant < 2000; ++mutant)
    {
        std::string changed = whole;
        // Headers matter most: half of the changes go there.
        UInt32 const range = static_cast<UInt32>(mutant % 2 == 0 ? 64 : whole.size());
        for(UInt32 i = 0; i <= random.below(4); ++i)
            changed[random.below(range)] = static_cast<char>(random.next());
        ASSERT_LE(bytes_held(changed, GetParam().suffix), allowed(changed)) << mutant;
        ImagePtr const image = picture_in(changed, GetParam().suffix);
        if(image == nullptr)
            continue;
        ++read;
        ASSERT_EQ(image->getPixel().size(),
                  std::size_t(image->getWidth()) * image->getHeight() * image->getChannels());
    }
    // Of both kinds there are some, or the changes miss what matters.
    EXPECT_GT(read, 0);
    EXPECT_LT(read, 2000);
}

TEST_P(HostilePictures, AreReadWithBytesBehindTheirEnd)
{
    EXPECT_NE(picture_in(file() + "behind", GetParam().suffix).get(), nullptr);
}

INSTANTIATE_TEST_SUITE_P(Formats, HostilePictures,
                         testing::Values(Sample{"png", "png", 4}, Sample{"jpeg", "jpg", 3},
                                         Sample{"tga", "tga", 3}, Sample{"bmp", "bmp", 3},
                                         Sample{"bmp_alpha", "bmp", 4}),
                         [](auto const &row) { return std::string(row.param.name); });

TEST(PNGImageFileType, AHeaderThatClaimsMuchTakesNoMemory)
{
    RandomNumbers random(5);
    std::string const honest = file_of(*random_picture(19, 11, 3, random), "png");
    for(UInt32 const size : {20000u, 100000u, 0x7fffffffu, 0xffffffffu})
    {
        std::string lying = honest;
        lying.replace(16, 8, big32(size) + big32(size));
        EXPECT_EQ(picture_in(lying, "png").get(), nullptr);
        EXPECT_LT(bytes_held(lying, "png"), 1024u * 1024) << size;
    }
}

TEST(PNGImageFileType, AHeaderThatClaimsWhatItsSizeCouldPackTakesNoMemory)
{
    // Noise: nearly half a megabyte of file, which could hold 500 megabytes of something else.
    RandomNumbers random(5);
    ImagePtr const noise(Image::create());
    noise->set(400, 400, 3, nullptr);
    for(UInt8 &value : noise->editPixel())
        value = static_cast<UInt8>(random.next());
    std::string lying = file_of(*noise, "png");
    ASSERT_GT(lying.size(), 400u * 1000);
    lying.replace(16, 8, big32(12000) + big32(12000));
    EXPECT_EQ(picture_in(lying, "png").get(), nullptr);
    EXPECT_LT(bytes_held(lying, "png"), 4 * lying.size());
}

TEST(JPEGImageFileType, AHeaderThatClaimsMuchTakesNoMemory)
{
    RandomNumbers random(5);
    std::string lying = file_of(*random_picture(200, 200, 3, random), "jpg");
    std::size_t const frame = lying.find(std::string("\xff\xc0", 2));
    ASSERT_NE(frame, std::string::npos);
    lying.replace(frame + 5, 4, "\x70\x00\x70\x00", 4);
    EXPECT_EQ(picture_in(lying, "jpg").get(), nullptr);
    EXPECT_LT(bytes_held(lying, "jpg"), 4 * lying.size());
}

TEST(PNGImageFileType, ADenselyPackedPictureIsRead)
{
    ImagePtr const black(Image::create());
    black->set(2400, 2400, 3, nullptr);
    std::string const file = file_of(*black, "png");
    ASSERT_LT(file.size() * 100, black->getPixel().size());
    ImagePtr const read = picture_in(file, "png");
    ASSERT_NE(read.get(), nullptr);
    EXPECT_EQ(read->getPixel(), black->getPixel());
}

TEST(TGAImageFileType, PacketsThatEndEarlyAreNoPicture)
{
    // 300 pixels of grey; a run brings 128.
    std::string const header("\0\0\x0b\0\0\0\0\0\0\0\0\0\x2c\x01\x01\0\x08\0", 18);
    std::string const run("\xff\x20", 2);
    EXPECT_EQ(picture_in(header + run + run, "tga").get(), nullptr);
    ImagePtr const image = picture_in(header + run + run + run, "tga");
    ASSERT_NE(image.get(), nullptr);
    EXPECT_EQ(image->getPixel()[299], 0x20);
}

TEST(BMPImageFileType, TheSmallestHeightIsNoPicture)
{
    RandomNumbers random(6);
    std::string file = file_of(*random_picture(4, 4, 3, random), "bmp");
    file.replace(22, 4, std::string("\0\0\0\x80", 4));
    EXPECT_EQ(picture_in(file, "bmp").get(), nullptr);
}

TEST(JPEGImageFileType, ATableOfMoreCodesThanThereAreIsNoPicture)
{
    RandomNumbers random(9);
    std::string file = file_of(*random_picture(16, 16, 3, random), "jpg");
    std::size_t const table = file.find(std::string("\xff\xc4", 2));
    ASSERT_NE(table, std::string::npos);
    // Sixteen counts behind marker, length and class.
    for(std::size_t i = 0; i < 16; ++i)
        file[table + 5 + i] = '\xff';
    EXPECT_EQ(picture_in(file, "jpg").get(), nullptr);
}

TEST(JPEGImageFileType, TheEndOfAPreviewIsNotTheEnd)
{
    RandomNumbers random(9);
    std::string const file = file_of(*random_picture(16, 16, 3, random), "jpg");
    std::string const preview("\xff\xe1\x00\x06\xff\xd8\xff\xd9", 8);
    std::string const with = file.substr(0, 2) + preview + file.substr(2);
    EXPECT_NE(picture_in(with, "jpg").get(), nullptr);
    EXPECT_EQ(picture_in(with.substr(0, with.size() - 2), "jpg").get(), nullptr);
}
} // namespace
} // namespace OSG::Test
