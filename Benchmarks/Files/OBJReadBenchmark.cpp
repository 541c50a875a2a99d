// Reads OBJ text from memory.
//
// We make a scene: a tree of nodes, geometries that share the arrays of the file, and materials.
// The peer makes flat arrays of numbers and index triples by group, with polygons cut into
// triangles. Both read all numbers of the same text through a stream, without a copy of the text.
// Neither reads a material library.

#include <fstream>
#include <sstream>

#include <benchmark/benchmark.h>

#include "OSGGeometry.h"
#include "OSGGeometryIterators.h"
#include "OSGNode.h"
#include "OSGNodeWalker.h"
#include "OSGSceneFileHandler.h"
#include "PeerReaders.h"
#include "SceneGraph.h"
#include "TerrainObj.h"
#include "TextStream.h"

#ifdef BENCHMARK_WITH_TINYOBJLOADER
#include <tiny_obj_loader.h>
#endif

namespace OSG::Bench
{
namespace
{
std::string const &terrain()
{
    static std::string const text = terrain_obj(1000000, TerrainCorners::Full);
    return text;
}

std::string const &faceted_terrain()
{
    static std::string const text = terrain_obj(1000000, TerrainCorners::Faceted);
    return text;
}

std::string const &bunny()
{
    static std::string const text = []
    {
        std::ifstream in(BENCHMARK_FIXTURES_DIR "/glmark2-data/bunny.obj", std::ios::binary);
        std::ostringstream all;
        all << in.rdbuf();
        return all.str();
    }();
    return text;
}

struct TriangleCounter
{
    bool enter(Node *node)
    {
        if(auto const *const geometry = dynamic_cast<Geometry *>(node->getCore()))
        {
            auto const end = geometry->endTriangles();
            for(auto it = geometry->beginTriangles(); it != end; ++it)
                ++count;
        }
        return true;
    }
    void leave(Node *) {}

    std::size_t count = 0;
};

std::size_t triangles_by_us(std::string const &text)
{
    TextStream in(text);
    UnrecordedRefPtr<Node> const scene(SceneFileHandlerBase::the()->read(in, "obj"));
    TriangleCounter counter;
    walk_children(scene, counter);
    return counter.count;
}

void read_by_us(benchmark::State &state, std::string const &text)
{
    bring_up();
    if(triangles_by_us(text) == 0)
        state.SkipWithError("no scene; scripts/fixtures fetches the models");
    for([[maybe_unused]] auto _ : state)
    {
        TextStream in(text);
        UnrecordedRefPtr<Node> const scene(SceneFileHandlerBase::the()->read(in, "obj"));
        benchmark::DoNotOptimize(scene.get());
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * text.size()));
}

#ifdef BENCHMARK_WITH_TINYOBJLOADER
struct PeerScene
{
    tinyobj::attrib_t arrays;
    std::vector<tinyobj::shape_t> shapes;
    std::vector<tinyobj::material_t> materials;
    std::string warning, error;

    bool read(std::string const &text)
    {
        TextStream in(text);
        return tinyobj::LoadObj(&arrays, &shapes, &materials, &warning, &error, &in);
    }
    std::size_t triangles() const
    {
        std::size_t count = 0;
        for(tinyobj::shape_t const &shape : shapes)
            count += shape.mesh.num_face_vertices.size();
        return count;
    }
};

void read_by_peer(benchmark::State &state, std::string const &text)
{
    bring_up();
    PeerScene checked;
    if(text.empty() || !checked.read(text) || checked.triangles() != triangles_by_us(text))
        state.SkipWithError("the readers disagree about the triangles");
    for([[maybe_unused]] auto _ : state)
    {
        PeerScene scene;
        benchmark::DoNotOptimize(scene.read(text));
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * text.size()));
}
#endif

#ifdef BENCHMARK_WITH_TINYOBJLOADER
void terrain_by_peer(benchmark::State &state) { read_by_peer(state, terrain()); }
void faceted_by_peer(benchmark::State &state) { read_by_peer(state, faceted_terrain()); }
void bunny_by_peer(benchmark::State &state) { read_by_peer(state, bunny()); }

BENCHMARK(terrain_by_peer)
    ->Name("read terrain of 1,000,000 triangles/tinyobjloader")
    ->Unit(benchmark::kMillisecond);
BENCHMARK(faceted_by_peer)
    ->Name("read faceted terrain of 1,000,000 triangles/tinyobjloader")
    ->Unit(benchmark::kMillisecond);
BENCHMARK(bunny_by_peer)->Name("read bunny/tinyobjloader")->Unit(benchmark::kMillisecond);
#endif

// The whole read of a scene by libraries that make scenes too.
#ifdef BENCHMARK_WITH_ASSIMP
void time_assimp(benchmark::State &state, std::string const &text)
{
    for([[maybe_unused]] auto _ : state)
    {
        if(read_by_assimp(text, "obj") == 0)
            state.SkipWithError("nothing was read");
    }
}
void terrain_by_assimp(benchmark::State &state) { time_assimp(state, terrain()); }
void faceted_by_assimp(benchmark::State &state) { time_assimp(state, faceted_terrain()); }
BENCHMARK(terrain_by_assimp)
    ->Name("read terrain of 1,000,000 triangles/assimp")
    ->Unit(benchmark::kMillisecond);
BENCHMARK(faceted_by_assimp)
    ->Name("read faceted terrain of 1,000,000 triangles/assimp")
    ->Unit(benchmark::kMillisecond);
#endif

#ifdef BENCHMARK_WITH_OPENSCENEGRAPH
void time_openscenegraph(benchmark::State &state, std::string const &text)
{
    for([[maybe_unused]] auto _ : state)
    {
        if(read_by_openscenegraph(text, "obj") == 0)
            state.SkipWithError("nothing was read");
    }
}
void terrain_by_openscenegraph(benchmark::State &state) { time_openscenegraph(state, terrain()); }
void faceted_by_openscenegraph(benchmark::State &state)
{
    time_openscenegraph(state, faceted_terrain());
}
BENCHMARK(terrain_by_openscenegraph)
    ->Name("read terrain of 1,000,000 triangles/OpenSceneGraph")
    ->Unit(benchmark::kMillisecond);
BENCHMARK(faceted_by_openscenegraph)
    ->Name("read faceted terrain of 1,000,000 triangles/OpenSceneGraph")
    ->Unit(benchmark::kMillisecond);
#endif

void terrain_by_us(benchmark::State &state) { read_by_us(state, terrain()); }
void faceted_by_us(benchmark::State &state) { read_by_us(state, faceted_terrain()); }
void bunny_by_us(benchmark::State &state) { read_by_us(state, bunny()); }

BENCHMARK(terrain_by_us)
    ->Name("read terrain of 1,000,000 triangles/ours")
    ->Unit(benchmark::kMillisecond);
BENCHMARK(faceted_by_us)
    ->Name("read faceted terrain of 1,000,000 triangles/ours")
    ->Unit(benchmark::kMillisecond);
BENCHMARK(bunny_by_us)->Name("read bunny/ours")->Unit(benchmark::kMillisecond);
} // namespace
} // namespace OSG::Bench
