#include "OSGMtlReader.h"

#include <gmock/gmock.h>

#include "HostLocale.h"
#include "ReferenceObjReader.h"

using namespace OSG;
using namespace OSG::Test;
using testing::ElementsAre;

namespace
{
using Lines = std::vector<std::string>;

struct LibraryCase
{
    char const *name;
    char const *text;
    Lines events; ///< with the count as the last
    Lines messages;
};

void PrintTo(LibraryCase const &row, std::ostream *out) { *out << row.name; }

LibraryCase const LibraryCases[] = {
    {"Nothing", "", {"count 0"}, {}},
    {"CommentsOnly", "# newmtl a\n$ b\n", {"count 0"}, {}},
    {"Material", "newmtl wood\n", {"new wood", "count 1"}, {}},
    {"TwoOfOneName", "newmtl a\nnewmtl a\n", {"new a", "new a", "count 2"}, {}},
    {"NameWithBlanks",
     "newmtl my wood\nKd 1 1 1\n",
     {"new my", "diffuse 1 1 1", "count 1"},
     {"Invalid wood entry in lib.mtl\n"}},
    {"Colors",
     "newmtl a\nKd 1 0 0\nKa 0 1 0\nKs 0 0 1\n",
     {"new a", "diffuse 1 0 0", "ambient 0 1 0", "specular 0 0 1", "count 1"},
     {}},
    {"ValuesAsTheyStand",
     "newmtl a\nNs 1e38\nd -5\nTr 7\nKd -1 2 1e-3\n",
     {"new a", "shininess 9.99999968e+37", "transparency 6", "transparency 7",
      "diffuse -1 2 0.00100000005", "count 1"},
     {}},
    {"DissolveIsTheRestToOne", "newmtl a\nd 0.25\n", {"new a", "transparency 0.75", "count 1"}, {}},
    {"Transparency", "newmtl a\nTr 0.25\n", {"new a", "transparency 0.25", "count 1"}, {}},
    {"LastTransparencyStands",
     "newmtl a\nd 0.25\nTr 0.5\n",
     {"new a", "transparency 0.75", "transparency 0.5", "count 1"},
     {}},
    {"ColorBeforeItsMap",
     "newmtl a\nKd 1 0 0\nmap_Kd a.png\n",
     {"new a", "diffuse 1 0 0", "image a.png", "diffuse 1 1 1", "count 1"},
     {}},
    {"ColorBehindItsMap",
     "newmtl a\nmap_Kd a.png\nKd 1 0 0\n",
     {"new a", "image a.png", "diffuse 1 1 1", "count 1"},
     {}},
    {"MapsOfEachColor",
     "newmtl a\nmap_Ka a\nmap_Ks s\nKa 0 0 0\nKs 0 0 0\nKd 0 0 0\n",
     {"new a", "image a", "ambient 1 1 1", "image s", "specular 1 1 1", "diffuse 0 0 0", "count 1"},
     {}},
    {"MapsAreForgottenWithANewMaterial",
     "newmtl a\nmap_Kd a.png\nnewmtl b\nKd 1 0 0\n",
     {"new a", "image a.png", "diffuse 1 1 1", "new b", "diffuse 1 0 0", "count 2"},
     {}},
    {"MapTwice",
     "newmtl a\nmap_Kd a.png\nmap_Kd a.png\n",
     {"new a", "image a.png", "diffuse 1 1 1", "image a.png", "diffuse 1 1 1", "count 1"},
     {}},
    {"MissingImage",
     "newmtl a\nmap_Kd none.png\nKd 1 0 0\n",
     {"new a", "missing none.png", "diffuse 1 0 0", "count 1"},
     {"Can not find none.png texture file in mtl lib.mtl \n"}},
    {"MapOptions",
     "newmtl a\nmap_Kd no-s 2 2 2 a.png\nKd 0 0 0\n",
     {"new a", "missing no-s", "diffuse 0 0 0", "count 1"},
     {"Can not find no-s texture file in mtl lib.mtl \n", "Invalid 2 entry in lib.mtl\n"}},
    {"DissolveMap",
     "newmtl a\nmap_d a.png\nTr 1\n",
     {"new a", "transparency 1", "count 1"},
     {"Invalid map_d entry in lib.mtl\n"}},
    {"Reflection",
     "newmtl a\nrefl -type sphere a.png\n",
     {"new a", "environment", "count 1"},
     {"Invalid -type entry in lib.mtl\n"}},
    {"Bump", "newmtl a\nbump a.png\nTr 1\n", {"new a", "transparency 1", "count 1"}, {}},
    {"BumpWithOption",
     "newmtl a\nbump -bm 1 a.png\nTr 1\n",
     {"new a", "transparency 1", "count 1"},
     {"Invalid 1 entry in lib.mtl\n"}},
    {"Decal", "newmtl a\ndecal a.png\n", {"new a", "count 1"}, {}},
    {"IlluminationOnTheLineOfItsMaterial", "newmtl a illum 2\n", {"new a", "count 1"}, {}},
    {"DroppedNumbers", "newmtl a\nNi 1.5\nTf 1 1 1\nsharpness 60\n", {"new a", "count 1"}, {}},
    {"SeveralEntriesOnALine",
     "newmtl a Ns 5 Tr 1 newmtl b\n",
     {"new a", "shininess 5", "transparency 1", "new b", "count 2"},
     {}},
    {"BeforeTheFirstMaterial",
     "Kd 1 0 0\nnewmtl a\n",
     {"new a", "count 1"},
     {"Invalid Mtl token: Kd, newmtl expected in lib.mtl\n"}},
    {"UnknownWord",
     "newmtl a\na b c\nkd 1 1 1\n",
     {"new a", "count 1"},
     {"Invalid a entry in lib.mtl\n", "Invalid kd entry in lib.mtl\n"}},
    {"FailedNumber", "newmtl a\nKd red\nnewmtl b\n", {"new a", "diffuse 0 0 0", "count 1"}, {}},
    {"FailedSecondNumber",
     "newmtl a\nKs 1 x 1\nnewmtl b\n",
     {"new a", "specular 1 0 0", "count 1"},
     {}},
    {"FailedDroppedNumber", "newmtl a\nNi glass\nnewmtl b\n", {"new a", "count 1"}, {}},
    {"NumbersCutShort", "newmtl a\nKd 1 0", {"new a", "diffuse 1 0 0", "count 1"}, {}},
    {"ImageWithoutALineBreak",
     "newmtl a\nmap_Kd a.png",
     {"new a", "image a.png", "diffuse 1 1 1", "count 1"},
     {}},
    {"ImageWithoutName",
     "newmtl a\nmap_Kd \n",
     {"new a", "missing ", "count 1"},
     {"Can not find  texture file in mtl lib.mtl \n"}},
    {"MaterialWithoutName", "newmtl \n", {"new ", "count 1"}, {}},
    {"LastWordAlone", "newmtl a\nnewmtl", {"new a", "count 1"}, {}}};

class MtlLibraries : public testing::TestWithParam<LibraryCase>
{
};
} // namespace

