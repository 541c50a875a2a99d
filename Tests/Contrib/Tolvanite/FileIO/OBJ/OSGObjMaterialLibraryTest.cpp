#include "OSGObjMaterialLibrary.h"

#include <gmock/gmock.h>
#include <sys/stat.h>

#include "FakeImages.h"
#include "LogCapture.h"
#include "OSGFieldContainerFactory.h"
#include "OSGSceneFileHandler.h"
#include "ObjScene.h"
#include "TempFolder.h"

using namespace OSG;
using namespace OSG::Test;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{
/// A folder on the search path, with pictures in it.
class ObjMaterialLibraryTest : public testing::Test
{
  protected:
    ObjMaterialLibraryTest()
        : _onPath(SceneFileHandlerBase::the()->getPathHandler(), _folder.path("lib.mtl").c_str())
    {
        fill_element_map(_elements);
        _folder.write("a.fakeimg", std::string("1\xff"
                                               "2\xff"));
        _folder.write("half.fakeimg", std::string("1\x7f"));
        _folder.write("broken.fakeimg", "broken");
        _folder.write("maps/b.fakeimg", std::string("3\xff"));
        FakeImages::the().reads = 0;
    }

    Int32 readFile(char const *name)
    {
        LogCapture log;
        Int32 const count = read_material_library(name, _elements, _materials);
        _messages.clear();
        for(LogCapture::Message const &message : log.messages())
            _messages.push_back(std::to_string(message.level) + ": " + message.text);
        return count;
    }
    Int32 read(std::string const &text)
    {
        _folder.write("lib.mtl", text);
        return readFile("lib.mtl");
    }
    SimpleTexturedMaterial &material(char const *name = "a") { return *_materials.at(name); }

    TempFolder _folder;
    PathHandlerBaseFile _onPath;
    MtlElementMap _elements;
    OBJSceneFileTypeTN::MaterialMap _materials;
    LogLines _messages;
};

Color3f const White(1, 1, 1);
} // namespace

// --- materials ---

TEST_F(ObjMaterialLibraryTest, ANewMaterialStartsPlain)
{
    EXPECT_EQ(read("newmtl a\n"), 1);
    EXPECT_THAT(_messages, IsEmpty());
    EXPECT_EQ(material().getColorMaterial(), 0u);
    EXPECT_EQ(material().getEnvMode(), 0x2100u);
    EXPECT_EQ(material().getMinFilter(), 0x2703u);
    EXPECT_EQ(material().getMagFilter(), 0x2600u);
    EXPECT_FALSE(material().getEnvMap());
    EXPECT_TRUE(material().getLit());
    EXPECT_EQ(material().getImage(), nullptr);
    EXPECT_EQ(material().getDiffuse(), Color3f(0.8f, 0.8f, 0.8f));
    EXPECT_EQ(material().getAmbient(), Color3f(0.2f, 0.2f, 0.2f));
    EXPECT_EQ(material().getSpecular(), Color3f(0, 0, 0));
    EXPECT_EQ(material().getShininess(), 0.f);
    EXPECT_EQ(material().getTransparency(), 0.f);
}

TEST_F(ObjMaterialLibraryTest, ValuesAreSetAsTheyStand)
{
    EXPECT_EQ(read("newmtl a\nKd -1 2 3\nKa .1 .2 .3\nKs 4 5 6\nNs 1e38\nTr 7\n"), 1);
    EXPECT_EQ(material().getDiffuse(), Color3f(-1, 2, 3));
    EXPECT_EQ(material().getAmbient(), Color3f(.1f, .2f, .3f));
    EXPECT_EQ(material().getSpecular(), Color3f(4, 5, 6));
    EXPECT_EQ(material().getShininess(), 1e38f);
    EXPECT_EQ(material().getTransparency(), 7.f);
    EXPECT_THAT(_messages, IsEmpty());
}

