#include "OSGObjPlainLines.h"

#include <bit>
#include <sstream>

#include <gmock/gmock.h>

#include "InstructionSets.h"
#include "OSGDigitScan.h"
#include "OSGReadBuffer.h"
#include "RandomNumbers.h"

using namespace OSG;
using namespace OSG::Test;
using testing::ElementsAre;

namespace
{
/// The text behind the first word of `lines`, with room around it that must not matter.
class Text
{
  public:
    Text(std::string const &word, std::string const &lines)
        : _word(word)
        , _around(std::string(DigitsAtOnce, '8') + word + lines)
        , _length(lines.size())
    {
        // The characters behind a text are those of a block before.
        _around += '\n';
        _around.append(DigitScanReach, '7');
    }

    ObjPlainText plain() const
    {
        char const *const begin = _around.data() + DigitsAtOnce + _word.size();
        return ObjPlainText(_word, {begin, _length});
    }

  private:
    std::string _word;
    std::string _around;
    std::size_t _length;
};

struct Taken
{
    UInt32 lines;
    std::size_t characters;
    std::vector<UInt32> bits; ///< of all values
};

Taken take_points(std::string const &lines, std::string const &word = "v")
{
    Text const text(word, lines);
    ObjValueList<Pnt3f> list;
    ObjTakenLines const taken = take_plain_vertices(text.plain(), list);
    std::vector<Pnt3f, MemAllocator<Pnt3f>> points;
    list.moveTo(points);
    EXPECT_EQ(points.size(), taken.count);
    Taken result = {taken.count, static_cast<std::size_t>(taken.end - text.plain().begin), {}};
    for(Pnt3f const &point : points)
    {
        for(UInt32 k = 0; k < 3; ++k)
            result.bits.push_back(std::bit_cast<UInt32>(point[k]));
    }
    return result;
}

std::vector<UInt32> bits_by_extraction(std::string const &text, std::string const &word)
{
    std::istringstream in(text);
    in.imbue(std::locale::classic());
    std::vector<UInt32> bits;
    for(std::string token; in >> token;)
    {
        if(token == word)
            continue;
        std::istringstream number(token);
        Real32 value = 0;
        number >> value;
        bits.push_back(std::bit_cast<UInt32>(value));
    }
    return bits;
}

/// Lines of the form "v 1 2 3", the word of the first one left out.
std::string random_vertices(RandomNumbers &random, UInt32 lines)
{
    std::string text;
    for(UInt32 line = 0; line < lines; ++line)
    {
        text += line == 0 ? "" : "\nv";
        for(int k = 0; k < 3; ++k)
        {
            text += random.below(20) == 0 ? "  " : " ";
            text += random.below(2) == 0 ? "-" : "";
            UInt32 const whole = random.below(8);
            for(UInt32 i = 0; i < whole; ++i)
                text += static_cast<char>('0' + random.below(10));
            UInt32 const fraction = random.below(whole == 0 ? 8 : 9) + (whole == 0 ? 1 : 0);
            if(fraction != 0 || random.below(10) == 0)
                text += '.';
            for(UInt32 i = 0; i < fraction; ++i)
                text += static_cast<char>('0' + random.below(10));
        }
        text += random.below(10) == 0 ? " " : "";
        text += random.below(10) == 0 ? "\r" : "";
    }
    return text + "\n";
}

/// The corners of faces by their lines, "7/2/5" from 1, missing numbers as 0.
std::vector<std::vector<std::string>> faces_in(ObjRecords &records)
{
    std::vector<std::vector<std::string>> result;
    for(std::span<ObjTiePoint const> face : records.faces(0))
    {
        result.emplace_back();
        for(ObjTiePoint const &corner : face)
            result.back().push_back(std::to_string(corner.index[0] + 1) + "/" +
                                    std::to_string(corner.index[1] + 1) + "/" +
                                    std::to_string(corner.index[2] + 1));
    }
    std::reverse(result.begin(), result.end());
    return result;
}

std::string random_number(RandomNumbers &random)
{
    std::string digits;
    for(UInt32 count = 1 + random.below(8); count > 0; --count)
        digits += static_cast<char>('0' + random.below(10));
    return digits;
}

std::string without_zeros(std::string const &digits) { return std::to_string(std::stoul(digits)); }

/// Faces with corners of one form, as text and as they have to come back.
struct RandomFaces
{
    std::string text;
    std::vector<std::vector<std::string>> faces;
};

RandomFaces random_faces(RandomNumbers &random, UInt32 lines, UInt32 form)
{
    RandomFaces result;
    for(UInt32 line = 0; line < lines; ++line)
    {
        result.text += line == 0 ? "" : "\nf";
        std::vector<std::string> &face = result.faces.emplace_back();
        for(UInt32 corners = random.below(random.below(10) == 0 ? 40 : 6) + 1; corners > 0;
            --corners)
        {
            std::string const a = random_number(random);
            std::string const b = random_number(random);
            std::string const c = random_number(random);
            bool const hasSecond = form == 1 || form == 3;
            bool const hasThird = form >= 2;
            result.text += random.below(20) == 0 ? "  " : " ";
            result.text +=
                a + (form != 0 ? "/" : "") + (hasSecond ? b : "") + (hasThird ? "/" + c : "");
            face.push_back(without_zeros(a) + "/" + (hasSecond ? without_zeros(b) : "0") + "/" +
                           (hasThird ? without_zeros(c) : "0"));
        }
        result.text += random.below(10) == 0 ? " \r" : "";
    }
    result.text += '\n';
    return result;
}
} // namespace

