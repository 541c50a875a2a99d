/// \file
/// The memory that the scene of a file needs, and what remains allocated when there is not enough.

#include <new>
#include <sstream>

#include <gtest/gtest.h>

#include "FakeImages.h"
#include "LogCapture.h"
#include "OSGChangeList.h"
#include "OSGFieldContainerFactory.h"
#include "OSGReadBuffer.h"
#include "OSGSceneFileHandler.h"
#include "OSGThread.h"
#include "ObjScene.h"
#include "SceneInvariants.h"
#include "StreamBuffers.h"
#include "TempFolder.h"

using namespace OSG;
using namespace OSG::Test;

namespace
{
struct Dense
{
    char const *name;
    char const *head;
    char const *line;
};

void PrintTo(Dense const &row, std::ostream *out) { *out << row.name; }

#define CORNERS "v 0 0 0\nv 1 0 0\nv 0 1 0\nvt 0 0\nvt 1 0\nvt 0 1\nvn 0 0 1\nvn 1 0 0\nvn 0 1 0\n"

Dense const DenseTexts[] = {
    {"Positions", "", "v 0 0 0\n"},
    {"TexCoords", "", "vt 0 0\n"},
    {"Normals", "", "vn 0 0 0\n"},
    {"EmptyFaces", "", "f \n"},
    {"Points", CORNERS, "f 1\n"},
    {"PointsAndVertices", "v 0 0 0\n", "f -1\nv 0 0 0\n"},
    {"Triangles", CORNERS, "f 1 2 3\n"},
    {"LongFaces", CORNERS, "f 1 1 1 1 1 1 1 1 1 1 1 1 1 1 1 1 1 1 1 1 1 1 1\n"},
    {"SeveralIndices", CORNERS, "f 1/2/3 2/3/1 3/1/2\n"},
    {"ManyCombinations", "vt 0 0\n", "v 0 0 0\nf -1/1\n"},
    {"TwoCombinations", "vt 0 0\n", "v 0 0 0\nvt 0 0\nf -1/1 -1/-1\n"},
    {"UnknownWords", "", "x\n"},
    {"MaterialsWithoutFaces", "", "usemtl a\n"},
};

/// Reads so many bytes of the repeated line and drops the scene. Gives the peak.
UInt64 peak_of(Dense const &text, UInt64 bytes)
{
    std::string lines;
    while(lines.size() < 4096)
        lines += text.line;
    RepeatBuffer endless(text.head, lines, bytes);
    std::istream in(&endless);
    osgLogP->setLogLevel(LOG_DUMP);
    UInt64 const before = get_mem_bytes();
    reset_mem_peak();
    SceneFileHandlerBase::the()->read(in, "obj");
    osgLogP->setLogLevel(LOG_WARNING);
    return get_mem_peak_bytes() - before;
}

class ObjDenseText : public testing::TestWithParam<Dense>
{
};
} // namespace

// The part that grows with the input is held to its bound by itself, without the fixed part that
// small inputs could hide behind.
TEST_P(ObjDenseText, HoldsAtMostFortyBytesForEachOfItsOwn)
{
    UInt64 const bytes = 2 * 1024 * 1024;
    UInt64 const once = peak_of(GetParam(), bytes);
    UInt64 const threefold = peak_of(GetParam(), 3 * bytes);
    EXPECT_LE(once, read_memory_bound(bytes));
    EXPECT_LE(threefold, once + 40 * 2 * bytes);
}

INSTANTIATE_TEST_SUITE_P(All, ObjDenseText, testing::ValuesIn(DenseTexts),
                         [](auto const &row) { return row.param.name; });

// --- many geometries ---

namespace
{
struct Taken
{
    UInt64 held; ///< by the scene
    UInt64 peak;
    UInt32 containers;
};

Taken take(std::string const &head, std::string const &run, std::size_t runs)
{
    RepeatBuffer buffer(head, run, head.size() + run.size() * runs);
    std::istream in(&buffer);
    LogCapture silence(LOG_DUMP);
    UInt64 const before = get_mem_bytes();
    UInt32 const containers = FieldContainerFactoryBase::the()->getNumContainers();
    reset_mem_peak();
    UnrecordedRefPtr<Node> const root(SceneFileHandlerBase::the()->read(in, "obj"));
    return {get_mem_bytes() - before, get_mem_peak_bytes() - before,
            FieldContainerFactoryBase::the()->getNumContainers() - containers};
}

std::string const OneRun = "usemtl a\nf 1 2 3\n";
} // namespace

TEST(ObjSceneMemory, EveryRunTakesTheSameHoweverManyThereAre)
{
    take(CORNERS, OneRun, 40000); // the system's own tables have their room from now on
    Taken const few = take(CORNERS, OneRun, 10000);
    Taken const many = take(CORNERS, OneRun, 40000);
    // The root, its core, and what the runs share: positions, types, lengths, index, material.
    EXPECT_EQ(few.containers % 10000, 7u);
    EXPECT_EQ(many.containers % 40000, 7u);
    EXPECT_LE(many.held, 4 * few.held + few.held / 10);
    EXPECT_LE(many.peak, 4 * few.peak);
}

