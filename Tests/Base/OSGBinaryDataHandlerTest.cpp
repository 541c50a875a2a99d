#include "OSGBinaryDataHandler.h"

#include <limits>
#include <sstream>

#include <gmock/gmock.h>

#include "OSGMemManager.h"
#include "RandomNumbers.h"

namespace
{
using namespace OSG;
using testing::ElementsAre;
using Bytes = std::vector<UInt8>;

template <class T>
Bytes written(T const &value)
{
    MemoryBinaryDataHandler out;
    out.putValue(value);
    return out.getBytes();
}

TEST(BinaryDataHandler, NumbersAreLittleEndianOfTheirOwnWidth)
{
    EXPECT_THAT(written(UInt8(0x81)), ElementsAre(0x81));
    EXPECT_THAT(written(UInt16(0x1234)), ElementsAre(0x34, 0x12));
    EXPECT_THAT(written(UInt32(0x12345678)), ElementsAre(0x78, 0x56, 0x34, 0x12));
    EXPECT_THAT(written(Int32(-2)), ElementsAre(0xfe, 0xff, 0xff, 0xff));
    EXPECT_THAT(written(UInt64(0x0102030405060708)), ElementsAre(8, 7, 6, 5, 4, 3, 2, 1));
    EXPECT_THAT(written(1.f), ElementsAre(0, 0, 0x80, 0x3f));
    EXPECT_THAT(written(1.0), ElementsAre(0, 0, 0, 0, 0, 0, 0xf0, 0x3f));
}

TEST(BinaryDataHandler, BoolIsOneByte)
{
    EXPECT_THAT(written(true), ElementsAre(1));
    EXPECT_THAT(written(false), ElementsAre(0));
    MemoryBinaryDataHandler in(Bytes{7, 0});
    bool first = false, second = true;
    in.getValue(first);
    in.getValue(second);
    EXPECT_TRUE(first);
    EXPECT_FALSE(second);
}

TEST(BinaryDataHandler, StringIsLengthPlusOneCharactersAndZero)
{
    EXPECT_THAT(written(std::string("ab")), ElementsAre(3, 0, 0, 0, 'a', 'b', 0));
    EXPECT_THAT(written(std::string()), ElementsAre(1, 0, 0, 0, 0));
}

TEST(BinaryDataHandler, StringsOfAnyBytesComeBack)
{
    for(std::string const &text : {std::string(), std::string("x"), std::string("a\0b\xff", 4),
                                   std::string(65535, 'y'), std::string(200000, 'z')})
    {
        MemoryBinaryDataHandler handler;
        handler.putValue(text);
        std::string back = "former";
        handler.getValue(back);
        EXPECT_EQ(back, text);
        EXPECT_EQ(handler.getRest(), 0u);
    }
}

TEST(BinaryDataHandler, StringOfSizeZeroReadsAsEmpty)
{
    MemoryBinaryDataHandler in(Bytes{0, 0, 0, 0, 9});
    std::string text = "former";
    in.getValue(text);
    EXPECT_EQ(text, "");
    EXPECT_EQ(in.getRest(), 1u);
}

TEST(BinaryDataHandler, NumbersOfAllKindsComeBack)
{
    auto const there_and_back = [](auto... values)
    {
        std::stringstream stream;
        StreamBinaryDataHandler handler(static_cast<std::iostream &>(stream));
        (handler.putValue(values), ...);
        auto const same = [&handler](auto value)
        {
            decltype(value) back{};
            handler.getValue(back);
            return back == value;
        };
        return (same(values) && ...);
    };
    EXPECT_TRUE(there_and_back(Int8(-100), UInt8(200), Int16(-30000), UInt16(60000),
                               Int32(-2000000000), UInt32(4000000000u),
                               std::numeric_limits<Int64>::min(),
                               std::numeric_limits<UInt64>::max(), 1.1754944e-38f, -1e308, true));
}

TEST(BinaryDataHandler, ArraysAreTheirValuesInOrder)
{
    MemoryBinaryDataHandler handler;
    UInt32 const numbers[] = {1, 2, 0xffffffff};
    bool const flags[] = {true, false};
    std::string const texts[] = {"a", ""};
    handler.putValues(numbers, 3);
    handler.putValues(flags, 2);
    handler.putValues(texts, 2);
    EXPECT_EQ(handler.getBytes().size(), 12u + 2u + 6u + 5u);
    UInt32 numbersBack[3];
    bool flagsBack[2];
    std::string textsBack[2];
    handler.getValues(numbersBack, 3);
    handler.getValues(flagsBack, 2);
    handler.getValues(textsBack, 2);
    EXPECT_THAT(numbersBack, testing::ElementsAreArray(numbers));
    EXPECT_THAT(flagsBack, testing::ElementsAreArray(flags));
    EXPECT_THAT(textsBack, testing::ElementsAreArray(texts));
}

TEST(BinaryDataHandler, ListIsACountAndItsValues)
{
    MemoryBinaryDataHandler handler;
    handler.putList(std::vector<UInt16>{5, 6});
    EXPECT_THAT(handler.getBytes(), ElementsAre(2, 0, 0, 0, 5, 0, 6, 0));
    std::vector<UInt16> back{9};
    handler.getList(back);
    EXPECT_THAT(back, ElementsAre(5, 6));
}

TEST(BinaryDataHandler, BlocksGiveWhatOneCallGives)
{
    OSG::Test::RandomNumbers random(13);
    for(UInt32 count : {0u, 1u, 65535u, 65536u, 65537u, 200000u})
    {
        std::vector<UInt32, MemAllocator<UInt32>> values(count);
        for(UInt32 &value : values)
            value = static_cast<UInt32>(random.next());
        MemoryBinaryDataHandler handler;
        handler.putList(values);
        std::vector<UInt32, MemAllocator<UInt32>> back;
        handler.getList(back);
        EXPECT_TRUE(back == values) << count;
        EXPECT_EQ(handler.getRest(), 0u);
    }
}

TEST(BinaryDataHandler, ShortStorageRaisesAndLeavesTheValue)
{
    Bytes const shortened{1, 2, 3};
    UInt32 number = 77;
    MemoryBinaryDataHandler memory(shortened);
    EXPECT_THROW(memory.getValue(number), BinaryDataHandler::ReadError);
    std::istringstream stream("abc");
    StreamBinaryDataHandler in(stream);
    EXPECT_THROW(in.getValue(number), BinaryDataHandler::ReadError);
    EXPECT_EQ(number, 77u);
}

TEST(BinaryDataHandler, LyingCountRaisesBeforeMemoryIsGone)
{
    Bytes const lie{0xff, 0xff, 0xff, 0xff, 1, 0, 0, 0};
    reset_mem_peak();
    UInt64 const before = get_mem_bytes();
    std::vector<UInt32> list{4};
    MemoryBinaryDataHandler numbers(lie);
    EXPECT_THROW(numbers.getList(list), BinaryDataHandler::ReadError);
    EXPECT_THAT(list, ElementsAre(4));
    std::string text = "former";
    MemoryBinaryDataHandler texts(lie);
    EXPECT_THROW(texts.getValue(text), BinaryDataHandler::ReadError);
    EXPECT_EQ(text, "former");
    EXPECT_LT(get_mem_peak_bytes() - before, 2u << 20);
}

TEST(BinaryDataHandler, WrongDirectionRaises)
{
    std::istringstream in;
    std::ostringstream out;
    StreamBinaryDataHandler reader(in);
    StreamBinaryDataHandler writer(out);
    UInt8 byte = 0;
    EXPECT_THROW(reader.putValue(byte), BinaryDataHandler::WriteError);
    EXPECT_THROW(writer.getValue(byte), BinaryDataHandler::ReadError);
    ExceptionBinaryDataHandler none;
    EXPECT_THROW(none.put(&byte, 1), BinaryDataHandler::WriteError);
    EXPECT_THROW(none.get(&byte, 1), BinaryDataHandler::ReadError);
}

TEST(BinaryDataHandler, StreamThatCannotBeWrittenRaises)
{
    std::ostringstream out;
    out.setstate(std::ios::badbit);
    StreamBinaryDataHandler writer(out);
    EXPECT_THROW(writer.putValue(UInt32(1)), BinaryDataHandler::WriteError);
}

TEST(BinaryDataHandler, RawBytesPassAsTheyAre)
{
    MemoryBinaryDataHandler handler;
    handler.put("a\0\xff", 3);
    EXPECT_THAT(handler.getBytes(), ElementsAre('a', 0, 0xff));
    char back[3];
    handler.get(back, 3);
    EXPECT_EQ(std::string(back, 3), std::string("a\0\xff", 3));
    handler.get(back, 0);
}
} // namespace
