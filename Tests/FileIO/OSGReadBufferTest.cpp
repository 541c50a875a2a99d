#include "OSGReadBuffer.h"

#include <bit>
#include <fstream>
#include <memory>
#include <random>
#include <sstream>

#include <gtest/gtest.h>

#include "StreamBuffers.h"

using namespace OSG;
using namespace OSG::Test;

namespace
{
enum class Operation
{
    Token,
    Real,
    LineRest,
    IgnoreLine,
    IgnoreFew,
    IgnoreChar
};

struct Outcome
{
    std::string text; ///< of a token or line, or the bits of a float
    std::ios_base::iostate state = std::ios_base::goodbit;

    bool operator==(Outcome const &) const = default;
};

std::string bits_of(Real32 value) { return std::to_string(std::bit_cast<UInt32>(value)); }

/// Does the operation on a stream. A failed operation gives an empty text or 0.
Outcome run(std::istream &in, Operation operation)
{
    Outcome outcome;
    switch(operation)
    {
    case Operation::Token:
        in >> outcome.text;
        break;
    case Operation::Real:
    {
        Real32 value = 0;
        in >> value;
        outcome.text = bits_of(in.fail() ? 0 : value);
        break;
    }
    case Operation::LineRest:
    {
        std::vector<char> line(8192);
        in.get(line.data(), 8192);
        outcome.text.assign(line.data(), static_cast<std::size_t>(in.gcount()));
        break;
    }
    case Operation::IgnoreLine:
        in.ignore(2147483647, '\n');
        break;
    case Operation::IgnoreFew:
        in.ignore(3, '\n');
        break;
    case Operation::IgnoreChar:
        in.ignore(1);
        break;
    }
    outcome.state = in.rdstate();
    return outcome;
}

Outcome run(ReadBuffer &in, Operation operation)
{
    Outcome outcome;
    switch(operation)
    {
    case Operation::Token:
        outcome.text = in.token();
        break;
    case Operation::Real:
    {
        Real32 value = 1;
        in.readReal32(value);
        outcome.text = bits_of(value);
        break;
    }
    case Operation::LineRest:
    {
        std::string_view const line = in.lineRest();
        outcome.text = line;
        if(in.good())
        {
            EXPECT_TRUE(line.data()[line.size()] == '\n' || line.data()[line.size()] == '\0');
        }
        break;
    }
    case Operation::IgnoreLine:
        in.ignoreLine();
        break;
    case Operation::IgnoreFew:
        in.ignoreLine(3);
        break;
    case Operation::IgnoreChar:
        in.ignoreChar();
        break;
    }
    outcome.state = in.rdstate();
    return outcome;
}

std::string random_text(std::mt19937 &random)
{
    static std::string const pieces[] = {" ",         "\n",
                                         "\n\n",      "\t ",
                                         "\r\n",      "\v\f",
                                         "v",         "vt",
                                         "f",         "1/2/3",
                                         "12",        "-0.5",
                                         "1e",        "1e5",
                                         "1e400",     ".",
                                         "nan",       "\\",
                                         "\\\n",      "#x y",
                                         "0",         "1.25e-3",
                                         "abc",       "12345678901234567890",
                                         "0.1234567", std::string(1, '\0'),
                                         "\xff\xfe"};
    std::string text;
    for(std::size_t count = random() % 40; count > 0; --count)
        text += pieces[random() % std::size(pieces)];
    if(random() % 16 == 0)
        text.insert(random() % (text.size() + 1), 8180 + random() % 24, "x1 "[random() % 3]);
    return text;
}

/// Does the same operations with both and compares every result, and the final state of the
/// streams.
void compare_play(std::string const &text, PieceBuffer::Habits habits, std::size_t blockSize,
                  std::vector<Operation> const &operations)
{
    PieceBuffer slow_buffer(text, habits);
    PieceBuffer fast_buffer(text, habits);
    std::istream slow(&slow_buffer);
    std::istream fast(&fast_buffer);
    slow.imbue(std::locale::classic());
    ReadBuffer reader(fast, blockSize);
    for(Operation operation : operations)
    {
        Outcome const expected = run(slow, operation);
        Outcome const actual = run(reader, operation);
        ASSERT_EQ(actual.text, expected.text) << "operation " << static_cast<int>(operation);
        ASSERT_EQ(actual.state, expected.state) << "operation " << static_cast<int>(operation);
        ASSERT_EQ(reader.bytesConsumed(), text.size() - slow_buffer.rest().size())
            << "operation " << static_cast<int>(operation);
    }
    bool const exact = reader.finish();
    EXPECT_EQ(fast.rdstate(), slow.rdstate());
    if(exact)
    {
        EXPECT_EQ(fast_buffer.rest(), slow_buffer.rest());
    }
    else
    {
        EXPECT_FALSE(habits.seekable);
    }
}

std::vector<Operation> random_operations(std::mt19937 &random)
{
    std::vector<Operation> operations(1 + random() % 40);
    for(Operation &operation : operations)
        operation = static_cast<Operation>(random() % 6);
    return operations;
}
} // namespace

