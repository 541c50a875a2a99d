#include "OSGObjRecordReader.h"

#include <cmath>
#include <random>
#include <sstream>

#include <gmock/gmock.h>

#include "HostLocale.h"
#include "ReferenceObjReader.h"
#include "TerrainObj.h"

using namespace OSG;
using namespace OSG::Test;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{
std::ios_base::iostate const Ended = std::ios_base::eofbit | std::ios_base::failbit;

/// Reads the text. The obvious reader must give the same results.
ObjOutcome read(std::string const &text)
{
    ObjOutcome outcome = read_obj(text);
    EXPECT_EQ(outcome.describe(), read_obj_slowly(text).describe());
    return outcome;
}
} // namespace

// --- elements ---

TEST(ObjRecordReader, AnEmptyTextGivesAMeshWithoutFaces)
{
    ObjOutcome const outcome = read("");
    EXPECT_EQ(outcome.meshes.size(), 1u);
    EXPECT_THAT(outcome.faces(0), IsEmpty());
    EXPECT_THAT(outcome.texts(), IsEmpty());
    EXPECT_EQ(outcome.state, Ended);
}

TEST(ObjRecordReader, CommentsAreNoElements)
{
    ObjOutcome const outcome = read("# v 1 2 3\n$ f 1\n  #x\n");
    EXPECT_EQ(outcome.elements, 0u);
    EXPECT_THAT(outcome.texts(), IsEmpty());
}

TEST(ObjRecordReader, ValuesGoIntoTheArraysOfTheirKind)
{
    ObjOutcome const outcome = read("v 1 -2.5 3e1\nvt .5 .25\nvn 0 0 1\nv 4 5 6\n");
    EXPECT_THAT(outcome.positions, ElementsAre(Pnt3f(1, -2.5, 30), Pnt3f(4, 5, 6)));
    EXPECT_THAT(outcome.texCoords, ElementsAre(Vec2f(0.5, 0.25)));
    EXPECT_THAT(outcome.normals, ElementsAre(Vec3f(0, 0, 1)));
    EXPECT_EQ(outcome.elements, 4u);
}

TEST(ObjRecordReader, ArraysThatHoldSomethingAreAppendedTo)
{
    std::vector<Pnt3f, MemAllocator<Pnt3f>> positions(2);
    std::vector<Vec2f, MemAllocator<Vec2f>> texCoords;
    std::vector<Vec3f, MemAllocator<Vec3f>> normals;
    struct Client : ObjReadClient
    {
        void elementsRead(UInt32) override {}
        void readLibrary(std::string const &) override {}
        Int32 findMaterial(std::string const &) override { return ObjRecords::NoMaterial; }
    } client;
    ObjElementMap elements;
    fill_element_map(elements);
    std::istringstream in("v 1 2 3\n");
    ReadBuffer text(in);
    ObjRecords records;
    ObjRecordReader(text, elements, {positions, texCoords, normals}, records, client).read();
    EXPECT_THAT(positions, ElementsAre(Pnt3f(), Pnt3f(), Pnt3f(1, 2, 3)));
}

TEST(ObjRecordReader, GroupsObjectsAndSmoothingChangeNothing)
{
    ObjOutcome const outcome = read("v 0 0 0\ng name\no name more\nf 1\ns off\ns 1\nf 1\n");
    EXPECT_THAT(outcome.texts(), IsEmpty());
    EXPECT_EQ(outcome.meshes.size(), 1u);
    EXPECT_EQ(outcome.faces(0).size(), 2u);
    EXPECT_EQ(outcome.elements, 7u);
}

TEST(ObjRecordReader, AFourthPositionValueIsAnUnknownElement)
{
    EXPECT_THAT(read("v 1 2 3 1\nv 0 0 0\n").texts(), ElementsAre("Unkown obj data elem: 1\n"));
}

TEST(ObjRecordReader, SixPositionValuesWarnOnceForTheLine)
{
    EXPECT_THAT(read("v 1 2 3 0.5 0.25 1\n").texts(), ElementsAre("Unkown obj data elem: 0.5\n"));
}

