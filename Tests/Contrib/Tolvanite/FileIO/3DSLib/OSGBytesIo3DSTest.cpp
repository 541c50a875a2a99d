#include "OSGBytesIo3DS.h"

#include <climits>
#include <cstring>
#include <sstream>

#include <gtest/gtest.h>

#include "StreamBuffers.h"

using namespace OSG;
using namespace OSG::Test;

namespace
{
std::string read(Lib3dsIo const &io, std::size_t size)
{
    std::string text(size, '?');
    EXPECT_LE(io.read_func(io.self, text.data(), size), size);
    return text;
}

TEST(BytesIo3DS, SeeksAndReadsFromWhereTheStreamStood)
{
    std::istringstream in("..0123456789");
    in.seekg(2);
    BytesIo3DS bytes(in);
    Lib3dsIo io{};
    bytes.connect(io);
    EXPECT_EQ(read(io, 3), "012");
    EXPECT_EQ(io.tell_func(io.self), 3);
    EXPECT_EQ(io.seek_func(io.self, 2, LIB3DS_SEEK_CUR), 0);
    EXPECT_EQ(read(io, 1), "5");
    EXPECT_EQ(io.seek_func(io.self, -2, LIB3DS_SEEK_END), 0);
    EXPECT_EQ(read(io, 2), "89");
    EXPECT_EQ(io.seek_func(io.self, 1, LIB3DS_SEEK_SET), 0);
    EXPECT_EQ(read(io, 1), "1");
    EXPECT_FALSE(bytes.hasEndedEarly());
}

TEST(BytesIo3DS, BehindTheEndAreZeroesAndSeekingStaysPossible)
{
    std::istringstream in("abc");
    BytesIo3DS bytes(in);
    Lib3dsIo io{};
    bytes.connect(io);
    EXPECT_EQ(read(io, 5), std::string("abc\0\0", 5));
    EXPECT_TRUE(bytes.hasEndedEarly());
    EXPECT_EQ(io.seek_func(io.self, 1000, LIB3DS_SEEK_SET), 0);
    EXPECT_EQ(read(io, 2), std::string(2, '\0'));
    EXPECT_EQ(io.seek_func(io.self, 2, LIB3DS_SEEK_SET), 0);
    EXPECT_EQ(read(io, 1), "c");
}

TEST(BytesIo3DS, PlacesThatDoNotExistAreRefused)
{
    std::istringstream in("abc");
    BytesIo3DS bytes(in);
    Lib3dsIo io{};
    bytes.connect(io);
    EXPECT_EQ(io.seek_func(io.self, -1, LIB3DS_SEEK_SET), -1);
    EXPECT_EQ(io.seek_func(io.self, LONG_MIN, LIB3DS_SEEK_END), -1);
    EXPECT_EQ(io.seek_func(io.self, LONG_MAX, LIB3DS_SEEK_END), -1);
    EXPECT_EQ(read(io, 1), "a");
}

TEST(BytesIo3DS, AStreamThatCannotSeekIsReadWhole)
{
    PieceBuffer buffer(repeated(3 << 20, 'x') + "end", {4099, false});
    std::istream in(&buffer);
    BytesIo3DS bytes(in);
    Lib3dsIo io{};
    bytes.connect(io);
    EXPECT_EQ(io.seek_func(io.self, 3 << 20, LIB3DS_SEEK_SET), 0);
    EXPECT_EQ(read(io, 3), "end");
    EXPECT_FALSE(bytes.hasEndedEarly());
}
} // namespace