TEST(ReadBuffer, RandomOperationsGiveWhatTheStreamGives)
{
    std::mt19937 random(31337);
    std::size_t const blocks[] = {1, 2, 3, 5, 7, 16, 64, 1000, ReadBuffer::BlockBytes};
    for(int round = 0; round < 6000 && !testing::Test::HasFailure(); ++round)
    {
        SCOPED_TRACE(round);
        PieceBuffer::Habits habits;
        habits.piece = random() % 20;
        compare_play(random_text(random), habits, blocks[random() % std::size(blocks)],
                     random_operations(random));
    }
}

TEST(ReadBuffer, AnExceptionOfTheBufferStrikesAtTheSameCharacter)
{
    std::mt19937 random(99);
    for(int round = 0; round < 4000 && !testing::Test::HasFailure(); ++round)
    {
        SCOPED_TRACE(round);
        std::string const text = random_text(random);
        PieceBuffer::Habits habits;
        habits.piece = random() % 20;
        habits.throwAt = random() % (text.size() + 1);
        compare_play(text, habits, 1 + random() % 30, random_operations(random));
    }
}

TEST(ReadBuffer, ABufferWithoutAWayBackLosesOnlyTheRest)
{
    std::mt19937 random(5);
    for(int round = 0; round < 500 && !testing::Test::HasFailure(); ++round)
    {
        SCOPED_TRACE(round);
        PieceBuffer::Habits habits;
        habits.seekable = false;
        compare_play(random_text(random), habits, 32, random_operations(random));
    }
}

TEST(ReadBuffer, AStreamThatFailedBeforeStaysAsItIs)
{
    for(std::ios_base::iostate state :
        {std::ios_base::failbit, std::ios_base::badbit, std::ios_base::eofbit})
    {
        std::istringstream slow("a b c");
        std::istringstream fast("a b c");
        slow.setstate(state);
        fast.setstate(state);
        ReadBuffer reader(fast);
        EXPECT_EQ(run(reader, Operation::Token), run(slow, Operation::Token));
        EXPECT_TRUE(reader.finish());
        EXPECT_EQ(fast.rdstate(), slow.rdstate());
        EXPECT_EQ(fast.rdbuf()->in_avail(), 5);
    }
}

TEST(ReadBuffer, ReadingBeginsWhereTheStreamStands)
{
    std::istringstream in("skipped rest");
    std::string skipped;
    in >> skipped;
    ReadBuffer reader(in);
    EXPECT_EQ(reader.token(), "rest");
}

TEST(ReadBuffer, FormatFlagsAndWidthOfTheStreamAreNotAsked)
{
    std::istringstream in("  word");
    in >> std::noskipws;
    in.width(2);
    ReadBuffer reader(in);
    EXPECT_EQ(reader.token(), "word");
}

TEST(ReadBuffer, AFileIsGivenBackBehindTheLastCharacterTaken)
{
    std::string const path = testing::TempDir() + "read_buffer_rest.txt";
    {
        std::ofstream out(path, std::ios_base::binary);
        for(int line = 0; line < 100000; ++line)
            out << "line " << line << '\n';
    }
    std::ifstream in(path, std::ios_base::binary);
    ReadBuffer reader(in);
    for(int line = 0; line < 60000; ++line)
        reader.ignoreLine();
    EXPECT_TRUE(reader.finish());
    std::string rest;
    std::getline(in, rest);
    EXPECT_EQ(rest, "line 60000");
    std::remove(path.c_str());
}

TEST(ReadBuffer, ADirectoryIsABadStreamNotAnException)
{
    std::ifstream in(testing::TempDir());
    ReadBuffer reader(in);
    EXPECT_EQ(reader.token(), "");
    EXPECT_TRUE(reader.bad());
    reader.finish();
    EXPECT_TRUE(in.bad());
}

