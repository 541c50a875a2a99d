#include "LineReader.h"

#include <cerrno>
#include <random>
#include <sstream>
#include <thread>
#include <vector>

#include <unistd.h>

#include <gtest/gtest.h>

#include "Program.h"

namespace Tool
{
namespace
{
using Lines = std::vector<std::string>;

Lines lines_of(LineReader &reader)
{
    Lines lines;
    LineReader::Line line;
    while(reader.next(line, [] {}))
        lines.push_back(line.isTooLong ? "too long" : std::string(line.text));
    return lines;
}

Lines lines_in(std::string const &content)
{
    Test::TextFile const file("lines", content);
    LineReader reader(file.path());
    EXPECT_TRUE(reader.isOpen());
    return lines_of(reader);
}

TEST(LineReader, LinesEndWithALineEndOrTheFile)
{
    EXPECT_EQ(lines_in(""), Lines());
    EXPECT_EQ(lines_in("a"), Lines({"a"}));
    EXPECT_EQ(lines_in("a\n"), Lines({"a"}));
    EXPECT_EQ(lines_in("a\r\nb\rc\r\n\n\r\nd\r"), Lines({"a", "b\rc", "", "", "d"}));
}

TEST(LineReader, LongLinesAreReadAndLongerOnesPassedOver)
{
    std::string const longest(LineReader::MostBytes, 'x');
    std::string const longer(LineReader::MostBytes + 1, 'x');
    std::string const longer_by_far(3 * LineReader::MostBytes, 'x');
    EXPECT_EQ(lines_in(longest + "\nb"), Lines({longest, "b"}));
    EXPECT_EQ(lines_in(longest + "\r\nb"), Lines({longest, "b"}));
    EXPECT_EQ(lines_in(longer + "\nb"), Lines({"too long", "b"}));
    EXPECT_EQ(lines_in("a\n" + longer_by_far + "\nb\n"), Lines({"a", "too long", "b"}));
    EXPECT_EQ(lines_in(longer_by_far), Lines({"too long"}));
}

// The plain version splits the whole text.
TEST(LineReader, RandomTextsGiveTheLinesOfThePlainVersion)
{
    std::mt19937 random(5);
    for(int round = 0; round < 20; ++round)
    {
        std::string text;
        std::size_t const bytes = random() % 1000000;
        unsigned const rarity = 1 + random() % 300000;
        while(text.size() < bytes)
            text += random() % rarity == 0 ? '\n' : random() % 50 == 0 ? '\r' : 'a';
        Lines expected;
        std::istringstream in(text);
        for(std::string line; std::getline(in, line);)
        {
            if(!line.empty() && line.back() == '\r')
                line.pop_back();
            expected.push_back(line);
        }
        EXPECT_EQ(lines_in(text), expected) << round;
    }
}

TEST(LineReader, FilesThatAreNotThereOrFoldersAreNotOpen)
{
    LineReader const missing(testing::TempDir() + "missing");
    EXPECT_FALSE(missing.isOpen());
    EXPECT_EQ(missing.error(), ENOENT);
    LineReader const folder(testing::TempDir());
    EXPECT_FALSE(folder.isOpen());
    EXPECT_EQ(folder.error(), EISDIR);
}

TEST(LineReader, AsksBeforeItReadsAndHandsOutWhatIsThereBefore)
{
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    LineReader reader("/dev/fd/" + std::to_string(ends[0]));
    ASSERT_TRUE(reader.isOpen());
    ASSERT_EQ(write(ends[1], "a\nb\nc", 5), 5);
    int reads = 0;
    auto const count = [&reads] { ++reads; };
    LineReader::Line line;
    ASSERT_TRUE(reader.next(line, count));
    EXPECT_EQ(line.text, "a");
    ASSERT_TRUE(reader.next(line, count));
    EXPECT_EQ(line.text, "b");
    EXPECT_EQ(reads, 1);
    ASSERT_EQ(write(ends[1], "d\n", 2), 2);
    ASSERT_TRUE(reader.next(line, count));
    EXPECT_EQ(line.text, "cd");
    EXPECT_EQ(reads, 2);
    close(ends[1]);
    EXPECT_FALSE(reader.next(line, count));
    close(ends[0]);
}
} // namespace
} // namespace Tool
