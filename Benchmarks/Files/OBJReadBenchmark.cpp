// Reads OBJ files that lie in the system's cache.
//
// "arrays" is the way from the text to the arrays that geometries show: vertices, and types,
// lengths and indices of each material run. tinyobjloader makes flat arrays of numbers and index
// triples by group, here without cutting polygons, so both do the same work. "whole read" is the
// scene that a program gets, with one index for all arrays, normals, materials and nodes; assimp
// joins equal vertices. Floors: the bytes of the file taken in blocks, and its numbers parsed
// without any array.
//
// Times are CPU seconds of the process. Before each measurement the memory that others have freed
// goes back to the system.

#include <charconv>
#include <filesystem>
#include <fstream>

#include <benchmark/benchmark.h>
#include <malloc.h>

#include "FaceCount.h"
#include "OSGNode.h"
#include "OSGObjBuilder.h"
#include "OSGObjRecordReader.h"
#include "OSGSceneFileHandler.h"
#include "ObjModels.h"
#include "PeerReaders.h"
#include "SceneGraph.h"

namespace OSG::Bench
{
namespace
{
// --- ours ---

std::size_t scene_by_us(std::string const &path)
{
    UnrecordedRefPtr<Node> const scene(SceneFileHandlerBase::the()->read(path.c_str()));
    return count_faces(scene);
}

struct AnyMaterial : ObjReadClient
{
    void elementsRead(UInt32) override {}
    void readLibrary(std::string const &) override {}
    Int32 findMaterial(std::string const &) override { return 0; }
};

std::size_t arrays_by_us(std::string const &path)
{
    ObjElementMap elements;
    fill_element_map(elements);
    std::ifstream in(path, std::ios::binary);
    ObjBuilder builder;
    ObjRecords records;
    AnyMaterial client;
    ReadBuffer text(in);
    ObjRecordReader(text, elements, builder.arrays(), records, client).read();
    std::vector<MField<UInt32>> kept;
    std::size_t count = 0;
    for(; records.meshCount() > 0; records.dropNewestMesh())
    {
        ObjFaces faces = records.faces(0);
        count += faces.size();
        ObjIndexMask const mask = derive_index_mask(faces);
        for(ObjIndexKind kind : {ObjNormalIndex, ObjTexCoordIndex, ObjPositionIndex})
        {
            if((mask.mask & 1u << kind) != 0 && (kind == ObjPositionIndex || !mask.singleIndex))
                faces.takeIndices(kind, kept.emplace_back());
        }
        faces.appendSizes(kept.emplace_back());
    }
    benchmark::DoNotOptimize(kept.data());
    return count;
}

// --- floors ---

std::size_t bytes_in_blocks(std::string const &path)
{
    std::ifstream in(path, std::ios::binary);
    std::vector<char> block(ReadBuffer::BlockBytes);
    std::size_t bytes = 0;
    while(std::streamsize const taken =
              in.rdbuf()->sgetn(block.data(), static_cast<std::streamsize>(block.size())))
        bytes += static_cast<std::size_t>(taken);
    return bytes;
}

bool begins_number(char c) { return c == '-' || (c >= '0' && c <= '9'); }

/// Numbers with a point as floats, others as integers.
std::size_t numbers_alone(std::string const &text)
{
    std::size_t numbers = 0;
    char const *const end = text.data() + text.size();
    for(char const *p = text.data(); p != end;)
    {
        if(!begins_number(*p))
        {
            ++p;
            continue;
        }
        int whole = 0;
        char const *behind = std::from_chars(p, end, whole).ptr;
        if(behind != end && *behind == '.')
        {
            float number = 0;
            behind = std::from_chars(p, end, number).ptr;
            benchmark::DoNotOptimize(number);
        }
        benchmark::DoNotOptimize(whole);
        p = std::max(behind, p + 1);
        ++numbers;
    }
    return numbers;
}

// --- cases ---

/// `prepare` makes, outside of the measurement, what `read` gets from the path of the model.
template <class Prepare, class Read>
void measure(ObjModel const &model, std::string const &name, Prepare prepare, Read read)
{
    auto const run = [model, prepare, read](benchmark::State &state)
    {
        bring_up();
        if(model.path().empty())
            return state.SkipWithError("no model; scripts/fixtures fetches them");
        auto const input = prepare(model.path());
        malloc_trim(0);
        for([[maybe_unused]] auto _ : state)
        {
            if(read(input) == 0)
                state.SkipWithError("nothing was read");
        }
        state.SetBytesProcessed(
            static_cast<std::int64_t>(std::filesystem::file_size(model.path())) * model.reads);
    };
    benchmark::RegisterBenchmark((model.name + ", " + name).c_str(), run)
        ->Unit(benchmark::kMillisecond)
        ->MeasureProcessCPUTime()
        ->Iterations(model.reads);
}

std::string same_path(std::string const &path) { return path; }

/// The most that was allocated at a time during the whole read, and what the scene holds.
void measure_memory(ObjModel const &model, std::string const &name, UInt64 (*bytes)())
{
    auto const run = [model, bytes](benchmark::State &state)
    {
        bring_up();
        if(model.path().empty())
            return state.SkipWithError("no model; scripts/fixtures fetches them");
        auto const read = [&model]
        { return UnrecordedRefPtr<Node>(SceneFileHandlerBase::the()->read(model.path().c_str())); };
        read(); // what the system keeps for later is there from now on
        UInt64 const before = get_mem_bytes();
        reset_mem_peak();
        for([[maybe_unused]] auto _ : state)
        {
            UnrecordedRefPtr<Node> const scene = read();
            state.counters["bytes"] = static_cast<double>(bytes() - before);
        }
    };
    benchmark::RegisterBenchmark((model.name + ", memory/" + name).c_str(), run)->Iterations(1);
}

void measure_all(ObjModel const &model)
{
    measure(model, "arrays/ours", &same_path, &arrays_by_us);
    measure(model, "whole read/ours", &same_path, &scene_by_us);
#ifdef BENCHMARK_WITH_TINYOBJLOADER
    measure(model, "arrays/tinyobjloader", &same_path, &file_by_tinyobjloader);
#endif
#ifdef BENCHMARK_WITH_ASSIMP
    measure(model, "whole read/assimp", &same_path, &file_by_assimp);
#endif
#ifdef BENCHMARK_WITH_OPENSCENEGRAPH
    if(model.forOpenSceneGraph)
        measure(model, "whole read/OpenSceneGraph", &same_path, &file_by_openscenegraph);
#endif
    measure(model, "arrays/floor: bytes", &same_path, &bytes_in_blocks);
    measure(model, "arrays/floor: numbers", &bytes_of_file, &numbers_alone);
    measure_memory(model, "ours", &get_mem_peak_bytes);
    measure_memory(model, "held by the scene", &get_mem_bytes);
}

bool const Registered = []
{
    for(ObjModel const &model : obj_models())
        measure_all(model);
    return true;
}();
} // namespace
} // namespace OSG::Bench