TEST(ObjRecordReader, AThirdTextureValuePassesSilently)
{
    ObjOutcome const outcome = read("vt 0.5 0.5 0.0\nvt 1 2 3\n");
    EXPECT_THAT(outcome.texts(), IsEmpty());
    EXPECT_EQ(outcome.texCoords.size(), 2u);
    EXPECT_EQ(outcome.elements, 4u);
}

TEST(ObjRecordReader, OnlyTheWordRightBehindATextureCoordinatePasses)
{
    EXPECT_THAT(read("vt 0 0 0\nx\n").texts(), ElementsAre("Unkown obj data elem: x\n"));
}

TEST(ObjRecordReader, AFurtherValueOfANormalIsAnUnknownElement)
{
    EXPECT_THAT(read("vn 0 0 1 0\nf 1 x\n2\n").texts(),
                ElementsAre("Unkown obj data elem: 0\n", "Unkown obj data elem: 2\n"));
}

TEST(ObjRecordReader, ACommentDoesNotComeBetweenATextureCoordinateAndItsThirdValue)
{
    EXPECT_THAT(read("vt 0 0 # w\n0\n").texts(), IsEmpty());
}

TEST(ObjRecordReader, ACommentMayFollowValues)
{
    ObjOutcome const outcome = read("v 1 2 3 # x y z\nv 4 5 6 $ too\n");
    EXPECT_THAT(outcome.texts(), IsEmpty());
    EXPECT_EQ(outcome.positions.size(), 2u);
}

TEST(ObjRecordReader, WordsAreCaseSensitive)
{
    EXPECT_THAT(read("V 1 2 3\nF 1 2 3\n").texts(),
                ElementsAre("Unkown obj data elem: V\n", "Unkown obj data elem: F\n"));
}

TEST(ObjRecordReader, UnknownWordsAreWarnings)
{
    ObjOutcome const outcome = read("l 1 2\n");
    ASSERT_EQ(outcome.messages.size(), 1u);
    EXPECT_EQ(outcome.messages[0].level, LOG_WARNING);
}

// --- libraries and materials ---

TEST(ObjRecordReader, OfALibraryLineTheFirstNameIsRead)
{
    ObjOutcome const outcome = read("mtllib a.mtl b.mtl\nmtllib my file.mtl\n");
    EXPECT_THAT(outcome.events, ElementsAre("library a.mtl", "library my"));
    EXPECT_THAT(outcome.texts(), IsEmpty());
}

TEST(ObjRecordReader, AMaterialBeforeTheFirstFaceStartsNoMesh)
{
    ObjOutcome const outcome = read("usemtl m1\nf 1\n");
    ASSERT_EQ(outcome.meshes.size(), 1u);
    EXPECT_EQ(outcome.meshes[0].material, 1);
}

TEST(ObjRecordReader, AMaterialBehindAFaceStartsAMesh)
{
    ObjOutcome const outcome = read("f 1\nusemtl m1\nf 2\nusemtl m2\n");
    ASSERT_EQ(outcome.meshes.size(), 3u);
    EXPECT_EQ(outcome.meshes[0].material, 2);
    EXPECT_THAT(outcome.faces(0), IsEmpty());
    EXPECT_EQ(outcome.meshes[1].material, 1);
    EXPECT_EQ(outcome.meshes[2].material, ObjRecords::NoMaterial);
}

TEST(ObjRecordReader, OfTwoMaterialsInARowTheSecondCounts)
{
    ObjOutcome const outcome = read("f 1\nusemtl m1\nusemtl m2\nf 1\n");
    ASSERT_EQ(outcome.meshes.size(), 2u);
    EXPECT_EQ(outcome.meshes[0].material, 2);
}

TEST(ObjRecordReader, AnUnknownMaterialIsFatalAndLeavesTheMeshWhatItHad)
{
    ObjOutcome const outcome = read("usemtl m1\nusemtl glass\nf 1\n");
    EXPECT_EQ(outcome.meshes[0].material, 1);
    ASSERT_EQ(outcome.messages.size(), 1u);
    EXPECT_EQ(outcome.messages[0].level, LOG_FATAL);
    EXPECT_EQ(outcome.messages[0].text, "Unkown mtl glass\n");
}

