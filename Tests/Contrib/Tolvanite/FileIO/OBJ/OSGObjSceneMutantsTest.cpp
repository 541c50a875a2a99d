/// \file
/// Damaged files read into scenes, which are then used as a host would.

#include <sstream>

#include <gmock/gmock.h>

#include "LogCapture.h"
#include "ModelTexts.h"
#include "OSGFieldContainerFactory.h"
#include "OSGSceneFileHandler.h"
#include "ObjScene.h"
#include "SceneInvariants.h"
#include "StreamBuffers.h"
#include "TempFolder.h"

using namespace OSG;
using namespace OSG::Test;

namespace
{
/// Reads, uses and drops a scene within the bounds that a host may rely on.
void read_within_bounds(std::string const &text)
{
    LogCapture silence;
    std::istringstream in(text);
    UInt32 const containers = FieldContainerFactoryBase::the()->getNumContainers();
    UInt64 const bytes = get_mem_bytes();
    reset_mem_peak();
    {
        UnrecordedRefPtr<Node> const root(SceneFileHandlerBase::the()->read(in, "obj"));
        EXPECT_EQ(fault_of_scene(root), "");
    }
    EXPECT_LE(get_mem_peak_bytes() - bytes, read_memory_bound(text.size()));
    EXPECT_EQ(FieldContainerFactoryBase::the()->getNumContainers(), containers);
}

/// The libraries that the models name, so that they are read with them.
class ObjSceneMutants : public testing::Test
{
  protected:
    ObjSceneMutants()
        : _onPath(SceneFileHandlerBase::the()->getPathHandler(), _folder.path("x").c_str())
    {
        _folder.write("cube.mtl", library_texts()[0]);
    }

    TempFolder _folder;
    PathHandlerBaseFile _onPath;
};
} // namespace

TEST_F(ObjSceneMutants, WholeModelsKeepTheirBounds)
{
    for(std::string const &text : model_texts())
        read_within_bounds(text);
}

TEST_F(ObjSceneMutants, ModelsCutOffAtEveryByteKeepTheirBounds)
{
    for(std::string const &text : model_texts())
    {
        for(std::size_t length = 0; length <= text.size() && !HasFailure(); ++length)
            read_within_bounds(text.substr(0, length));
    }
}

TEST_F(ObjSceneMutants, HurtModelsKeepTheirBounds)
{
    std::mt19937 random(4101);
    for(int round = 0; round < 3000 && !HasFailure(); ++round)
    {
        SCOPED_TRACE(round);
        read_within_bounds(hurt(model_texts()[random() % model_texts().size()], random));
    }
}

TEST_F(ObjSceneMutants, ModelsWithHurtLibrariesKeepTheirBounds)
{
    std::mt19937 random(4102);
    for(int round = 0; round < 2000 && !HasFailure(); ++round)
    {
        SCOPED_TRACE(round);
        _folder.write("cube.mtl", hurt(library_texts()[random() % library_texts().size()], random));
        read_within_bounds(model_texts()[random() % 2]);
    }
}

// --- texts whose size is the fault ---

TEST_F(ObjSceneMutants, LongFaceLinesKeepTheirBounds)
{
    for(std::size_t length : {8190, 8191, 8192, 8193, 100000})
    {
        for(char const *corner : {"1 ", "1/1/1 ", "/", "x", " "})
        {
            std::string line = "f ";
            while(line.size() < length)
                line += corner;
            line.resize(length);
            read_within_bounds("v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n" + line + "\nf 1 2 3\n");
        }
    }
}

TEST_F(ObjSceneMutants, WhatIsBehindTheLimitOfAFaceLineIsReadAsWords)
{
    std::string const vertices = "v 0 0 0\n";
    std::string const exactly = "f" + repeated(8189, ' ') + "1 5\n"; // 8191 characters, then the 5
    ObjScene const scene = read_obj_scene(vertices + exactly);
    EXPECT_EQ(scene.log, LogLines{"2: Unkown obj data elem: 5\n"});
    EXPECT_EQ(describe_scene(scene.root), "(0)");
}

TEST_F(ObjSceneMutants, AFaceOfAHundredThousandCornersIsKept)
{
    std::string text = "v 0 0 0\nv 1 0 0\nv 0 1 0\nf";
    for(int i = 0; i < 100000; ++i)
        text += i % 500 == 499 ? " 1 \\\n" : (i % 2 != 0 ? " 2" : " 3");
    ObjScene const scene = read_obj_scene(text + "\n");
    ASSERT_EQ(scene.geometries().size(), 1u);
    EXPECT_EQ(values_of(scene.geometries()[0]->getLengths()), std::vector<UInt32>{100000});
    EXPECT_EQ(count_triangles(scene.root), 99998u);
}

TEST_F(ObjSceneMutants, AMillionContinuationsAreOneFace)
{
    std::string text = "v 0 0 0\nf 1";
    for(int i = 0; i < 1000000; ++i)
        text += " \\\n ";
    ObjScene const scene = read_obj_scene(text + "1 1\n");
    EXPECT_EQ(describe_scene(scene.root), "(0 0 0)");
    read_within_bounds(text);
}

TEST_F(ObjSceneMutants, BytesOfAnyKindKeepTheirBounds)
{
    std::mt19937 random(4103);
    for(int round = 0; round < 200; ++round)
    {
        std::string text(random() % 5000, '\0');
        for(char &c : text)
            c = static_cast<char>(random() >> (round % 2 != 0 ? 0 : 26));
        read_within_bounds(text);
    }
}
