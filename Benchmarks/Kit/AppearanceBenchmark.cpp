// A frame of a scene of 1,000,000 nodes in which another part is highlighted than in the last one,
// as under a pointer that hovers, beside a frame after a move of the camera. Collecting and ordering
// alone; nothing is drawn. All of the scene is in sight.

#include <benchmark/benchmark.h>

#include "KitScene.h"
#include "OSGRenderAction.h"
#include "OSGSimpleMaterial.h"
#include "SceneGraph.h"

namespace OSG::Bench
{
namespace
{
constexpr UInt32 Nodes = 1000000;

struct HighlightedScene
{
    HighlightedScene()
        : scene(make_kit_scene(Nodes))
    {
        highlight->setDiffuse(Color3f(1, 0, 0));
        commit();
        moveCamera(0);
        draw();
    }

    void moveCamera(Real32 x)
    {
        Matrix projection;
        projection[0][0] = projection[1][1] = 0.01f;
        projection[2][2] = -0.001f;
        Matrix toWorld;
        Matrix viewing;
        toWorld[3][0] = x;
        viewing[3][0] = -x;
        action->editDrawEnv().setView(toWorld, viewing, projection, {0, 99, 0, 99});
    }
    void draw() { action->apply(scene.root); }

    KitScene scene;
    UnrecordedRefPtr<RenderAction> action{RenderAction::create()};
    UnrecordedRefPtr<SimpleMaterial> highlight{SimpleMaterial::create()};
};

HighlightedScene &the_scene()
{
    bring_up();
    static HighlightedScene *const scene = new HighlightedScene;
    return *scene;
}

void move_camera(benchmark::State &state)
{
    HighlightedScene &scene = the_scene();
    scene.action->editAppearances().clear();
    Real32 x = 0;
    for([[maybe_unused]] auto _ : state)
    {
        scene.moveCamera(x = x == 0 ? 0.1f : 0.f);
        scene.draw();
    }
}
BENCHMARK(move_camera)->Name("frame of 1,000,000 nodes, camera moved/ours");

// Beside so many parts that are highlighted all the time.
void highlight_another(benchmark::State &state, std::size_t count)
{
    HighlightedScene &scene = the_scene();
    AppearanceTable &table = scene.action->editAppearances();
    table.clear();
    for(std::size_t i = 0; i < count; ++i)
        table.set(NodePath(scene.scene.leaves[5 * i]), scene.highlight);
    scene.draw();
    std::size_t hovered = 1;
    for([[maybe_unused]] auto _ : state)
    {
        table.erase(NodePath(scene.scene.leaves[hovered]));
        hovered = (hovered + 5000) % scene.scene.leaves.size() / 5 * 5 + 1;
        table.set(NodePath(scene.scene.leaves[hovered]), scene.highlight);
        scene.draw();
    }
}
BENCHMARK_CAPTURE(highlight_another, alone, 0)->Name("the same, another highlight/ours");
BENCHMARK_CAPTURE(highlight_another, beside, 100000)
    ->Name("the same, another beside 100,000 highlights/ours");
} // namespace
} // namespace OSG::Bench
