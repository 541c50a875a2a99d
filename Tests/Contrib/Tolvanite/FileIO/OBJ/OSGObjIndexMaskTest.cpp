#include "OSGObjIndexMask.h"

#include <gtest/gtest.h>

#include "OSGObjFaceParser.h"

#include <sstream>

using namespace OSG;

namespace
{
/// The mask of a run whose faces are the lines of the text, behind five elements of each kind.
ObjIndexMask mask_of_lines(std::string const &lines)
{
    std::istringstream in(lines);
    ReadBuffer text(in);
    ObjRecords records;
    ObjFaceParser parser(text, records);
    for(char c : lines)
    {
        if(c != '\n')
            continue;
        parser.parse({{5, 5, 5}});
        text.ignoreChar();
    }
    return derive_index_mask(records.faces(0));
}

struct MaskCase
{
    char const *name;
    char const *lines;
    UInt32 mask;
    bool singleIndex;
    bool unmatch;
};

void PrintTo(MaskCase const &row, std::ostream *out) { *out << row.name; }

MaskCase const MaskCases[] = {
    {"NoFace", "", 0, true, false},
    {"PositionsAlone", " 1 2 3\n", 1, true, false},
    {"EqualTexCoords", " 1/1 2/2 3/3\n", 3, true, false},
    {"EqualNormals", " 1//1 2//2 3//3\n", 5, true, false},
    {"AllEqual", " 1/1/1 -1/5/-1\n", 7, true, false},
    {"OtherTexCoords", " 1/2 2/3 3/4\n", 3, false, false},
    {"OneOtherNormal", " 1//1 2//2 3//4\n", 5, false, false},
    {"ZerosCountAsNotGiven", " 0 0 0\n", 0, true, false},
    {"NegativeResultsCountAsNotGiven", " -6 -7 -8\n", 0, true, false},
    {"ZeroBesideGoodOnes", " 0 2 3\n", 1, true, false},
    {"TexCoordWithoutPosition", " 0/1\n", 2, false, false},
    {"TexCoordWithoutPositionBehindAnEqualOne", " 2/2 0/2\n", 3, false, false},
    {"MixedCornersOfOneFace", " 1 2/2 3//3\n", 7, true, false},
    {"TexCoordsNotInEveryFace", " 1/1/1 2/2/2\n 2//2 3//3\n", 5, true, false},
    {"NothingInCommonButPositions", " 1/1\n 2//2\n", 1, true, false},
    {"DroppedTexCoordsStillCountAsOtherIndices", " 1/2\n 1\n", 1, false, false},
    {"EmptyOldFaceSpoils", " \n 1 2 3\n", 1, true, true},
    {"EmptyNewFaceIsOverlooked", " 1 2 3\n \n", 1, true, false},
    {"FaceWithoutPositionsSpoils", " 0/1\n 1/1\n", 3, false, true},
    {"EqualMasksWithoutPositionsPass", " 0/1\n 0/2\n", 2, false, false},
    {"OnlyEmptyFaces", " \n \n", 0, true, false}};

class ObjIndexMasks : public testing::TestWithParam<MaskCase>
{
};
} // namespace

TEST_P(ObjIndexMasks, FollowFromTheFaces)
{
    MaskCase const &expected = GetParam();
    ObjIndexMask const actual = mask_of_lines(expected.lines);
    EXPECT_EQ(actual.unmatch, expected.unmatch);
    if(!expected.unmatch)
    {
        EXPECT_EQ(actual.mask, expected.mask);
        EXPECT_EQ(actual.singleIndex, expected.singleIndex);
    }
}

INSTANTIATE_TEST_SUITE_P(Cases, ObjIndexMasks, testing::ValuesIn(MaskCases),
                         [](auto const &row) { return std::string(row.param.name); });
