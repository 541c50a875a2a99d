#include "OSGInflatedSize.h"

#include <fstream>

#include <gtest/gtest.h>

#include "Pictures.h"

namespace OSG::Test
{
namespace
{
PictureBytes bytes_of(std::string const &text) { return PictureBytes(text.begin(), text.end()); }

/// What a PNG file packs, and the bytes that it has to come to.
struct Packed
{
    PictureBytes data;
    UInt64 size = 0;
};

UInt64 big32(std::string const &file, std::size_t at)
{
    UInt64 value = 0;
    for(std::size_t i = at; i < at + 4; ++i)
        value = value << 8 | static_cast<UInt8>(file[i]);
    return value;
}

Packed packed_in(std::string const &file)
{
    Packed result;
    for(std::size_t at = 8; at + 12 <= file.size(); at += 12 + big32(file, at))
    {
        auto const data = file.begin() + static_cast<std::ptrdiff_t>(at + 8);
        if(file.compare(at + 4, 4, "IDAT") == 0)
            result.data.insert(result.data.end(), data,
                               data + static_cast<std::ptrdiff_t>(big32(file, at)));
    }
    constexpr UInt64 samples[] = {1, 0, 3, 1, 2, 0, 4};
    UInt64 const bits =
        big32(file, 16) * static_cast<UInt8>(file[24]) * samples[static_cast<UInt8>(file[25])];
    result.size = big32(file, 20) * (1 + (bits + 7) / 8); // a filter byte before each row
    return result;
}

std::string model_texture(char const *name)
{
    std::ifstream in(std::string(TEST_SOURCE_DIR "/Models/textures/") + name, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

// These files have codes of their own, those that we write have the fixed ones.
class InflatedSize : public testing::TestWithParam<char const *>
{
  protected:
    static Packed packed()
    {
        std::string const name = GetParam();
        if(name.find('.') != std::string::npos)
            return packed_in(model_texture(GetParam()));
        RandomNumbers random(4);
        return packed_in(file_of(*random_picture(90, 70, 3, random), "png"));
    }
};

TEST_P(InflatedSize, IsToldToTheByte)
{
    Packed const whole = packed();
    ASSERT_GT(whole.data.size(), 20u);
    EXPECT_TRUE(inflates_to(whole.data, whole.size));
    EXPECT_FALSE(inflates_to(whole.data, whole.size + 1));
}

TEST_P(InflatedSize, IsNotReachedByAStreamThatIsCutOff)
{
    Packed whole = packed();
    // The check sum has four bytes, the end of the last block up to three.
    whole.data.resize(whole.data.size() - 8);
    while(!whole.data.empty())
    {
        ASSERT_FALSE(inflates_to(whole.data, whole.size)) << whole.data.size();
        whole.data.pop_back();
    }
}

TEST_P(InflatedSize, OfChangedStreamsEnds)
{
    RandomNumbers random(6);
    Packed const whole = packed();
    for(int mutant = 0; mutant < 2000; ++mutant)
    {
        PictureBytes changed = whole.data;
        for(UInt32 i = 0; i <= random.below(4); ++i)
            changed[random.below(static_cast<UInt32>(changed.size()))] =
                static_cast<UInt8>(random.next());
        // Deflate makes at most 1032 bytes of one.
        ASSERT_FALSE(inflates_to(changed, 1032 * changed.size() + 1));
    }
}

INSTANTIATE_TEST_SUITE_P(Files, InflatedSize,
                         testing::Values("tiles.png", "wood.png", "lattice.png", "ours"),
                         [](auto const &row)
                         {
                             std::string const name = row.param;
                             return name.substr(0, name.find('.'));
                         });

TEST(InflatedSizes, OfStoredBytesIsTheirNumber)
{
    PictureBytes const stored = bytes_of(std::string("\x78\x01\x01\x05\x00\xfa\xff", 7) + "bytes");
    EXPECT_TRUE(inflates_to(stored, 5));
    EXPECT_FALSE(inflates_to(stored, 6));
    PictureBytes lying = stored;
    lying[3] = 6;
    EXPECT_FALSE(inflates_to(lying, 1));
}

TEST(InflatedSizes, OfNothingIsNothing)
{
    EXPECT_TRUE(inflates_to(PictureBytes(), 0));
    EXPECT_FALSE(inflates_to(PictureBytes(), 1));
    EXPECT_FALSE(inflates_to(PictureBytes(1000, UInt8(0)), 1));
}
} // namespace
} // namespace OSG::Test
