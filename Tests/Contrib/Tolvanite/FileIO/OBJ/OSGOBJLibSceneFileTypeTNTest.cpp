#include "OSGOBJLibSceneFileTypeTN.h"

#include <sstream>

#include <gmock/gmock.h>

#include "HostLocale.h"
#include "LogCapture.h"
#include "OSGChangeList.h"
#include "OSGSceneFileHandler.h"
#include "OSGThread.h"
#include "ObjScene.h"

using namespace OSG;
using namespace OSG::Test;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{
#define VERTICES "v 0 0 0\nv 1 0 0\nv 0 1 0\nv 1 1 0\n"

std::string const NoFaces = "2: Mesh with empty faceList\n";
std::string const Unmatch = "1: IndexMask unmatch, can not create geo\n";
std::string const OutOfRange =
    "2: Geometry without a name: an index is out of range, what it belongs to is passed over\n";

std::string unknown(std::string const &word) { return "2: Unkown obj data elem: " + word + "\n"; }
std::string ends_in_line(int line, std::string const &word)
{
    return "2: The read ends in line " + std::to_string(line) + ", at '" + word + "'!\n";
}
std::string unknown_material(std::string const &name) { return "1: Unkown mtl " + name + "\n"; }

struct TextCase
{
    char const *name;
    char const *text;
    LogLines log;
    char const *scene;
};

void PrintTo(TextCase const &row, std::ostream *out) { *out << row.name; }

TextCase const TextCases[] = {
    // --- files without faces ---
    {"Nothing", "", {NoFaces}, "null"},
    {"CommentsOnly", "# f 1 2 3\n$ x\n#", {NoFaces}, "null"},
    {"VerticesOnly", VERTICES, {NoFaces}, "null"},

    // --- material runs ---
    {"MaterialBeforeTheFirstFace",
     VERTICES "usemtl a\nf 1 2 3\n",
     {unknown_material("a")},
     "(0 1 2)"},
    {"MaterialBehindTheLastFace",
     VERTICES "f 1 2 3\nusemtl a\n",
     {unknown_material("a"), NoFaces},
     "Group[(0 1 2)]"},
    {"TwoMaterialsInARow",
     VERTICES "usemtl a\nusemtl b\nf 1 2 3\n",
     {unknown_material("a"), unknown_material("b")},
     "(0 1 2)"},
    {"NewestRunAndFaceFirst",
     VERTICES "f 1 2 3\nf 3 2 1\nusemtl a\nf 2 1 3\nf 1 1 4\n",
     {unknown_material("a")},
     "Group[(0 0 3)(1 0 2), (2 1 0)(0 1 2)]"},
    {"NameCutAtItsFirstBlank",
     VERTICES "usemtl my wood\nf 1 2 3\n",
     {unknown_material("my"), unknown("wood")},
     "(0 1 2)"},
    {"MaterialWithoutAName",
     VERTICES "f 1 2 3\nusemtl\n",
     {unknown_material(""), NoFaces},
     "Group[(0 1 2)]"},
    {"GroupsObjectsAndSmoothingDoNotSplit",
     VERTICES "g name\nf 1 2 3\no name\ns off\ns 1\ng\nf 3 2 1\n",
     {},
     "(2 1 0)(0 1 2)"},
    {"OnlyTheFirstLibraryOfALine",
     "mtllib none.mtl more.mtl\n" VERTICES "f 1 2 3\n",
     {"2: Couldn't open 'none.mtl'!\n"},
     "(0 1 2)"},

    // --- faces ---
    {"Triangle", VERTICES "f 1 2 3\n", {}, "(0 1 2)"},
    {"OtherWordForAFace", VERTICES "fo 1 2 3\n", {}, "(0 1 2)"},
    {"EqualIndicesOfEachCorner", VERTICES "vt 0 0\nvt 1 0\nvt 0 1\nf 1/1 2/2 3/3\n", {}, "(0 1 2)"},
    {"RelativeIndices", "v 0 0 0\nv 1 0 0\nv 0 1 0\nf -3 -2 -1\nv 5 5 5\n", {}, "(0 1 2)"},
    {"Continuation", VERTICES "f 1 2 3 \\\n4\n", {}, "(0 1 2 3)"},
    {"ContinuationAtTheVeryEnd", VERTICES "f 1 2 3\\", {}, "(0 1 2)"},
    {"ContinuationBeforeCrLf", VERTICES "f 1 2 3 \\\r\n4\nf 3 2 1\n", {}, "(2 1 0)(0 1 2 3)"},
    {"ContinuationBeforeAnEmptyLine",
     VERTICES "f 1 2 3 \\\n\nf 3 2 1\n",
     {ends_in_line(6, "")},
     "(0 1 2)"},
    {"EndsAtWhatIsNoNumber", VERTICES "f 1 2 x 3\n", {}, "(0 1)"},
    {"EndsAtAFraction", VERTICES "f 1.5 2 3\n", {}, "(0)"},
    {"EndsBehindTheZeroOfAHexNumber", VERTICES "f 1 0x10 2 3\n", {}, "(0 4294967295)"},
    {"OneAndTwoCorners", VERTICES "f 1\nf 1 2\n", {}, "(0 1)(0)"},
    {"AllCornersEqual", VERTICES "f 1 1 1\n", {}, "(0 0 0)"},
    {"EveryWhiteSpace", VERTICES "f\t1\v2\f3\r4\r\n", {}, "(0 1 2 3)"},
    {"NoLastLineBreak", VERTICES "f 1 2 3", {}, "(0 1 2)"},
    {"LoneLastWordIsLost", VERTICES "f 1 2 3\nnothing", {}, "(0 1 2)"},
    {"NumberBeforeItsCorner", VERTICES "f /1 2 3\n", {}, "(1 2)"},
    {"FourthNumberOfACorner", VERTICES "f 1/1/1/9 2////7 3\n", {}, "(0 1 2)"},

    // --- indices that nothing stands behind ---
    {"ZerosOnly", VERTICES "f 0 0 0\n", {}, "null"},
    {"ZeroAmongOthers", VERTICES "f 0 2 3\n", {OutOfRange}, "(4294967295 1 2)"},
    {"BeyondTheEnd", VERTICES "f 1 2 999999999\n", {OutOfRange}, "(0 1 999999998)"},
    {"BeforeTheBegin", VERTICES "f -6 -5 -4\n", {OutOfRange}, "(4294967294 4294967295 0)"},
    {"BeyondAllNumbers", VERTICES "f 99999999999999999999 1 2\n", {OutOfRange}, "(2147483646 0 1)"},
    {"BeforeAllNumbers",
     VERTICES "f -99999999999999999999 1 2\n",
     {OutOfRange},
     "(2147483652 0 1)"},
    {"NoVerticesAtAll", "f 1 2 3\n", {OutOfRange}, "(0 1 2)"},

    // --- faces that do not fit together ---
    {"EmptyFaceBeforeAGoodOne", VERTICES "f \r\nf 1 2 3\n", {Unmatch}, "null"},
    {"EmptyFaceBehindAGoodOne", VERTICES "f 1 2 3\nf \r\n", {}, "()(0 1 2)"},
    {"OtherRunsAreBuilt",
     VERTICES "f //1\nf 1 2 3\nusemtl a\nf 3 2 1\n",
     {unknown_material("a"), Unmatch},
     "Group[(2 1 0)]"},
    {"AllRunsFail",
     VERTICES "f \r\nf 1 2 3\nusemtl a\nf 0\n",
     {unknown_material("a"), Unmatch},
     "null"},

    // --- words ---
    {"ThirdValueOfATexCoord", "vt 0.5 0.5 0.0\n" VERTICES "f 1 2 3\n", {}, "(0 1 2)"},
    {"OnlyTheNextWordIsExcused", "vt 0 0\nx\ny\n", {unknown("y"), NoFaces}, "null"},
    {"CommentsDoNotCount", "vt 0 0 # third\nx\n", {NoFaces}, "null"},
    {"FourthValueOfAVertex", "v 1 2 3 1\n", {unknown("1"), NoFaces}, "null"},
    {"CommentBehindValues", VERTICES "v 1 2 3 # f 1 2 3\nf 1 2 5\n", {}, "(0 1 4)"},
    {"Capitals", "V 1 2 3\nF 1 2 3\n", {unknown("V"), unknown("F"), NoFaces}, "null"},

    // --- values that cannot be read end the file ---
    {"NoNumber", VERTICES "f 1 2 3\nv 1 abc 3\nf 3 2 1\n", {ends_in_line(6, "abc")}, "(0 1 2)"},
    {"NotANumber", VERTICES "f 1 2 3\nv nan 0 0\nf 3 2 1\n", {ends_in_line(6, "nan")}, "(0 1 2)"},
    {"Infinite", VERTICES "f 1 2 3\nv inf 0 0\nf 3 2 1\n", {ends_in_line(6, "inf")}, "(0 1 2)"},
    {"TooLarge", VERTICES "f 1 2 3\nv 1e400 0 0\nf 3 2 1\n", {ends_in_line(6, "1e400")}, "(0 1 2)"},
    {"DecimalComma", VERTICES "f 1 2 3\nv 1 0,5 0\nf 3 2 1\n", {ends_in_line(6, "0,5")}, "(0 1 2)"},
    {"ValuesThatTheEndCutsOff", VERTICES "f 1 2 3\nv 1 2", {}, "(0 1 2)"},
    {"TooSmallIsZero", VERTICES "v 1e-42 1e-400 -0\nf 1 2 3\n", {}, "(0 1 2)"},
    {"BareFace", VERTICES "f 1 2 3\nf\nf 3 2 1\n", {ends_in_line(6, "f")}, "()(0 1 2)"},
};

class ObjText : public testing::TestWithParam<TextCase>
{
};
} // namespace

