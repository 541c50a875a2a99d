#include "ObjModels.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>

#include "RunsObj.h"
#include "TerrainObj.h"

namespace OSG::Bench
{
namespace
{
constexpr std::uint32_t TerrainTriangles = 1000000;
constexpr std::uint32_t MaterialRuns = 20000;
constexpr char RunsLibrary[] = "runs.mtl";
constexpr char Bunny[] = BENCHMARK_FIXTURES_DIR "/glmark2-data/bunny.obj";

/// A folder of its own among the system's temporary files, removed with all that lies in it.
class ModelFolder
{
  public:
    ModelFolder()
    {
        std::string name = (std::filesystem::temp_directory_path() / "obj-models-XXXXXX").string();
        if(::mkdtemp(name.data()) == nullptr)
            throw std::runtime_error("no folder for models");
        _folder = name;
    }
    ~ModelFolder()
    {
        std::error_code ignored;
        std::filesystem::remove_all(_folder, ignored);
    }

    std::string write(char const *file, std::string const &text) const
    {
        std::string const path = (_folder / file).string();
        std::ofstream out(path, std::ios::binary);
        if(!(out << text << std::flush))
            throw std::runtime_error("cannot write " + path);
        return path;
    }

  private:
    std::filesystem::path _folder;
};

ModelFolder const &folder()
{
    static ModelFolder const made;
    return made;
}

template <TerrainCorners Corners>
std::string const &terrain()
{
    static std::string const path =
        folder().write(("terrain" + std::to_string(static_cast<int>(Corners)) + ".obj").c_str(),
                       terrain_obj(TerrainTriangles, Corners));
    return path;
}

std::string const &runs()
{
    static std::string const path = []
    {
        folder().write(RunsLibrary, runs_mtl());
        return folder().write("runs.obj", runs_obj(MaterialRuns, RunsLibrary));
    }();
    return path;
}

std::string const &bunny()
{
    static std::string const path = std::filesystem::exists(Bunny) ? Bunny : "";
    return path;
}
} // namespace

std::vector<ObjModel> obj_models()
{
    return {{"T1 terrain of 1,000,000 triangles", 1, true, &terrain<TerrainCorners::Separate>},
            {"T1 with one index for all", 1, true, &terrain<TerrainCorners::Full>},
            {"T1 with a normal for each face", 1, false, &terrain<TerrainCorners::Faceted>},
            {"T2 positions only", 1, true, &terrain<TerrainCorners::Positions>},
            {"T3 20,000 material runs", 1, true, &runs},
            {"bunny", 10, true, &bunny}};
}

std::string bytes_of_file(std::string const &path)
{
    std::string bytes(std::filesystem::file_size(path), '\0');
    std::ifstream(path, std::ios::binary)
        .read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    return bytes;
}
} // namespace OSG::Bench