TEST_F(ObjMaterialLibraryTest, DissolveIsTheRestToOneAndTheLastStands)
{
    read("newmtl a\nd 0.25\n");
    EXPECT_EQ(material().getTransparency(), 0.75f);
    read("newmtl a\nd 0.25\nTr 0.25\n");
    EXPECT_EQ(material().getTransparency(), 0.25f);
    read("newmtl a\nTr 0.25\nd -5\n");
    EXPECT_EQ(material().getTransparency(), 6.f);
}

TEST_F(ObjMaterialLibraryTest, OfTwoMaterialsOfOneNameTheSecondStands)
{
    EXPECT_EQ(read("newmtl a\nKd 1 0 0\nnewmtl a\nKs 1 0 0\n"), 2);
    EXPECT_EQ(_materials.size(), 1u);
    EXPECT_EQ(material().getDiffuse(), Color3f(0.8f, 0.8f, 0.8f));
    EXPECT_EQ(material().getSpecular(), Color3f(1, 0, 0));
}

TEST_F(ObjMaterialLibraryTest, MaterialsOfFormerLibrariesAreReplacedByNameAlone)
{
    read("newmtl a\nnewmtl b\n");
    OBJSceneFileTypeTN::MaterialPtr const former = _materials.at("b");
    read("newmtl a\nNs 9\n");
    EXPECT_EQ(_materials.size(), 2u);
    EXPECT_EQ(material("a").getShininess(), 9.f);
    EXPECT_EQ(_materials.at("b"), former);
}

TEST_F(ObjMaterialLibraryTest, AFailedNumberEndsTheLibraryAndKeepsWhatWasRead)
{
    EXPECT_EQ(read("newmtl a\nNs 5\nnewmtl b\nKd red\nnewmtl c\n"), 2);
    EXPECT_EQ(material("a").getShininess(), 5.f);
    EXPECT_EQ(material("b").getDiffuse(), Color3f(0, 0, 0));
    EXPECT_EQ(_materials.count("c"), 0u);
    EXPECT_THAT(_messages, ElementsAre("2: The read of lib.mtl ends in line 4, at 'red'!\n"));
}

TEST_F(ObjMaterialLibraryTest, AMaterialWhoseNameIsMissingHasTheEmptyName)
{
    EXPECT_EQ(read("newmtl a\nnewmtl\n"), 2);
    EXPECT_EQ(_materials.count(""), 1u);
}

TEST_F(ObjMaterialLibraryTest, AHundredThousandMaterialsOfOneNameLeaveOne)
{
    std::string text;
    for(int i = 0; i < 100000; ++i)
        text += "newmtl same\n";
    UInt32 const before = FieldContainerFactoryBase::the()->getNumContainers();
    EXPECT_EQ(read(text), 100000);
    EXPECT_EQ(FieldContainerFactoryBase::the()->getNumContainers(), before + 1);
}

// --- words ---

struct WordCase
{
    char const *name;
    char const *text;
    Int32 count;
    LogLines messages;
};

void PrintTo(WordCase const &row, std::ostream *out) { *out << row.name; }

WordCase const WordCases[] = {
    {"CommentsOnly", "# newmtl a\n$ b\n", 0, {}},
    {"BeforeTheFirstMaterial",
     "Kd 1 0 0\nnewmtl a\n",
     1,
     {"1: Invalid Mtl token: Kd, newmtl expected in lib.mtl\n"}},
    {"Unknown", "newmtl a\nkd 1 2 3\n", 1, {"2: Invalid kd entry in lib.mtl\n"}},
    {"DissolveMap", "newmtl a\nmap_d a.fakeimg\n", 1, {"2: Invalid map_d entry in lib.mtl\n"}},
    {"IlluminationOnTheLineOfItsMaterial", "newmtl a illum 2\n", 1, {}},
    {"Bump", "newmtl a\nbump a.fakeimg\n", 1, {}},
    {"BumpWithOptions", "newmtl a\nbump -bm 1 a.fakeimg\n", 1, {"2: Invalid 1 entry in lib.mtl\n"}},
    {"DroppedValues", "newmtl a\ndecal x\nNi 1\nTf 1 1 1\nsharpness 60\nillum 2\n", 1, {}},
    {"Format", "newmtl a\n%s%n\n", 1, {"2: Invalid %s%n entry in lib.mtl\n"}},
};