TEST_P(ObjText, GivesItsSceneAndMessages)
{
    ObjScene const scene = read_obj_scene(GetParam().text);
    EXPECT_EQ(describe_scene(scene.root), GetParam().scene);
    EXPECT_EQ(scene.log, GetParam().log);
}

INSTANTIATE_TEST_SUITE_P(All, ObjText, testing::ValuesIn(TextCases),
                         [](auto const &row) { return row.param.name; });

TEST(ObjText, IsCompleteUnlessAValueCannotBeRead)
{
    read_obj_scene(VERTICES "f 1 2 3\nf");
    EXPECT_TRUE(SceneFileHandlerBase::the()->wasLastReadComplete());
    read_obj_scene(VERTICES "f 1 2 3\nv 0,5 0,5 0\n");
    EXPECT_FALSE(SceneFileHandlerBase::the()->wasLastReadComplete());
}

// --- the type ---

TEST(OBJSceneFileTypeTN, ServesItsSuffixReadsAndWrites)
{
    OBJSceneFileTypeTN &type = OBJSceneFileTypeTN::the();
    EXPECT_STREQ(type.getName(), "Wavefront Geometry");
    EXPECT_THAT(type.suffixList(), ElementsAre("obj"));
    EXPECT_TRUE(type.doOverride());
    EXPECT_EQ(type.getOverridePriority(), 20u);
    EXPECT_TRUE(type.canRead());
    EXPECT_TRUE(type.canWrite());
    EXPECT_EQ(SceneFileHandlerBase::the()->getFileType("obj"), &type);
}

