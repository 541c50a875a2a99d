// Reads a 3DS file of 400,000 triangles from memory, nodes, normals and all.

#include <benchmark/benchmark.h>

#include "Chunks3DS.h"
#include "FaceCount.h"
#include "OSGNode.h"
#include "OSGSceneFileHandler.h"
#include "PeerReaders.h"
#include "SceneGraph.h"
#include "TextStream.h"

namespace OSG::Bench
{
namespace
{
using namespace OSG::Test;

/// A square of 2 * 160 * 160 triangles in one smoothing group.
std::string square(unsigned number)
{
    constexpr unsigned Cells = 160;
    constexpr unsigned Side = Cells + 1;
    std::vector<float> points;
    std::vector<Face3DS> faces;
    std::vector<std::uint32_t> groups(2 * Cells * Cells, 1);
    for(unsigned y = 0; y < Side; ++y)
    {
        for(unsigned x = 0; x < Side; ++x)
        {
            float const height = static_cast<float>((x * 2654435761u + y * 2246822519u) >> 20);
            points.insert(points.end(), {static_cast<float>(x), static_cast<float>(y),
                                         height * 1e-4f + static_cast<float>(number)});
        }
    }
    for(unsigned y = 0; y < Cells; ++y)
    {
        for(unsigned x = 0; x < Cells; ++x)
        {
            unsigned const at = y * Side + x;
            faces.push_back({{at, at + 1, at + Side}});
            faces.push_back({{at + 1, at + Side + 1, at + Side}});
        }
    }
    return mesh_3ds("square" + std::to_string(number),
                    points_3ds(points) + faces_3ds(faces, smoothing_3ds(groups)));
}

std::string const &squares()
{
    static std::string const bytes = []
    {
        std::string meshes;
        for(unsigned i = 0; i < 8; ++i) // 409,600 triangles
            meshes += square(i);
        return file_3ds(meshes);
    }();
    return bytes;
}

std::size_t read_by_us(std::string const &bytes)
{
    TextStream in(bytes);
    UnrecordedRefPtr<Node> const scene(SceneFileHandlerBase::the()->read(in, "3ds"));
    return count_faces(scene);
}

template <class Read>
void read_squares(benchmark::State &state, Read read)
{
    bring_up();
    std::size_t triangles = 0;
    for([[maybe_unused]] auto _ : state)
        triangles = read(squares());
    if(triangles != 8 * 2 * 160 * 160)
        state.SkipWithError("not all triangles were read");
}

#ifdef BENCHMARK_WITH_ASSIMP
void squares_by_assimp(benchmark::State &state)
{
    read_squares(state, [](std::string const &bytes) { return read_by_assimp(bytes, "3ds"); });
}
BENCHMARK(squares_by_assimp)
    ->Name("read 3DS of 409,600 triangles/assimp")
    ->Unit(benchmark::kMillisecond);
#endif

#ifdef BENCHMARK_WITH_OPENSCENEGRAPH
void squares_by_openscenegraph(benchmark::State &state)
{
    read_squares(state,
                 [](std::string const &bytes) { return read_by_openscenegraph(bytes, "3ds"); });
}
BENCHMARK(squares_by_openscenegraph)
    ->Name("read 3DS of 409,600 triangles/OpenSceneGraph")
    ->Unit(benchmark::kMillisecond);
#endif

void squares_by_us(benchmark::State &state) { read_squares(state, &read_by_us); }
BENCHMARK(squares_by_us)->Name("read 3DS of 409,600 triangles/ours")->Unit(benchmark::kMillisecond);
} // namespace
} // namespace OSG::Bench