TEST_F(ObjMaterialLibraryTest, WordsGiveTheirMessagesAndLoadNothing)
{
    for(WordCase const &row : WordCases)
    {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(read(row.text), row.count);
        EXPECT_EQ(_messages, row.messages);
    }
    EXPECT_EQ(FakeImages::the().reads, 0);
}

TEST_F(ObjMaterialLibraryTest, AReflectionSwitchesTheEnvironmentOnAndLeavesItsLine)
{
    read("newmtl a\nrefl -type sphere a.fakeimg\n");
    EXPECT_TRUE(material().getEnvMap());
    EXPECT_EQ(material().getImage(), nullptr);
    EXPECT_THAT(_messages, ElementsAre("2: Invalid -type entry in lib.mtl\n"));
}

// --- maps ---

TEST_F(ObjMaterialLibraryTest, AMapMakesItsColorWhiteForGood)
{
    read("newmtl a\nKd 1 0 0\nmap_Kd a.fakeimg\n");
    EXPECT_EQ(material().getDiffuse(), White);
    read("newmtl a\nmap_Kd a.fakeimg\nKd 1 0 0\nKa 0 1 0\n");
    EXPECT_EQ(material().getDiffuse(), White);
    EXPECT_EQ(material().getAmbient(), Color3f(0, 1, 0));
    read("newmtl a\nmap_Ka a.fakeimg\nKa 1 0 0\nmap_Ks a.fakeimg\nKs 1 0 0\nKd 0 1 0\n");
    EXPECT_EQ(material().getAmbient(), White);
    EXPECT_EQ(material().getSpecular(), White);
    EXPECT_EQ(material().getDiffuse(), Color3f(0, 1, 0));
    EXPECT_THAT(_messages, IsEmpty());
}

TEST_F(ObjMaterialLibraryTest, ANewMaterialForgetsTheMapsOfTheLast)
{
    read("newmtl a\nmap_Kd a.fakeimg\nnewmtl b\nKd 1 0 0\n");
    EXPECT_EQ(material("b").getDiffuse(), Color3f(1, 0, 0));
    EXPECT_EQ(material("b").getImage(), nullptr);
}

TEST_F(ObjMaterialLibraryTest, AnImageIsLoadedOnceForAllMaterials)
{
    read("newmtl a\nmap_Kd a.fakeimg\nnewmtl b\nmap_Ks a.fakeimg\n");
    EXPECT_EQ(FakeImages::the().reads, 1);
    ASSERT_NE(material("a").getImage(), nullptr);
    EXPECT_EQ(material("a").getImage(), material("b").getImage());
}

TEST_F(ObjMaterialLibraryTest, EachLibraryLoadsForItself)
{
    read("newmtl a\nmap_Kd a.fakeimg\n");
    read("newmtl b\nmap_Kd a.fakeimg\n");
    EXPECT_EQ(FakeImages::the().reads, 2);
    EXPECT_NE(material("a").getImage(), material("b").getImage());
}

TEST_F(ObjMaterialLibraryTest, TheLastMapThatLoadedWins)
{
    read("newmtl a\nmap_Kd maps/b.fakeimg\nmap_Ka a.fakeimg\nmap_Ks none.fakeimg\nKs 1 0 0\n");
    ASSERT_NE(material().getImage(), nullptr);
    EXPECT_EQ(material().getImage()->getName(), _folder.path("a.fakeimg"));
    EXPECT_EQ(material().getDiffuse(), White);
    EXPECT_EQ(material().getSpecular(), Color3f(1, 0, 0));
    EXPECT_THAT(_messages,
                ElementsAre("1: Can not find none.fakeimg texture file in mtl lib.mtl \n"));
}