TEST(ObjRecordReader, AnUnknownMaterialStartsAMeshNonetheless)
{
    ObjOutcome const outcome = read("usemtl m1\nf 1\nusemtl glass\nf 1\n");
    ASSERT_EQ(outcome.meshes.size(), 2u);
    EXPECT_EQ(outcome.meshes[0].material, ObjRecords::NoMaterial);
}

TEST(ObjRecordReader, AMaterialNameEndsAtABlank)
{
    ObjOutcome const outcome = read("usemtl m1 shiny\nf 1\n");
    EXPECT_EQ(outcome.meshes[0].material, 1);
    EXPECT_THAT(outcome.texts(), ElementsAre("Unkown obj data elem: shiny\n"));
}

TEST(ObjRecordReader, AMissingMaterialNameIsEmpty)
{
    ObjOutcome const outcome = read("f 1\nusemtl \n");
    EXPECT_THAT(outcome.events, ElementsAre("material "));
    EXPECT_THAT(outcome.texts(), ElementsAre("Unkown mtl \n"));
    EXPECT_EQ(outcome.meshes.size(), 2u);
}

TEST(ObjRecordReader, AMissingLibraryNameIsEmpty)
{
    EXPECT_THAT(read("mtllib \n").events, ElementsAre("library "));
}

TEST(ObjRecordReader, TheLastWordIsLostWithoutALineBreak)
{
    ObjOutcome const outcome = read("f 1\nusemtl");
    EXPECT_EQ(outcome.meshes.size(), 1u);
    EXPECT_EQ(outcome.elements, 1u);
    EXPECT_EQ(outcome.state, std::ios_base::eofbit);
}

// --- ends ---

TEST(ObjRecordReader, TheLastFaceIsKeptWithoutALineBreak)
{
    EXPECT_THAT(read("f 1 2 3").faces(0), ElementsAre("0/-1/-1 1/-1/-1 2/-1/-1"));
}

TEST(ObjRecordReader, WhatTheEndOfTheTextCutsShortIsFilledWithZeros)
{
    ObjOutcome const outcome = read("v 1 2");
    EXPECT_THAT(outcome.positions, ElementsAre(Pnt3f(1, 2, 0)));
    EXPECT_EQ(outcome.state, Ended);
}

TEST(ObjRecordReader, AFailedValueEndsTheRead)
{
    ObjOutcome const outcome = read("v 1 2 3\nf 1\nv 7 abc 3\nf 2\n");
    EXPECT_THAT(outcome.positions, ElementsAre(Pnt3f(1, 2, 3), Pnt3f(7, 0, 0)));
    EXPECT_THAT(outcome.faces(0), ElementsAre("0/-1/-1"));
    EXPECT_EQ(outcome.state, std::ios_base::failbit);
    EXPECT_EQ(outcome.rest, "abc 3\nf 2\n");
}

TEST(ObjRecordReader, WordsForNumbersAndNumbersTooLargeEndTheRead)
{
    for(char const *value : {"nan", "inf", "-inf", "1e400", "-1e400", "1e", "+", "."})
    {
        ObjOutcome const outcome = read(std::string("v ") + value + " 5 6\nv 1 2 3\n");
        EXPECT_THAT(outcome.positions, ElementsAre(Pnt3f())) << value;
        EXPECT_EQ(outcome.state, std::ios_base::failbit) << value;
    }
}

TEST(ObjRecordReader, NumbersTooSmallAreAccepted)
{
    ObjOutcome const outcome = read("v 1e-42 1e-400 -0\nf 1\n");
    EXPECT_EQ(outcome.positions[0][0], 1e-42f);
    EXPECT_EQ(outcome.positions[0][1], 0.0f);
    EXPECT_TRUE(std::signbit(outcome.positions[0][2]));
    EXPECT_EQ(outcome.faces(0).size(), 1u);
}

