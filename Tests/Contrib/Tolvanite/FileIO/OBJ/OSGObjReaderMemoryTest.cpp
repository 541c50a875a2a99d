/// \file
/// The memory that reading needs, and what remains allocated when there is not enough.

#include <new>
#include <sstream>

#include <gtest/gtest.h>

#include "LogCapture.h"
#include "OSGMtlReader.h"
#include "OSGObjRecordReader.h"
#include "StreamBuffers.h"

using namespace OSG;
using namespace OSG::Test;

namespace
{
constexpr UInt64 FixedBytes = 64 * 1024 * 1024;
constexpr UInt64 BytesPerByte = 40;

struct QuietClient : ObjReadClient
{
    void elementsRead(UInt32) override {}
    void readLibrary(std::string const &) override {}
    Int32 findMaterial(std::string const &) override { return 0; }
};

struct QuietMaterials : MtlHandler
{
    void newMaterial(std::string const &) override {}
    void setColor(MtlColor, Color3f const &) override {}
    void setShininess(Real32) override {}
    void setTransparency(Real32) override {}
    void setEnvMap(bool) override {}
    bool setImage(std::string const &) override { return true; }
};

struct Counts
{
    UInt64 bytes;
    std::size_t positions;
    std::size_t meshes;
    std::size_t newestFaces;
};

Counts read_quietly(std::istream &in)
{
    std::vector<Pnt3f, MemAllocator<Pnt3f>> positions;
    std::vector<Vec2f, MemAllocator<Vec2f>> texCoords;
    std::vector<Vec3f, MemAllocator<Vec3f>> normals;
    ObjElementMap elements;
    fill_element_map(elements);
    ObjRecords records;
    QuietClient client;
    ReadBuffer text(in);
    ObjRecordReader(text, elements, {positions, texCoords, normals}, records, client).read();
    text.finish();
    return {text.bytesConsumed(), positions.size(), records.meshCount(), records.faces(0).size()};
}

/// Bytes held at the peak of reading so many bytes of the repeated text.
UInt64 peak_of(std::string const &head, std::string const &repeatedText, UInt64 bytes)
{
    RepeatBuffer endless(head, repeatedText, bytes);
    std::istream in(&endless);
    LogCapture silence(LOG_DUMP);
    UInt64 const before = get_mem_bytes();
    reset_mem_peak();
    EXPECT_EQ(read_quietly(in).bytes, bytes);
    return get_mem_peak_bytes() - before;
}

std::string times(std::string const &text, std::size_t count)
{
    std::string result;
    for(std::size_t i = 0; i < count; ++i)
        result += text;
    return result;
}
} // namespace

TEST(ObjReaderMemory, StaysWithinItsBoundForDenseTexts)
{
    UInt64 const bytes = 24 * 1024 * 1024;
    for(char const *line : {"v 0 0 0\n", "vt 0 0\n", "vn 0 0 0\n", "f 1 1\n", "f \r\n", "f 1\n",
                            "f 1 1 1 1 1 1 1 1 1 1 1 1 1 1 1 1\n", "f 1/1/1 2/2/2 3/3/3\n",
                            "usemtl a\nf 1\n", "x\n", "f 1-1-1-1-1-1-1-1-1-1-1-1-1\n"})
    {
        EXPECT_LE(peak_of("", times(line, 1000), bytes), FixedBytes + BytesPerByte * bytes) << line;
    }
}

TEST(ObjReaderMemory, OneEndlessFaceStaysWithinItsBound)
{
    UInt64 const bytes = 24 * 1024 * 1024;
    EXPECT_LE(peak_of("f ", times("1 1 1 1 1 1 1 1 \\\n", 1000), bytes),
              FixedBytes + BytesPerByte * bytes);
}

TEST(ObjReaderMemory, OneEndlessWordStaysWithinTheFixedPart)
{
    UInt64 const bytes = 300 * 1024 * 1024;
    EXPECT_LE(peak_of("", repeated(4096, 'x'), bytes), FixedBytes);
    EXPECT_LE(peak_of("usemtl ", repeated(4096, 'x'), bytes), FixedBytes);
    EXPECT_LE(peak_of("v ", repeated(4096, '1'), bytes), FixedBytes);
    EXPECT_LE(peak_of("# ", repeated(4096, 'x'), bytes), FixedBytes);
    EXPECT_LE(peak_of("f ", repeated(4096, '1'), bytes), FixedBytes);
}

TEST(ObjReaderMemory, AMillionMaterialRunsAreKept)
{
    std::string const run = "usemtl a\nf 1 2 3\n";
    std::size_t const count = 1000000;
    RepeatBuffer buffer("", run, run.size() * count);
    std::istream in(&buffer);
    Counts const counts = read_quietly(in);
    EXPECT_EQ(counts.meshes, count);
    EXPECT_EQ(counts.newestFaces, 1u);
}

TEST(ObjReaderMemory, AHundredThousandMaterialsOfOneNameAreCounted)
{
    std::string const entry = "newmtl same\nKd 1 0 0\n";
    RepeatBuffer buffer("", entry, entry.size() * 100000);
    std::istream in(&buffer);
    MtlElementMap elements;
    fill_element_map(elements);
    QuietMaterials materials;
    ReadBuffer text(in);
    EXPECT_EQ(read_mtl(text, elements, "lib.mtl", materials), 100000);
}

TEST(ObjReaderMemory, AnExhaustedAllocatorPassesOutAndNothingIsLeft)
{
    std::string const text =
        times("v 1 2 3\nvt 1 2\nvn 1 2 3\nf 1/1/1 2/2/2 3/3/3\nusemtl a\n", 500);
    bool read = false;
    for(UInt64 room = 1024; !read; room += 16 * 1024)
    {
        std::istringstream plain(text);
        UInt64 const before = get_mem_bytes();
        set_mem_limit(before + room);
        try
        {
            read_quietly(plain);
            read = true;
        }
        catch(std::bad_alloc const &)
        {
        }
        set_mem_limit(0);
        ASSERT_EQ(get_mem_bytes(), before) << room;
    }
    EXPECT_TRUE(read);
}