TEST(ObjPlainLines, VerticesAreReadAsAStreamReadsThemWithEveryInstructionSet)
{
    for_each_instruction_set(
        []
        {
            RandomNumbers random(11);
            for(int round = 0; round < 300 && !testing::Test::HasFailure(); ++round)
            {
                std::string const text = random_vertices(random, 1 + random.below(60));
                Taken const taken = take_points(text);
                std::vector<UInt32> const expected = bits_by_extraction(text, "v");
                EXPECT_EQ(taken.bits, expected) << text;
                EXPECT_EQ(taken.characters, text.size() - 1);
            }
        });
}

TEST(ObjPlainLines, FacesOfEachFormAreReadWithEveryInstructionSet)
{
    for_each_instruction_set(
        []
        {
            RandomNumbers random(12);
            for(UInt32 round = 0; round < 300 && !testing::Test::HasFailure(); ++round)
            {
                RandomFaces const made = random_faces(random, 1 + random.below(12), round % 4);
                Text const text("f", made.text);
                ObjRecords records;
                ObjTakenLines const taken = take_plain_faces(text.plain(), records);
                EXPECT_EQ(taken.count, made.faces.size()) << made.text;
                EXPECT_EQ(faces_in(records), made.faces) << made.text;
                EXPECT_EQ(taken.end, text.plain().end - 1);
            }
        });
}

TEST(ObjPlainLines, ABatchEndsBetweenTwoLines)
{
    std::string text = " 0.5 1 -2";
    for(int line = 1; line < 1000; ++line)
        text += "\nv 0.5 1 -2";
    text += '\n';
    Taken const taken = take_points(text);
    EXPECT_GT(taken.lines, 100u);
    EXPECT_LT(taken.lines, 1000u);
    EXPECT_EQ(text.substr(taken.characters, 3), "\nv ");
    EXPECT_EQ(taken.bits.size(), 3 * taken.lines);
}

TEST(ObjPlainLines, ALineOfMoreCornersThanABatchIsLeft)
{
    std::string face;
    for(int i = 0; i < 2000; ++i)
        face += " 1";
    Text const text("f", face + "\n");
    ObjRecords records;
    EXPECT_EQ(take_plain_faces(text.plain(), records).count, 0u);
    EXPECT_TRUE(records.faces(0).empty());
}

