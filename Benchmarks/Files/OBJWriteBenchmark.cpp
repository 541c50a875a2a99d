// Writes a terrain of 1,000,000 triangles as OBJ text into memory.
//
// The plain loop writes the same bytes by the operators of a stream. The other peer is a library's
// exporter, given the scene that its own importer made of the text.

#include <filesystem>
#include <ostream>
#include <streambuf>
#include <string>

#include <benchmark/benchmark.h>

#include "OSGGeometryIterators.h"
#include "OSGNode.h"
#include "OSGOBJLibSceneFileTypeTN.h"
#include "SceneGraph.h"
#include "TerrainObj.h"
#include "TextStream.h"

#ifdef BENCHMARK_WITH_ASSIMP
#include <assimp/Exporter.hpp>
#include <assimp/Importer.hpp>
#include <assimp/postprocess.h>
#include <assimp/scene.h>
#endif

namespace OSG::Bench
{
namespace
{
/// A stream into memory that stays allocated, so that the runs do not measure the allocator.
class MemoryStream : private std::streambuf, public std::ostream
{
  public:
    MemoryStream()
        : std::ostream(static_cast<std::streambuf *>(this))
    {
        _memory.resize(256 * 1024 * 1024);
        restart();
    }
    void restart() { setp(_memory.data(), _memory.data() + _memory.size()); }
    std::string_view text() const { return {pbase(), static_cast<std::size_t>(pptr() - pbase())}; }

  private:
    std::string _memory;
};

/// The stream, empty.
MemoryStream &memory()
{
    static MemoryStream stream;
    stream.restart();
    return stream;
}

template <class Write>
std::string text_of(Write write)
{
    MemoryStream &out = memory();
    write(out);
    return std::string(out.text());
}

std::string const &terrain()
{
    static std::string const text = terrain_obj(1000000, TerrainCorners::Full);
    return text;
}

Node *scene()
{
    static UnrecordedRefPtr<Node> const root = []
    {
        bring_up();
        TextStream in(terrain());
        return UnrecordedRefPtr<Node>(OBJSceneFileTypeTN::the().read(in, nullptr, {}));
    }();
    return root;
}

void write_by_us(std::ostream &out)
{
    std::string const name = (std::filesystem::temp_directory_path() / "terrain.obj").string();
    OBJSceneFileTypeTN::the().write(scene(), out, name.c_str());
}

void write_by_loop(std::ostream &out)
{
    Geometry const &geometry = static_cast<Geometry const &>(*scene()->getCore());
    GeometryView const view(geometry);
    Matrix const matrix = scene()->getToWorld();
    out << "g Geometry1\ns 1\n";
    for(UInt32 i = 0; i < view.positions.size(); ++i)
    {
        Pnt3f const p = matrix * view.positions.point(i);
        out << "v " << p[0] << ' ' << p[1] << ' ' << p[2] << '\n';
    }
    for(UInt32 i = 0; i < view.normals.size(); ++i)
    {
        Vec3f const n = matrix * view.normals.vector(i);
        out << "vn " << n[0] << ' ' << n[1] << ' ' << n[2] << '\n';
    }
    for(UInt32 i = 0; i < view.texCoords.size(); ++i)
    {
        Pnt3f const t = view.texCoords.point(i);
        out << "vt " << t[0] << ' ' << t[1] << '\n';
    }
    TriangleIterator const end = geometry.endTriangles();
    for(TriangleIterator it = geometry.beginTriangles(); it != end; ++it)
    {
        out << 'f';
        for(Int32 corner = 0; corner < 3; ++corner)
            out << ' ' << it.getPositionIndex(corner) + 1 << '/' << it.getTexCoordsIndex(corner) + 1
                << '/' << it.getNormalIndex(corner) + 1;
        out << '\n';
    }
}

bool loop_writes_our_bytes()
{
    std::string const ours = text_of(write_by_us);
    std::string const loop = text_of(write_by_loop);
    return ours.size() > loop.size() && ours.substr(ours.size() - loop.size()) == loop;
}

void terrain_by_us(benchmark::State &state)
{
    if(scene() == nullptr || !loop_writes_our_bytes())
        state.SkipWithError("the writers disagree");
    for([[maybe_unused]] auto _ : state)
        write_by_us(memory());
}

void terrain_by_loop(benchmark::State &state)
{
    for([[maybe_unused]] auto _ : state)
        write_by_loop(memory());
}

BENCHMARK(terrain_by_loop)
    ->Name("write terrain of 1,000,000 triangles/plain loop")
    ->Unit(benchmark::kMillisecond);

#ifdef BENCHMARK_WITH_ASSIMP
void terrain_by_assimp(benchmark::State &state)
{
    Assimp::Importer importer;
    aiScene const *const scene = importer.ReadFileFromMemory(
        terrain().data(), terrain().size(), aiProcess_JoinIdenticalVertices, "obj");
    if(scene == nullptr || scene->mMeshes[0]->mNumFaces < 900000)
        state.SkipWithError("no scene");
    for([[maybe_unused]] auto _ : state)
    {
        Assimp::Exporter exporter;
        benchmark::DoNotOptimize(exporter.ExportToBlob(scene, "obj"));
    }
}

BENCHMARK(terrain_by_assimp)
    ->Name("write terrain of 1,000,000 triangles/assimp")
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);
#endif

BENCHMARK(terrain_by_us)
    ->Name("write terrain of 1,000,000 triangles/ours")
    ->Unit(benchmark::kMillisecond);
} // namespace
} // namespace OSG::Bench
