// Picks over the largest real model: what a hover costs in a frame, and bands and lassos at the end
// of a drag.

#include <cmath>
#include <numbers>
#include <random>

#include <benchmark/benchmark.h>

#include "OSGPickResult.h"
#include "OSGSceneFileHandler.h"
#include "OSGViewFit.h"
#include "SceneGraph.h"

namespace OSG::Bench
{
namespace
{
/// The model of 69,666 triangles, in a window that shows the whole of it.
struct Model
{
    UnrecordedRefPtr<Node> root;
    SceneBounds bounds;
    WindowView view{{1, 1, 1}, {0, 0, 0}, {0, 1, 0}, 45, 1280, 720};

    Model()
        : root(SceneFileHandlerBase::the()->read(BENCHMARK_FIXTURES_DIR "/glmark2-data/bunny.obj"))
        , bounds(bounds_of(root))
    {
        view = fit(view, bounds);
    }
};

Model const &model(benchmark::State &state)
{
    bring_up();
    static Model const model;
    if(model.root == nullptr)
        state.SkipWithError("no model; scripts/fixtures fetches them");
    return model;
}

void hover(benchmark::State &state)
{
    Model const &shown = model(state);
    PickSelector selector(shown.root);
    std::mt19937 random(1);
    std::uniform_real_distribution<Real32> share(0.25f, 0.75f);
    std::size_t numHits = 0;
    for([[maybe_unused]] auto _ : state)
    {
        Real32 const x = share(random) * 1280;
        Real32 const y = share(random) * 720;
        auto const region = PickRegion::ofRectangle(
            shown.view, pixel_square(x, y, DefaultPickRadius), shown.bounds);
        if(region)
            numHits += pick_results(selector, *region).size();
    }
    state.counters["hits"] =
        benchmark::Counter(static_cast<double>(numHits), benchmark::Counter::kAvgIterations);
}
BENCHMARK(hover)->Name("hover over 69,666 triangles/ours")->Unit(benchmark::kMicrosecond);

void select_in(benchmark::State &state, std::optional<PickRegion> const &region, bool isEnclosed)
{
    Model const &shown = model(state);
    PickSelector selector(shown.root);
    PickSettings settings;
    settings.enclosed = isEnclosed;
    for([[maybe_unused]] auto _ : state)
        benchmark::DoNotOptimize(selector.select(*region, settings).size());
}

/// The whole window: every vertex has to be looked at. The left half: the first vertex in the right
/// half decides.
void band(benchmark::State &state, Real32 right, bool isEnclosed)
{
    Model const &shown = model(state);
    select_in(state, PickRegion::ofRectangle(shown.view, {0, 0, right, 720}, shown.bounds),
              isEnclosed);
}
BENCHMARK_CAPTURE(band, crossing, 640, false)
    ->Name("band that touches, over half of 69,666 triangles/ours")
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(band, half, 640, true)
    ->Name("band that encloses, over half of 69,666 triangles/ours")
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(band, all, 1280, true)
    ->Name("band that encloses, over all of 69,666 triangles/ours")
    ->Unit(benchmark::kMicrosecond);

void lasso(benchmark::State &state)
{
    Model const &shown = model(state);
    std::vector<Pnt2f> points;
    for(int i = 0; i < 64; ++i)
    {
        Real32 const angle = static_cast<Real32>(i * std::numbers::pi / 32);
        Real32 const radius = i % 2 == 0 ? 300.f : 200.f;
        points.emplace_back(640 + radius * std::cos(angle), 360 + radius * std::sin(angle));
    }
    select_in(state, PickRegion::ofLasso(shown.view, points, shown.bounds), false);
}
BENCHMARK(lasso)
    ->Name("lasso of 64 points over 69,666 triangles/ours")
    ->Unit(benchmark::kMicrosecond);
} // namespace
} // namespace OSG::Bench