namespace
{
struct LineCase
{
    char const *name;
    char const *text;
    UInt32 lines;
};

void PrintTo(LineCase const &row, std::ostream *out) { *out << row.name; }

// Of each text the first lines are plain. The rest is left to the general readers.
LineCase const VertexCases[] = {
    {"Exponent", " 1 2 3\nv 1e5 2 3\n", 1},
    {"ExponentBehindTheLast", " 1 2 3\nv 1 2 3e5\n", 1},
    {"PlusSign", " 1 2 3\nv 1 +2 3\n", 1},
    {"TwoSigns", " 1 2 3\nv 1 --2 3\n", 1},
    {"SignAlone", " 1 2 3\nv 1 - 3\n", 1},
    {"SignWithinANumber", " 1 2 3\nv 1 2-3 4\n", 1},
    {"SignBehindAPoint", " 1 2 3\nv 1 2.-3 4\n", 1},
    {"PointAlone", " 1 2 3\nv 1 . 3\n", 1},
    {"TwoPoints", " 1 2 3\nv 1.2.3 4 5\n", 1},
    {"PointWithoutDigitsBefore", " .5 -.5 5.\n", 1},
    {"LongWhole", " 1 2 3\nv 12345678 2 3\n", 1},
    {"LongFraction", " 1 2 3\nv 0.123456789 2 3\n", 1},
    {"TooFewValues", " 1 2 3\nv 1 2\nv 3 4 5\n", 1},
    {"FourValues", " 1 2 3\nv 1 2 3 4\n", 1},
    {"CommentBehind", " 1 2 3\nv 1 2 3 # 4\n", 1},
    {"OtherWord", " 1 2 3\nvn 1 2 3\n", 1},
    {"LongerWord", " 1 2 3\nvv 1 2 3\n", 1},
    {"IndentedLine", " 1 2 3\n v 1 2 3\n", 1},
    {"EmptyLine", " 1 2 3\n\nv 1 2 3\n", 1},
    {"Tab", " 1 2 3\nv\t1 2 3\nv 1 2 3\n", 1},
    {"TabBetween", " 1 2 3\nv 1\t2 3\nv 1 2 3\n", 1},
    {"Continued", " 1 2 3\nv 1 2 \\\n3\n", 1},
    {"EndOfTheText", " 1 2 3\nv 1 2 3", 1},
    {"EndBehindASpace", " 1 2 3\nv 1 2 ", 1},
    {"EndBehindTheWord", " 1 2 3\nv ", 1},
    {"WideLine", " 1 2 3\nv 1                                                               2 3\n",
     1},
    {"Nothing", "", 0},
    {"LineBreakAlone", "\n", 0}};

class ObjPlainVertexLines : public testing::TestWithParam<LineCase>
{
};

LineCase const FaceCases[] = {{"OtherForm", " 1 2 3\nf 1/2 2/3 3/4\n", 1},
                              {"OtherFormWithinALine", " 1/2/3 2//3 3/4/5\n", 0},
                              {"RelativeNumber", " 1 2 3\nf -1 -2 -3\n", 1},
                              {"NineDigits", " 1 2 3\nf 123456789 1 1\n", 1},
                              {"FourthNumber", " 1/2/3\nf 1/2/3/4 5/6/7\n", 1},
                              {"SlashAtTheEnd", " 1 2 3\nf 1 2/\n", 1},
                              {"SlashWithoutNumber", " 1/2 2/3\nf 1/ 2/2\n", 1},
                              {"Continued", " 1 2 3\nf 1 2 \\\n3\n", 1},
                              {"Comment", " 1 2 3\nf 1 2 # 3\n", 1},
                              {"Tab", " 1 2 3\nf 1\t2 3\n", 1},
                              {"ReturnWithin", " 1 2 3\nf 1 2\r3\n", 1},
                              {"EndOfTheText", " 1 2 3\nf 1 2 3", 1},
                              {"EndBehindTheWord", " 1 2 3\nf ", 1},
                              {"FaceWithoutCorners", " 1 2 3\nf  \nf 1\n", 3},
                              {"NothingBehindTheWord", "\n", 0}};

class ObjPlainFaceLines : public testing::TestWithParam<LineCase>
{
};
} // namespace