TEST_F(ObjMaterialLibraryTest, AnImageThatCannotBeLoadedIsTriedAgain)
{
    std::string const message = "1: Can not find broken.fakeimg texture file in mtl lib.mtl \n";
    read("newmtl a\nKd 1 0 0\nmap_Kd broken.fakeimg\nmap_Kd broken.fakeimg\n");
    EXPECT_EQ(FakeImages::the().reads, 2);
    EXPECT_THAT(_messages, ElementsAre(message, message));
    EXPECT_EQ(material().getImage(), nullptr);
    EXPECT_EQ(material().getDiffuse(), Color3f(1, 0, 0));
}

TEST_F(ObjMaterialLibraryTest, AnImageThatClaimsMoreThanItHoldsIsNotLoaded)
{
    using namespace std::string_literals;
    // The head of a PNG file of 100,000 by 100,000 pixels, and nothing behind it.
    _folder.write("lying.png",
                  "\x89PNG\r\n\x1a\n\0\0\0\rIHDR\0\x01\x86\xa0\0\x01\x86\xa0\x08\x02\0\0\0"
                  "\x27\x30\x9c\x9f\0\x10\0\0IDAT"s);
    reset_mem_peak();
    UInt64 const before = get_mem_bytes();
    read("newmtl a\nKd 1 0 0\nmap_Kd lying.png\n");
    EXPECT_LT(get_mem_peak_bytes() - before, 64u * 1024 * 1024);
    EXPECT_THAT(_messages, ElementsAre("1: Can not find lying.png texture file in mtl lib.mtl \n"));
    EXPECT_EQ(material().getDiffuse(), Color3f(1, 0, 0));
}

TEST_F(ObjMaterialLibraryTest, OptionsAreTakenForTheImage)
{
    read("newmtl a\nmap_Kd -s 2 2 2 a.fakeimg\nNs 3\n");
    EXPECT_THAT(_messages, ElementsAre("1: Can not find -s texture file in mtl lib.mtl \n",
                                       "2: Invalid 2 entry in lib.mtl\n"));
    EXPECT_EQ(material().getImage(), nullptr);
    EXPECT_EQ(material().getShininess(), 3.f);
}

TEST_F(ObjMaterialLibraryTest, AMapWithoutANameFindsNothing)
{
    read("newmtl a\nmap_Kd\n");
    EXPECT_THAT(_messages, ElementsAre("1: Can not find  texture file in mtl lib.mtl \n"));
}

TEST_F(ObjMaterialLibraryTest, BackslashesInNamesAreSlashes)
{
    read("newmtl a\nmap_Kd .\\maps\\b.fakeimg\n");
    ASSERT_NE(material().getImage(), nullptr);
    EXPECT_EQ(material().getImage()->getName(), _folder.path("maps/b.fakeimg"));
}

TEST_F(ObjMaterialLibraryTest, WhetherAlphaIsBinaryIsTakenFromTheImage)
{
    read("newmtl a\nmap_Kd a.fakeimg\nnewmtl b\nmap_Kd half.fakeimg\n");
    EXPECT_TRUE(material("a").getImage()->getForceAlphaBinary());
    EXPECT_FALSE(material("b").getImage()->getForceAlphaBinary());
}

// --- files ---

TEST_F(ObjMaterialLibraryTest, NoNameIsNoLibrary)
{
    EXPECT_EQ(readFile(nullptr), 0);
    EXPECT_THAT(_messages, IsEmpty());
    EXPECT_EQ(readFile(""), 0);
    EXPECT_THAT(_messages, IsEmpty());
}

TEST_F(ObjMaterialLibraryTest, WhatIsNoRegularFileIsNotFound)
{
    _folder.makeFolder("folder.mtl");
    ASSERT_EQ(mkfifo(_folder.path("pipe.mtl").c_str(), 0600), 0);
    for(std::string const &name :
        {std::string("none.mtl"), std::string("folder.mtl"), std::string("pipe.mtl"),
         std::string("/dev/zero"), std::string("../../x"), std::string(100000, 'x')})
    {
        EXPECT_EQ(readFile(name.c_str()), 0);
        EXPECT_THAT(_messages, ElementsAre("2: Couldn't open '" + name + "'!\n"));
    }
}