TEST(ReadBuffer, FinishRaisesWhatTheStreamIsSetToRaise)
{
    std::istringstream in("a");
    in.exceptions(std::ios_base::eofbit);
    ReadBuffer reader(in);
    EXPECT_EQ(reader.token(), "a");
    EXPECT_THROW(reader.finish(), std::ios_base::failure);
}

TEST(ReadBuffer, OfAHugeTokenTheBeginningIsKept)
{
    UInt64 const bytes = 200 * 1024 * 1024;
    RepeatBuffer endless("start", repeated(4096, 'x'), bytes);
    std::istream in(&endless);
    reset_mem_peak();
    UInt64 const before = get_mem_bytes();
    ReadBuffer reader(in);
    std::string_view const token = reader.token();
    EXPECT_EQ(token.size(), ReadBuffer::TokenLimit);
    EXPECT_EQ(token.substr(0, 7), "startxx");
    EXPECT_TRUE(reader.eof());
    EXPECT_EQ(reader.bytesConsumed(), bytes);
    EXPECT_LT(get_mem_peak_bytes() - before, 16u * 1024 * 1024);
}

TEST(ReadBuffer, AHugeNumberTakesNoMemory)
{
    RepeatBuffer endless("0.", std::string(4096, '3'), 100 * 1024 * 1024);
    std::istream in(&endless);
    reset_mem_peak();
    UInt64 const before = get_mem_bytes();
    ReadBuffer reader(in);
    Real32 value;
    EXPECT_TRUE(reader.readReal32(value));
    EXPECT_EQ(value, 1.0f / 3.0f);
    EXPECT_LT(get_mem_peak_bytes() - before, 1024u * 1024);
}

TEST(ReadBuffer, BlocksAreCountedAsTheyAreTaken)
{
    std::istringstream in(repeated(1000, 'x') + " y");
    ReadBuffer reader(in, 100);
    EXPECT_EQ(reader.blocksRead(), 0u);
    reader.token();
    EXPECT_EQ(reader.blocksRead(), 11u);
    EXPECT_EQ(reader.bytesConsumed(), 1000u);
}

// --- place ---

TEST(ReadBuffer, TellsTheLineAcrossBlocksOfAnySize)
{
    std::string text;
    for(int line = 1; line <= 40; ++line)
        text += std::string(static_cast<std::size_t>(line % 7), ' ') + std::to_string(line) + "\n";
    for(std::size_t blockSize : {1u, 3u, 8u, 64u, 1000u})
    {
        std::istringstream in(text);
        ReadBuffer buffer(in, blockSize);
        for(UInt64 line = 1; line <= 40; ++line)
        {
            ASSERT_EQ(buffer.token(), std::to_string(line));
            ASSERT_EQ(buffer.lineNumber(), line) << blockSize;
        }
    }
}

TEST(ReadBuffer, TellsTheWordThatANumberCouldNotBeReadFrom)
{
    std::pair<char const *, char const *> const rows[] = {{"1,5 2", "1,5"},      {" abc 2", "abc"},
                                                          {"1e400\n2", "1e400"}, {"\n\nnan", "nan"},
                                                          {"1 2x", "2x"},        {"-\t1", "-"}};
    for(auto const &[text, word] : rows)
    {
        for(std::size_t blockSize : {1u, 2u, 3u, 1000u})
        {
            std::istringstream in(std::string(text) + " 1 1 1");
            ReadBuffer buffer(in, blockSize);
            Real32 values[3];
            buffer.readReal32s(values, 3);
            ASSERT_TRUE(buffer.fail());
            EXPECT_EQ(buffer.wordHere(), word) << blockSize;
        }
    }
}

TEST(ReadBuffer, CutsAWordOfAnyLengthAroundItsPlace)
{
    std::string text(401, '1');
    text[200] = 'x';
    std::istringstream in(text);
    ReadBuffer buffer(in, 16);
    Real32 value;
    buffer.readReal32(value);
    std::string const word = buffer.wordHere();
    EXPECT_LE(word.size(), 2 * ReadBuffer::WordReach);
    EXPECT_EQ(word.substr(0, ReadBuffer::WordReach), std::string(ReadBuffer::WordReach, '1'));
}