TEST(ObjRecordReader, HexadecimalEndsBehindItsZero)
{
    ObjOutcome const outcome = read("v 0x10 1 2\n");
    EXPECT_THAT(outcome.positions, ElementsAre(Pnt3f()));
    EXPECT_EQ(outcome.rest, "x10 1 2\n");
}

TEST(ObjRecordReader, ABareFaceWordEndsTheReadWithAnEmptyFace)
{
    ObjOutcome const outcome = read("f 1\nf\nf 2\n");
    EXPECT_THAT(outcome.faces(0), ElementsAre("", "0/-1/-1"));
    EXPECT_EQ(outcome.state, std::ios_base::failbit);
    EXPECT_EQ(outcome.rest, "\nf 2\n");
}

TEST(ObjRecordReader, ABareFaceWordBeforeCarriageReturnIsAnEmptyFace)
{
    EXPECT_THAT(read("f 1\r\nf\r\nf 2\r\n").faces(0), ElementsAre("1/-1/-1", "", "0/-1/-1"));
}

TEST(ObjRecordReader, AnExceptionOfTheStreamsBufferEndsTheReadAsBad)
{
    ObjSettings settings;
    settings.habits.throwAt = 12;
    ObjOutcome const outcome = read_obj("v 1 2 3\nv 4 5 6\n", settings);
    EXPECT_THAT(outcome.positions, ElementsAre(Pnt3f(1, 2, 3), Pnt3f(4, 0, 0)));
    EXPECT_TRUE(outcome.state & std::ios_base::badbit);
}

// --- texts that are no OBJ files ---

TEST(ObjRecordReader, BinaryTextIsUnknownElementsLineByLine)
{
    std::mt19937 random(1234);
    for(int round = 0; round < 300 && !HasFailure(); ++round)
    {
        std::string text = round % 2 == 0 ? "\xff\xd8\xff\xe0" : "";
        while(text.size() < 3000)
            text += static_cast<char>(random());
        EXPECT_EQ(read_obj(text).describe(), read_obj_slowly(text).describe());
    }
}

TEST(ObjRecordReader, SixteenBitTextIsUnknownElements)
{
    std::string wide = "\xfe\xff";
    for(char c : std::string("v 1 2 3\nf 1 2 3\n"))
        wide += std::string(1, '\0') + c;
    ObjOutcome const outcome = read(wide);
    EXPECT_THAT(outcome.positions, IsEmpty());
    EXPECT_THAT(outcome.faces(0), IsEmpty());
}

TEST(ObjRecordReader, LogLinesEndAtAZeroByte)
{
    EXPECT_THAT(read(std::string("ab\0cd 1\n", 8)).texts(),
                ElementsAre("Unkown obj data elem: ab\\x00cd\n"));
}

TEST(ObjRecordReader, LongNamesAreKeptWhole)
{
    std::string const name = repeated(1024 * 1024, 'n');
    ObjOutcome const outcome = read("usemtl " + name + "\nmtllib " + name + "\nf 1\n");
    EXPECT_EQ(outcome.texts().at(0), "Unkown mtl " + name + "\n");
    EXPECT_EQ(outcome.events.at(1), "library " + name);
    EXPECT_EQ(outcome.faces(0).size(), 1u);
}

// --- the host ---

TEST(ObjRecordReader, TheHostsLocaleIsNotAsked)
{
    std::string const text = "v 1.5 1000 2,5\nv 1 2 3\n";
    std::string const expected = read_obj(text).describe();
    HostLocale const german(',', '.');
    EXPECT_EQ(read_obj(text).describe(), expected);
    EXPECT_EQ(read_obj(text).positions[0], Pnt3f(1.5, 1000, 2));
}

TEST(ObjRecordReader, ATerrainOfManyBlocksReadsAlike)
{
    using namespace OSG::Bench;
    for(TerrainCorners corners : {TerrainCorners::Positions, TerrainCorners::Full})
    {
        std::string const text = terrain_obj(20000, corners);
        EXPECT_EQ(read_obj(text, {{}, ReadBuffer::BlockBytes}).describe(),
                  read_obj_slowly(text).describe());
    }
}