TEST_P(ObjPlainVertexLines, AreTakenAsLongAsTheyArePlain)
{
    for_each_instruction_set(
        []
        {
            std::string const text = GetParam().text;
            Taken const taken = take_points(text);
            EXPECT_EQ(taken.lines, GetParam().lines);
            EXPECT_EQ(taken.bits, bits_by_extraction(text.substr(0, taken.characters), "v"));
        });
}

INSTANTIATE_TEST_SUITE_P(Cases, ObjPlainVertexLines, testing::ValuesIn(VertexCases),
                         [](auto const &row) { return std::string(row.param.name); });

TEST_P(ObjPlainFaceLines, AreTakenAsLongAsTheyArePlain)
{
    for_each_instruction_set(
        []
        {
            Text const text("f", GetParam().text);
            ObjRecords records;
            EXPECT_EQ(take_plain_faces(text.plain(), records).count, GetParam().lines);
            EXPECT_EQ(records.faces(0).size(), GetParam().lines);
        });
}

INSTANTIATE_TEST_SUITE_P(Cases, ObjPlainFaceLines, testing::ValuesIn(FaceCases),
                         [](auto const &row) { return std::string(row.param.name); });

TEST(ObjPlainLines, LinesAroundTheLengthOfAWindowAreReadOrLeft)
{
    for_each_instruction_set(
        []
        {
            for(std::size_t spaces = 30; spaces < 80; ++spaces)
            {
                std::string const gap(spaces, ' ');
                for(std::string const &line : {" 1 2" + gap + "-3.25", " 1" + gap + "-.5 12.",
                                               gap + "1 -2 345678.", " 1 2 3" + gap})
                {
                    Taken const taken = take_points(line + "\n");
                    EXPECT_LE(taken.lines, line.size() < DigitWindow::Size ? 1u : 0u);
                    EXPECT_GE(taken.lines, line.size() + 2 < DigitWindow::Last ? 1u : 0u);
                    EXPECT_EQ(taken.bits, bits_by_extraction(taken.lines != 0 ? line : "", "v"));
                }
            }
        });
}

TEST(ObjPlainLines, FacesOfAnyLengthAreReadAsAWhole)
{
    for_each_instruction_set(
        []
        {
            for(std::size_t spaces = 0; spaces < 140; ++spaces)
            {
                std::string const gap(spaces, ' ');
                Text const text("f", " 12345678/1/2 3/44444444/5" + gap + " 6/7/88888888\n");
                ObjRecords records;
                EXPECT_EQ(take_plain_faces(text.plain(), records).count, 1u) << spaces;
                EXPECT_THAT(
                    faces_in(records),
                    ElementsAre(ElementsAre("12345678/1/2", "3/44444444/5", "6/7/88888888")));
            }
        });
}

TEST(ObjPlainLines, OnlyTheFirstLineBehindALongWordIsTaken)
{
    EXPECT_EQ(take_points(" 1 2 3\nvxy 1 2 3\n", "vxy").lines, 1u);
    EXPECT_EQ(take_points(" 1 2 3\nvx 1 2 3\n", "vx").lines, 2u);
}

TEST(ObjPlainLines, ALineThatIsReadInPartsIsLeft)
{
    std::string const blanks(ReadBuffer::LineLimit, ' ');
    Text const text("f", " 1 2 3\nf 1 2" + blanks + "3\n");
    ObjRecords records;
    EXPECT_EQ(take_plain_faces(text.plain(), records).count, 1u);
    EXPECT_THAT(faces_in(records), ElementsAre(ElementsAre("1/0/0", "2/0/0", "3/0/0")));
}

TEST(ObjPlainLines, NumbersBetweenTwoFloatsAreRoundedOnce)
{
    // Half way between 16777216 and its neighbours, and next to that.
    std::string const text = " 8388608.5 8388609.5 8388608.50000001\n";
    EXPECT_EQ(take_points(text).bits, bits_by_extraction(text, "v"));
}
