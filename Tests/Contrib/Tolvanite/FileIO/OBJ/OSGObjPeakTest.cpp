/// \file
/// The most memory that a read holds at a time, beside the arrays that it makes.

#include <sstream>

#include <gtest/gtest.h>

#include "OSGGeometry.h"
#include "OSGObjBuilder.h"
#include "OSGObjRecordReader.h"
#include "OSGSceneFileHandler.h"
#include "ObjScene.h"
#include "RunsObj.h"
#include "TerrainObj.h"

using namespace OSG;
using namespace OSG::Test;
using Bench::TerrainCorners;

namespace
{
constexpr std::uint32_t Triangles = 200000;
constexpr std::uint32_t Runs = 3000;
/// The buffer, and what does not grow with the file: open chunks, lists, the geometry itself.
constexpr UInt64 FixedBytes = ReadBuffer::BlockBytes + 160 * 1024;

struct AnyMaterial : ObjReadClient
{
    void elementsRead(UInt32) override {}
    void readLibrary(std::string const &) override {}
    Int32 findMaterial(std::string const &) override { return 0; }
};

template <class Vector>
UInt64 bytes_of(Vector const &values)
{
    return values.size() * sizeof(values[0]);
}

struct Taken
{
    UInt64 arrays = 0;
    UInt64 peak = 0;
};

/// The indices of a run as geometries show them, each kind in an array of its own.
std::vector<MField<UInt32>> arrays_of(ObjFaces faces)
{
    std::vector<MField<UInt32>> arrays;
    ObjIndexMask const mask = derive_index_mask(faces);
    for(ObjIndexKind kind : {ObjNormalIndex, ObjTexCoordIndex, ObjPositionIndex})
    {
        if((mask.mask & 1u << kind) != 0 && (kind == ObjPositionIndex || !mask.singleIndex))
            faces.takeIndices(kind, arrays.emplace_back());
    }
    faces.appendSizes(arrays.emplace_back());
    return arrays;
}

/// Reads a text up to the arrays that come before the shared index.
Taken take_arrays(std::string const &text)
{
    std::istringstream in(text);
    ObjElementMap elements;
    fill_element_map(elements);
    std::vector<std::vector<MField<UInt32>>> runs;
    runs.reserve(Runs + 1);
    UInt64 const before = get_mem_bytes();
    reset_mem_peak();
    ObjBuilder builder;
    ObjRecords records;
    AnyMaterial client;
    {
        ReadBuffer buffer(in);
        ObjRecordReader(buffer, elements, builder.arrays(), records, client).read();
    }
    for(; records.meshCount() > 0; records.dropNewestMesh())
        runs.push_back(arrays_of(records.faces(0)));
    Taken taken;
    taken.peak = get_mem_peak_bytes() - before;
    ObjVertexArrays const vertices = builder.arrays();
    taken.arrays =
        bytes_of(vertices.positions) + bytes_of(vertices.texCoords) + bytes_of(vertices.normals);
    for(auto const &run : runs)
    {
        for(MField<UInt32> const &array : run)
            taken.arrays += bytes_of(array);
    }
    return taken;
}

/// Reads a terrain as a whole. `combinations` is the number of vertices of the shared index, 0
/// where none is made.
struct Whole
{
    UInt64 arrays = 0; ///< of the geometry
    UInt64 combinations = 0;
    UInt64 peak = 0;
};

Whole take_whole(std::string const &text)
{
    std::istringstream in(text);
    UInt64 const before = get_mem_bytes();
    reset_mem_peak();
    UnrecordedRefPtr<Node> const root(SceneFileHandlerBase::the()->read(in, "obj"));
    Whole whole;
    whole.peak = get_mem_peak_bytes() - before;
    auto &geometry = dynamic_cast<Geometry &>(*root->getCore());
    for(UInt16 slot : {Geometry::PositionsSlot, Geometry::NormalsSlot, Geometry::TexCoordsSlot})
    {
        if(GeoVectorProperty const *const property = geometry.getProperty(slot))
            whole.arrays += property->size() * property->getDimension() * sizeof(Real32);
    }
    whole.combinations = geometry.getPositions()->size();
    whole.arrays += geometry.getIndex(Geometry::PositionsSlot)->size() * sizeof(UInt32);
    whole.arrays += geometry.getLengths()->size() * sizeof(UInt32) + geometry.getTypes()->size();
    return whole;
}

std::string terrain(TerrainCorners corners) { return Bench::terrain_obj(Triangles, corners); }

UInt64 with_share(UInt64 bytes) { return bytes + bytes * 15 / 100; }

struct PeakCase
{
    char const *name;
    TerrainCorners corners;
};

void PrintTo(PeakCase const &row, std::ostream *out) { *out << row.name; }

PeakCase const PeakCases[] = {{"PositionsAlone", TerrainCorners::Positions},
                              {"OneIndex", TerrainCorners::Full},
                              {"SeparateIndices", TerrainCorners::Separate},
                              {"ANormalForEachFace", TerrainCorners::Faceted}};

class ObjPeak : public testing::TestWithParam<PeakCase>
{
};
} // namespace

TEST_P(ObjPeak, UntilTheSharedIndexIsLittleMoreThanTheArrays)
{
    Taken const taken = take_arrays(terrain(GetParam().corners));
    EXPECT_LE(taken.peak, with_share(taken.arrays) + FixedBytes);
}

TEST_P(ObjPeak, OfTheWholeReadIsTheArraysBeforeAndAfterTheSharedIndexAndItsTable)
{
    std::string const text = terrain(GetParam().corners);
    bool const shares = GetParam().corners == TerrainCorners::Separate ||
                        GetParam().corners == TerrainCorners::Faceted;
    UInt64 const typeBytes = Triangles;
    Taken const before = take_arrays(text);
    Whole const whole = take_whole(text);
    UInt64 const bound =
        shares ? with_share(before.arrays + typeBytes) + whole.arrays + 16 * whole.combinations
               : with_share(whole.arrays);
    EXPECT_LE(whole.peak, bound + FixedBytes);
}

INSTANTIATE_TEST_SUITE_P(Terrains, ObjPeak, testing::ValuesIn(PeakCases),
                         [](auto const &row) { return std::string(row.param.name); });

TEST(ObjPeakOfRuns, UntilTheSharedIndexIsLittleMoreThanTheArrays)
{
    Taken const taken = take_arrays(Bench::runs_obj(Runs, "none.mtl"));
    // Beside the run itself (24 bytes and room), the lists of this test: four arrays to a run.
    UInt64 const bytesOfARun = 256;
    EXPECT_LE(taken.peak, with_share(taken.arrays) + Runs * bytesOfARun + FixedBytes);
}
