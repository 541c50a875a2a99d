#include "OSGObjFaceParser.h"

#include <random>

#include <gmock/gmock.h>

#include "ReferenceObjReader.h"

using namespace OSG;
using namespace OSG::Test;
using testing::ElementsAre;

namespace
{
/// Three positions, two texture coordinates and one normal.
std::string const Before = "v 0 0 0\nv 1 0 0\nv 0 1 0\nvt 0 0\nvt 1 0\nvn 0 0 1\n";

/// The faces, newest first, that the text makes behind the elements above. The obvious reader must
/// agree on everything.
std::vector<std::string> faces_of(std::string const &text)
{
    ObjOutcome const outcome = read_obj(Before + text);
    EXPECT_EQ(outcome.describe(), read_obj_slowly(Before + text).describe());
    return outcome.faces(0);
}

struct FaceCase
{
    char const *name;
    char const *text;
    std::vector<std::string> faces;
};

void PrintTo(FaceCase const &row, std::ostream *out) { *out << row.name; }

FaceCase const FaceCases[] = {
    {"Positions", "f 1 2 3\n", {"0/-1/-1 1/-1/-1 2/-1/-1"}},
    {"AllForms", "f 1 2/3 4/5/6 7//8\n", {"0/-1/-1 1/2/-1 3/4/5 6/-1/7"}},
    {"OldWord", "fo 1 2\n", {"0/-1/-1 1/-1/-1"}},
    {"RelativePositions", "f -3 -2 -1\n", {"0/-1/-1 1/-1/-1 2/-1/-1"}},
    {"RelativeOfEachKind", "f -1/-1/-1 -3/-2\n", {"2/1/0 0/0/-1"}},
    {"RelativeBeforeTheFirst", "f -5 -4 -3\n", {"-2/-1/-1 -1/-1/-1 0/-1/-1"}},
    {"Zero", "f 0 -0 0/0/0\n", {"-1/-1/-1 -1/-1/-1 -1/-1/-1"}},
    {"PlusSign", "f +1/+2 3\n", {"0/1/-1 2/-1/-1"}},
    {"BeyondTheArray", "f 1 2 999999999\n", {"0/-1/-1 1/-1/-1 999999998/-1/-1"}},
    {"EightAndNineDigits",
     "f 12345678 123456789 000000001/00000000002\n",
     {"12345677/-1/-1 123456788/-1/-1 0/1/-1"}},
    {"Saturating",
     "f 99999999999999999999 -99999999999999999999 2147483648 -2147483649\n",
     {"2147483646/-1/-1 -2147483645/-1/-1 2147483646/-1/-1 -2147483645/-1/-1"}},
    {"LastOfThirtyTwoBits", "f 2147483647 -2147483648\n", {"2147483646/-1/-1 -2147483645/-1/-1"}},
    {"SlashBeforeTheFirstNumber", "f /1 2 3\n", {"1/-1/-1 2/-1/-1"}},
    {"SlashesBeforeALaterCorner", "f 1 /3 //2 2\n", {"0/-1/-1 1/-1/-1"}},
    {"SlashBeforeANumberHidesTheWholeGroup", "f /1/2/3 3\n", {"2/-1/-1"}},
    {"OnlyASlashedGroup", "f //1\n", {""}},
    {"FourthNumber", "f 1/2/3/4 5\n", {"0/1/2 4/-1/-1"}},
    {"SlotThatDoesNotExist", "f 1////2 3\n", {"0/-1/-1 2/-1/-1"}},
    {"SlashWithoutNumber", "f 1/ 2\n", {"0/-1/-1 1/-1/-1"}},
    {"SlashAtTheEnd", "f 1 2/\n", {"0/-1/-1 1/-1/-1"}},
    {"NoNumber", "f 1 2 x 3\n", {"0/-1/-1 1/-1/-1"}},
    {"Fraction", "f 1.5 2 3\n", {"0/-1/-1"}},
    {"Hexadecimal", "f 0x10 2 3\n", {"-1/-1/-1"}},
    {"SignsWithoutBlank", "f 1-2 3/1-2\n", {"0/-1/-1 1/-1/-1 2/0/-1"}},
    {"SignAlone", "f 1 - 2\n", {"0/-1/-1"}},
    {"OneCorner", "f 2\n", {"1/-1/-1"}},
    {"RepeatedCorner", "f 1 1 1\n", {"0/-1/-1 0/-1/-1 0/-1/-1"}},
    {"OtherWhiteSpace", "f\v1\f2\r3\t1\n", {"0/-1/-1 1/-1/-1 2/-1/-1 0/-1/-1"}},
    {"CarriageReturnAlone", "f\r\n", {""}},
    {"BlankAlone", "f \n", {""}},
    {"CarriageReturnAtTheEnd", "f 1 2\r\nf 3\r\n", {"2/-1/-1", "0/-1/-1 1/-1/-1"}},
    {"Comment", "f 1 2 # 3\n", {"0/-1/-1 1/-1/-1"}},
    {"LineBreakInsteadOfNumbers", "f\n1 2 3\n", {""}},
    {"EndOfTheText", "f 1 2", {"0/-1/-1 1/-1/-1"}},
    {"Continued", "f 1 2 3 \\\n4\n", {"0/-1/-1 1/-1/-1 2/-1/-1 3/-1/-1"}},
    {"ContinuedWithoutBlank", "f 1 2\\\n3\n", {"0/-1/-1 1/-1/-1 2/-1/-1"}},
    {"ContinuedCornerGoesOn", "f 1/1\\\n/2 3\n", {"0/1/-1 2/-1/-1"}},
    {"ContinuedCornerBehindABlankDoesNot", "f 1/1 \\\n/2 3\n", {"0/0/-1 2/-1/-1"}},
    {"ContinuedTwice", "f 1 \\\n 2 \\\n 3\nf 1\n", {"0/-1/-1", "0/-1/-1 1/-1/-1 2/-1/-1"}},
    {"RestBehindTheBackslashOnTheLineIsDropped", "f 1 \\ 2\n", {"0/-1/-1"}},
    {"ContinuedBehindASlash", "f 1/\\\n2\n", {"0/-1/-1"}},
    {"BackslashBeforeCarriageReturn", "f 1 \\\r\n2 3\n", {"0/-1/-1 1/-1/-1 2/-1/-1"}},
    {"BackslashBeforeAnEmptyLine", "f 1 \\\n\n2 3\n", {"0/-1/-1"}},
    {"BackslashAtTheEndOfTheText", "f 1 2 \\", {"0/-1/-1 1/-1/-1"}}};

class ObjFaceLines : public testing::TestWithParam<FaceCase>
{
};
} // namespace