namespace
{
class CopiedType : public OBJSceneFileTypeTN
{
  public:
    explicit CopiedType(OBJSceneFileTypeTN const &source)
        : OBJSceneFileTypeTN(source)
    {
    }
};
} // namespace

TEST(OBJSceneFileTypeTN, ACopyKnowsTheElementsToo)
{
    static CopiedType const copy(OBJSceneFileTypeTN::the()); // known to the handler from now on
    std::istringstream in(VERTICES "f 1 2 3\n");
    UnrecordedRefPtr<Node> const root(copy.read(in, nullptr, {}));
    EXPECT_EQ(describe_scene(root), "(0 1 2)");
    EXPECT_EQ(SceneFileHandlerBase::the()->getFileType("obj"), &OBJSceneFileTypeTN::the());
}

TEST(OBJSceneFileTypeTN, ReadsKeepNothingOfEachOther)
{
    EXPECT_EQ(describe_scene(read_obj_scene(VERTICES "f 1 2 3\n").root), "(0 1 2)");
    EXPECT_EQ(read_obj_scene("f -1 -1 -1\n").log, LogLines{});
    EXPECT_EQ(read_obj_scene("usemtl a\nf 1\n").log, LogLines{unknown_material("a")});
}

// --- stream, progress, commit ---

namespace
{
struct Percents
{
    std::vector<UInt32> values;

    Percents()
    {
        SceneFileHandlerBase::the()->setReadProgressCallback([this](UInt32 percent)
                                                             { values.push_back(percent); });
    }
    ~Percents() { SceneFileHandlerBase::the()->setReadProgressCallback({}); }
};

bool has_open_edits() { return Thread::getCurrentChangeList()->hasOpenEdits(); }
} // namespace

