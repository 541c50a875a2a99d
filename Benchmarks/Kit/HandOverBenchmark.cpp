// The hand-over of a scene of 1,000,000 nodes from the aspect that read it to that of the host: how
// long the host's thread stands still. The time is that of one whole hand-over.

#include <filesystem>
#include <string>

#include <benchmark/benchmark.h>
#include <unistd.h>

#include "KitScene.h"
#include "OSGSceneFileHandler.h"
#include "OSGSceneLoader.h"
#include "SceneGraph.h"

namespace OSG::Bench
{
namespace
{
constexpr UInt32 Nodes = 1000000;

/// The file of the scene, removed at the end of the program.
class SceneFile
{
  public:
    SceneFile()
        : _name(std::filesystem::temp_directory_path() /
                ("tolvanite-hand-over-" + std::to_string(getpid()) + ".osb"))
    {
        SceneFileHandlerBase::the()->write(make_kit_scene(Nodes).root, _name.c_str());
        commit();
    }
    ~SceneFile()
    {
        std::error_code error;
        std::filesystem::remove(_name, error);
    }
    SceneFile(SceneFile const &) = delete;
    SceneFile &operator=(SceneFile const &) = delete;

    std::string name() const { return _name.string(); }

  private:
    std::filesystem::path _name;
};

void hand_over(benchmark::State &state)
{
    bring_up();
    static SceneFile const file;
    for([[maybe_unused]] auto _ : state)
    {
        SceneLoader loader(file.name());
        loader.wait();
        NodePtr const scene(loader.take());
        if(scene == nullptr)
            state.SkipWithError("there is no scene");
        state.SetIterationTime(loader.getHandOverSeconds());
        commit();
    }
}
BENCHMARK(hand_over)
    ->Name("hand-over of 1,000,000 nodes/ours")
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->Iterations(1);
} // namespace
} // namespace OSG::Bench