TEST_P(MtlLibraries, AreReadEntryByEntry)
{
    ObjOutcome const outcome = read_mtl(GetParam().text);
    EXPECT_EQ(outcome.events, GetParam().events);
    EXPECT_EQ(outcome.texts(), GetParam().messages);
    EXPECT_EQ(outcome.describe(), read_mtl_slowly(GetParam().text).describe());
}

INSTANTIATE_TEST_SUITE_P(Cases, MtlLibraries, testing::ValuesIn(LibraryCases),
                         [](auto const &row) { return std::string(row.param.name); });

TEST(MtlReader, OnlyInvalidEntriesAreWarnings)
{
    ObjOutcome const outcome = read_mtl("x\nnewmtl a\nx\nmap_Kd none\n");
    ASSERT_EQ(outcome.messages.size(), 3u);
    EXPECT_EQ(outcome.messages[0].level, LOG_FATAL);
    EXPECT_EQ(outcome.messages[1].level, LOG_WARNING);
    EXPECT_EQ(outcome.messages[2].level, LOG_FATAL);
}

TEST(MtlReader, TheHostsLocaleIsNotAsked)
{
    HostLocale const german(',', '.');
    ObjOutcome const outcome = read_mtl("newmtl a\nTr 0.5\nNs 1000\n");
    EXPECT_THAT(outcome.events,
                ElementsAre("new a", "transparency 0.5", "shininess 1000", "count 1"));
}

TEST(MtlReader, ASceneFileReadAsALibraryGivesNoMaterial)
{
    ObjOutcome const outcome = read_mtl("v 1 2 3\nf 1 2 3\n");
    EXPECT_THAT(outcome.events, ElementsAre("count 0"));
    EXPECT_EQ(outcome.messages.size(), 2u);
}