namespace
{
/// Takes the path handler away from the scene file handler while it lives.
class NoPathHandler
{
  public:
    NoPathHandler() { SceneFileHandlerBase::the()->setPathHandler(nullptr); }
    ~NoPathHandler() { SceneFileHandlerBase::the()->setPathHandler(_former); }

  private:
    PathHandler *_former = SceneFileHandlerBase::the()->getPathHandler();
};
} // namespace

TEST_F(ObjMaterialLibraryTest, WithoutPathHandlerNamesStandAsTheyAre)
{
    std::string const image = _folder.path("a.fakeimg");
    std::string const library = _folder.write("full.mtl", "newmtl a\nmap_Kd " + image + "\n");
    NoPathHandler const none;
    EXPECT_EQ(readFile(library.c_str()), 1);
    ASSERT_NE(material().getImage(), nullptr);
    EXPECT_EQ(material().getImage()->getName(), image);
}

TEST_F(ObjMaterialLibraryTest, WithoutPathHandlerAFileThatCannotBeOpenedIsPassedOverSilently)
{
    _folder.write("lib.mtl", "newmtl a\n");
    _folder.makeFolder("folder.mtl");
    NoPathHandler const none;
    for(std::string const &name :
        {std::string("lib.mtl"), _folder.path("folder.mtl"), std::string("/dev/zero")})
    {
        EXPECT_EQ(readFile(name.c_str()), 0);
        EXPECT_THAT(_messages, IsEmpty());
    }
}

// --- beside a scene file ---

TEST_F(ObjMaterialLibraryTest, LibrariesAndImagesLieBesideTheirSceneFile)
{
    _folder.write("scene/lib.mtl", "newmtl m\nKd 1 0 0\nmap_Ka own.fakeimg\n");
    _folder.write("scene/own.fakeimg", "1x");
    ObjScene const scene = read_obj_file(_folder.write(
        "scene/model.obj", "mtllib lib.mtl more.mtl\nv 0 0 0\nusemtl m\nf 1\nusemtl n\nf 1\n"
                           "usemtl m\nf 1\n"));
    EXPECT_EQ(scene.log, LogLines{"1: Unkown mtl n\n"});
    ASSERT_EQ(scene.geometries().size(), 3u);
    SimpleTexturedMaterial *const red = material_of(*scene.geometries()[0]);
    ASSERT_NE(red, nullptr);
    EXPECT_EQ(red->getDiffuse(), Color3f(1, 0, 0));
    EXPECT_EQ(red->getImage()->getName(), _folder.path("scene/own.fakeimg"));
    EXPECT_EQ(material_of(*scene.geometries()[2]), red);
    EXPECT_EQ(material_of(*scene.geometries()[1])->getDiffuse(), Color3f(0.8f, 0.8f, 0.8f));
}

TEST_F(ObjMaterialLibraryTest, AnUnknownMaterialLeavesTheMeshWhatItHas)
{
    _folder.write("lib.mtl", "newmtl m\n");
    ObjScene const scene = read_obj_file(
        _folder.write("model.obj", "mtllib lib.mtl\nv 0 0 0\nusemtl m\nusemtl none\nf 1\n"));
    EXPECT_EQ(scene.log, LogLines{"1: Unkown mtl none\n"});
    ASSERT_EQ(scene.geometries().size(), 1u);
    EXPECT_EQ(material_of(*scene.geometries()[0])->getMinFilter(), 0x2703u);
}

TEST_F(ObjMaterialLibraryTest, AMaterialThatALaterLibraryReplacesStaysWithItsFormerMeshes)
{
    _folder.write("one.mtl", "newmtl m\nNs 1\n");
    _folder.write("two.mtl", "newmtl m\nNs 2\n");
    ObjScene const scene = read_obj_file(_folder.write(
        "model.obj", "mtllib one.mtl\nv 0 0 0\nusemtl m\nf 1\nmtllib two.mtl\nusemtl m\nf 1\n"));
    ASSERT_EQ(scene.geometries().size(), 2u);
    EXPECT_EQ(material_of(*scene.geometries()[0])->getShininess(), 2.f);
    EXPECT_EQ(material_of(*scene.geometries()[1])->getShininess(), 1.f);
}