TEST_P(ObjFaceLines, GiveTheirCorners) { EXPECT_EQ(faces_of(GetParam().text), GetParam().faces); }

INSTANTIATE_TEST_SUITE_P(Cases, ObjFaceLines, testing::ValuesIn(FaceCases),
                         [](auto const &row) { return std::string(row.param.name); });

TEST(ObjFaceParser, AZeroByteEndsTheFace)
{
    EXPECT_THAT(faces_of(std::string("f 1 2\0 3\nf 3\n", 13)),
                ElementsAre("2/-1/-1", "0/-1/-1 1/-1/-1"));
}

TEST(ObjFaceParser, RelativeIndicesCountWhatStandsBeforeTheFace)
{
    ObjOutcome const outcome = read_obj("v 0 0 0\nf -1\nv 0 0 0\nf -1\n");
    EXPECT_THAT(outcome.faces(0), ElementsAre("1/-1/-1", "0/-1/-1"));
}

TEST(ObjFaceParser, OfALongLineTheFirst8191CharactersAreRead)
{
    for(std::size_t length : {8189, 8190, 8191, 8192, 8193, 8194, 100000})
    {
        SCOPED_TRACE(length);
        for(char const *filling : {" 1", " 12", " 1/2", "  ", "1"})
        {
            std::string line;
            while(line.size() < length)
                line += filling;
            line.resize(length);
            for(char const *tail : {"", "\n", "\nf 1 2 3\n", "\\\n3\n"})
            {
                std::string const text = "f" + line + tail;
                for(std::size_t blockSize : {100, 8192, 256 * 1024})
                    EXPECT_EQ(read_obj(text, {{}, blockSize}).describe(),
                              read_obj_slowly(text).describe());
            }
        }
    }
}

TEST(ObjFaceParser, ACutLineGoesOnAsElements)
{
    ObjOutcome const outcome = read_obj("f" + repeated(8191, ' ') + "7 8\nf 2\n");
    EXPECT_THAT(outcome.faces(0), ElementsAre("1/-1/-1", ""));
    EXPECT_THAT(outcome.texts(), ElementsAre("Unkown obj data elem: 7\n"));
}

TEST(ObjFaceParser, ANumberMayBeCutInTwo)
{
    ObjOutcome const outcome = read_obj("f" + repeated(8189, ' ') + "1234 5\nf 2\n");
    EXPECT_THAT(outcome.faces(0), ElementsAre("1/-1/-1", "11/-1/-1"));
    EXPECT_THAT(outcome.texts(), ElementsAre("Unkown obj data elem: 34\n"));
}

TEST(ObjFaceParser, FacesOfManyContinuedLinesAreKept)
{
    std::string text = "f";
    std::size_t const lines = 1000000;
    for(std::size_t line = 0; line < lines; ++line)
        text += " 1\\\n";
    text += "2\n";
    ObjOutcome const outcome = read_obj(text, {{}, ReadBuffer::BlockBytes});
    ASSERT_EQ(outcome.meshes[0].faces.size(), 1u);
    EXPECT_EQ(outcome.meshes[0].faces[0].size(), lines + 1);
    EXPECT_EQ(outcome.meshes[0].faces[0].back(), (ObjTiePoint{{1, -1, -1}}));
}

TEST(ObjFaceParser, RandomLinesAreReadAlike)
{
    static std::string const pieces[] = {
        "1",    "-1",  "23",   "/",       "//",           " ",          "  ", "\t",
        "\\\n", "\\",  "0",    "4567890", "12345678",     "123456789",  "+2", "x",
        "\r",   "7/8", "7//8", "7/8/9",   " 1/1/1 2/2/2", "99999999999"};
    std::mt19937 random(1);
    for(int round = 0; round < 20000 && !HasFailure(); ++round)
    {
        std::string text = Before;
        for(int face = 0; face < 3; ++face)
        {
            text += "f ";
            for(std::size_t count = random() % 12; count > 0; --count)
                text += pieces[random() % std::size(pieces)];
            text += '\n';
        }
        EXPECT_EQ(read_obj(text, {{}, 1 + random() % 64}).describe(),
                  read_obj_slowly(text).describe())
            << text;
    }
}