TEST(OBJSceneFileTypeTN, AFailedStreamGivesNullSilentlyAndStillCommits)
{
    for(std::ios_base::iostate state : {std::ios_base::failbit, std::ios_base::badbit})
    {
        UnrecordedRefPtr<Node> const edited(Node::create());
        edited->invalidateVolume();
        edited->editVolume();
        ASSERT_TRUE(has_open_edits());
        std::istringstream in(VERTICES "f 1 2 3\n");
        in.setstate(state);
        LogCapture log;
        Percents percents;
        EXPECT_EQ(SceneFileHandlerBase::the()->read(in, "obj"), nullptr);
        EXPECT_THAT(log.texts(), IsEmpty());
        EXPECT_EQ(percents.values.back(), 100u);
        EXPECT_FALSE(has_open_edits());
    }
}

TEST(OBJSceneFileTypeTN, AStreamAtItsEndIsAnEmptyFile)
{
    std::istringstream in("x");
    in.setstate(std::ios_base::eofbit);
    LogCapture log;
    EXPECT_EQ(SceneFileHandlerBase::the()->read(in, "obj"), nullptr);
    EXPECT_THAT(log.texts(), ElementsAre("Mesh with empty faceList\n"));
}

TEST(OBJSceneFileTypeTN, WhatWasReadIsCommitted)
{
    ObjScene const scene = read_obj_scene(VERTICES "f 1 2 3\n");
    EXPECT_FALSE(has_open_edits());
    EXPECT_EQ(scene.root->getChangeMask(), 0u);
    EXPECT_EQ(scene.geometries()[0]->getChangeMask(), 0u);
}

TEST(OBJSceneFileTypeTN, ProgressRisesToAHundred)
{
    std::string text;
    for(int i = 0; i < 200000; ++i)
        text += "v 1 2 3\n";
    Percents percents;
    read_obj_scene(text);
    ASSERT_GT(percents.values.size(), 3u);
    EXPECT_EQ(percents.values.front(), 0u);
    EXPECT_EQ(percents.values.back(), 100u);
    EXPECT_TRUE(std::is_sorted(percents.values.begin(), percents.values.end()));
    EXPECT_EQ(std::adjacent_find(percents.values.begin(), percents.values.end()),
              percents.values.end());
}

TEST(OBJSceneFileTypeTN, TheStreamStandsWhereReadingItTokenByTokenWouldLeaveIt)
{
    LogCapture silence;
    std::istringstream whole(VERTICES "f 1 2 3\n");
    SceneFileHandlerBase::the()->read(whole, "obj");
    EXPECT_EQ(whole.rdstate(), std::ios_base::eofbit | std::ios_base::failbit);

    std::istringstream broken(VERTICES "v 1 abc 3\nrest");
    SceneFileHandlerBase::the()->read(broken, "obj");
    EXPECT_EQ(broken.rdstate(), std::ios_base::failbit);
    broken.clear();
    std::string rest;
    broken >> rest;
    EXPECT_EQ(rest, "abc");
}

TEST(OBJSceneFileTypeTN, TheHostsLocaleDoesNotCount)
{
    std::string const text = "v 1234.5 0.25 -1000\nv 1 0 0\nv 0 1 0\nf 1 2 3\n";
    HostLocale const locale(',', '.');
    ObjScene const scene = read_obj_scene(text);
    ASSERT_EQ(scene.geometries().size(), 1u);
    EXPECT_THAT(vertex_values(*scene.geometries()[0], Geometry::PositionsSlot)[0],
                ElementsAre(1234.5f, 0.25f, -1000.f));
}

// --- bytes of any kind ---

TEST(OBJSceneFileTypeTN, BytesThatAreNoTextAreUnknownElements)
{
    using namespace std::string_literals;
    std::string const bytes = "\0\xff\xfe v\0 1 2 3\nf\0 1\n\xd8\xff\xe0\0\x10JFIF\n"s;
    ObjScene const scene = read_obj_scene(bytes);
    EXPECT_EQ(scene.root, nullptr);
    EXPECT_EQ(scene.log.size(), 4u);
    EXPECT_EQ(scene.log.back(), NoFaces);
}

TEST(OBJSceneFileTypeTN, MessagesThatWordsSpoilStandWhole)
{
    EXPECT_EQ(read_obj_scene("%s%n%d\n").log, (LogLines{unknown("%s%n%d"), NoFaces}));
    std::string const longWord(1000000, 'x');
    EXPECT_EQ(read_obj_scene(longWord + "\n").log, (LogLines{unknown(longWord), NoFaces}));
    EXPECT_EQ(read_obj_scene("usemtl " + longWord + "\n").log,
              (LogLines{unknown_material(longWord), NoFaces}));
}