TEST(ObjSceneMemory, ARunTakesLittleMoreThanItsNodeGeometryIndexAndNormals)
{
    // Each run is a triangle of its own vertices, whose arrays are left out of the account.
    auto const text = [](std::size_t runs)
    {
        std::string all;
        for(std::size_t i = 0; i < 3 * runs; ++i)
            all += "v 0 0 0\n";
        for(std::size_t i = 0; i < runs; ++i)
            all += "usemtl a\nf " + std::to_string(3 * i + 1) + ' ' + std::to_string(3 * i + 2) +
                   ' ' + std::to_string(3 * i + 3) + '\n';
        return all;
    };
    std::string const fewText = text(10000);
    std::string const manyText = text(20000);
    take(manyText, "#", 1);
    Taken const few = take(fewText, "#", 1);
    Taken const many = take(manyText, "#", 1);
    UInt64 const positions = 3 * sizeof(Pnt3f);
    RecordProperty("BytesOfARun", std::to_string((many.held - few.held) / 10000 - positions));
    EXPECT_LE((many.held - few.held) / 10000 - positions, 500u);
    EXPECT_LE((many.containers - few.containers) / 10000, 5u);
}

TEST(ObjSceneMemory, DenseRunsStayWithinTheBound)
{
    for(char const *run : {"usemtl a\nf 1 2 3\n", "usemtl a\nf 1\n", "usemtl a\nf 1 2/2 3\n"})
    {
        std::size_t const runs = 100000;
        Taken const taken = take(CORNERS, run, runs);
        UInt64 const bytes = std::string(CORNERS).size() + std::string(run).size() * runs;
        EXPECT_LE(taken.peak, read_memory_bound(bytes)) << run;
    }
}

TEST(ObjSceneMemory, BesidesTheSceneReadingHoldsLittle)
{
    take(CORNERS, OneRun, 40000);
    Taken const taken = take(CORNERS, OneRun, 40000);
    EXPECT_LE(taken.peak, taken.held + taken.held / 10 + 2 * ReadBuffer::BlockBytes);
}

TEST(ObjSceneMemory, ASmallGeometryOfALargeArrayTakesWhatItUses)
{
    std::string vertices;
    for(int i = 0; i < 100000; ++i)
        vertices += "v 0 0 0\n";
    std::string const spread = "usemtl a\nf 1 50000 100000\n";
    take(vertices, spread, 3000);
    Taken const few = take(vertices, spread, 1000);
    Taken const many = take(vertices, spread, 3000);
    Taken const own = take(CORNERS, OneRun, 3000);
    // Normals and their index are the geometry's own; a table over the array would be 400 KB.
    EXPECT_LE((many.held - few.held) / 2000, own.held / 3000 + 300);
    EXPECT_LE(many.peak - few.peak, many.held - few.held + 100000);
}

// --- not enough memory ---

namespace
{
std::string const Library = "newmtl a\nKd 1 0 0\nmap_Kd a.fakeimg\nnewmtl b\nmap_Kd none.png\n";

/// A text that uses everything: libraries, pictures, one index and several, dropped kinds, runs
/// that fail, faces that continue in the next line.
std::string scene_text()
{
    std::string text = "mtllib lib.mtl\nunknown\n" CORNERS;
    for(int i = 0; i < 20; ++i)
        text += "usemtl a\nf 1 2 3\nf 1 2 9\nusemtl none\nf 1/2/3 2/3/1 3/1/2 \\\n1/1/1\n"
                "usemtl b\nf 1//1 2//1 3//1\nf 1/1 2/2 3/3\nusemtl c\nf \r\nf 1\n";
    return text;
}
} // namespace

TEST(ObjSceneMemory, AnExhaustedAllocatorPassesOutAndLeavesNothing)
{
    FakeImages::the();
    TempFolder const folder;
    folder.write("lib.mtl", Library);
    folder.write("a.fakeimg", repeated(3000, '1'));
    std::string const path = folder.write("model.obj", scene_text());
    LogCapture silence(LOG_DUMP);
    auto const read = [&path] { SceneFileHandlerBase::the()->read(path.c_str()); };
    read(); // what the system keeps for later is there from now on
    UInt32 const containers = FieldContainerFactoryBase::the()->getNumContainers();
    UInt64 const bytes = get_mem_bytes();
    int failures = 0;
    bool done = false;
    // The block that text is read into comes first; what is built begins behind it.
    for(UInt64 room = 0; !done; room += room < ReadBuffer::BlockBytes ? 4096 : 40)
    {
        set_mem_limit(bytes + room);
        try
        {
            read();
            done = true;
        }
        catch(std::bad_alloc const &)
        {
            ++failures;
        }
        set_mem_limit(0);
        Thread::getCurrentChangeList()->commitChanges();
        ASSERT_EQ(FieldContainerFactoryBase::the()->getNumContainers(), containers) << room;
        // Lists of the system may have grown by a block. A leak would add up over the repetitions.
        ASSERT_LE(get_mem_bytes(), bytes + 1024) << room;
    }
    EXPECT_GT(failures, 500);
}