TEST_F(ObjMaterialLibraryTest, ASceneFileMayNameItselfAsItsLibrary)
{
    ObjScene const scene =
        read_obj_file(_folder.write("model.obj", "mtllib model.obj\nv 0 0 0\nf 1\n"));
    EXPECT_EQ(scene.log, (LogLines{
                             "1: Invalid Mtl token: mtllib, newmtl expected in model.obj\n",
                             "1: Invalid Mtl token: v, newmtl expected in model.obj\n",
                             "1: Invalid Mtl token: f, newmtl expected in model.obj\n",
                         }));
    EXPECT_EQ(describe_scene(scene.root), "(0)");
}

TEST_F(ObjMaterialLibraryTest, WhatNoMeshTakesGoesWithTheRead)
{
    _folder.write("lib.mtl", "newmtl a\nmap_Kd a.fakeimg\nnewmtl b\n");
    std::string const path = _folder.write("model.obj", "mtllib lib.mtl\nusemtl a\n");
    UInt32 const before = FieldContainerFactoryBase::the()->getNumContainers();
    read_obj_file(path);
    EXPECT_EQ(FieldContainerFactoryBase::the()->getNumContainers(), before);
}

TEST_F(ObjMaterialLibraryTest, AnEntryThatCannotBeReadIsOneWarningAndTheReadIsNotComplete)
{
    _folder.write("lib.mtl", "newmtl a\nNs 1\nKd red\nnewmtl b\n");
    ObjScene const scene =
        read_obj_file(_folder.write("model.obj", "mtllib lib.mtl\nv 0 0 0\nusemtl a\nf 1\n"));
    EXPECT_EQ(scene.log, LogLines{"2: The read of lib.mtl ends in line 3, at 'red'!\n"});
    EXPECT_FALSE(SceneFileHandlerBase::the()->wasLastReadComplete());
    EXPECT_EQ(material_of(*scene.geometries()[0])->getShininess(), 1.f);
}

TEST_F(ObjMaterialLibraryTest, ALibraryWithoutMaterialsIsReadOnceARead)
{
    _folder.write("none.mtl", "Kd 1 0 0\n");
    std::string const text =
        "mtllib none.mtl\nmtllib ./none.mtl\nmtllib .\\none.mtl\nmtllib none.mtl\nv 0 0 0\nf 1\n";
    std::string const path = _folder.write("model.obj", text);
    LogLines const once{"1: Invalid Mtl token: Kd, newmtl expected in none.mtl\n"};
    EXPECT_EQ(read_obj_file(path).log, once);
    EXPECT_EQ(read_obj_file(path).log, once);
}

TEST_F(ObjMaterialLibraryTest, ASceneFileThatNamesItselfInEveryLineIsReadOnce)
{
    std::string text;
    for(int i = 0; i < 2000; ++i)
        text += "mtllib model.obj\n";
    ObjScene const scene = read_obj_file(_folder.write("model.obj", text + "v 0 0 0\nf 1\n"));
    // A line for each entry that is no material: once through the file, not once for each line.
    EXPECT_EQ(scene.log.size(), 2002u);
}

TEST_F(ObjMaterialLibraryTest, WordsStandInMessagesWithoutControlCharacters)
{
    EXPECT_EQ(read("\x1b[31m\nnewmtl a\n\x7f\xc2\x9b\nmap_Kd \x1b.png\n"), 1);
    EXPECT_EQ(_messages, (LogLines{"1: Invalid Mtl token: \\x1B[31m, newmtl expected in lib.mtl\n",
                                   "2: Invalid \\x7F\\x9B entry in lib.mtl\n",
                                   "1: Can not find \\x1B.png texture file in mtl lib.mtl \n"}));
    EXPECT_EQ(readFile("\x1b.mtl"), 0);
    EXPECT_EQ(_messages, LogLines{"2: Couldn't open '\\x1B.mtl'!\n"});
}
