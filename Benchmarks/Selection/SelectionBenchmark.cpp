// Selections and rays in scenes of up to ten million triangles, beside OpenSceneGraph, plain and
// with its k-d trees, and Embree. Scenes.h and Queries.h say what is asked. A query of ours is
// reinitialize, pushFrustum, apply and reading every record of FrontHits and BackHits. Exact stands
// beside the peer's polytope intersector without limit, fast beside LIMIT_ONE_PER_DRAWABLE.
//
// All contenders answer the same queries, one after the other. Before a peer is measured its
// answers are held against ours: the geometries that a volume hits, the distances along rays.
//
// The names begin with the scene, so that --benchmark_filter='^S[134] ' is a quick look.

#include <chrono>
#include <cmath>
#include <cstdio>
#include <functional>
#include <set>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

#include "Contenders.h"
#include "OSGChangeList.h"
#include "OSGGeometry.h"
#include "OSGNodeWalker.h"
#include "OSGPrimitiveIndexUse.h"
#include "OSGThread.h"
#include "OSGTransform.h"
#include "OSGTypedGeoProperties.h"

namespace OSG::Bench
{
namespace
{
constexpr Real64 MinSeconds = 0.2;

/// Asks one query after the other. A later run goes on where the former ended, so that slow
/// contenders get to all queries as well.
template <class Contender>
void measure(benchmark::State &state, Contender &contender, std::size_t queries, std::size_t &next)
{
    for([[maybe_unused]] auto _ : state)
    {
        benchmark::DoNotOptimize(contender.ask(next));
        next = next + 1 < queries ? next + 1 : 0;
    }
    state.SetItemsProcessed(static_cast<int64_t>(state.iterations()));
}

// --- agreement ---

/// Compares up to 40 answers, as many as take no longer than a few seconds.
bool agree_on_all(std::string const &name, std::size_t queries,
                  std::function<bool(std::size_t)> const &agree)
{
    auto const begin = std::chrono::steady_clock::now();
    std::size_t const most = std::min<std::size_t>(queries, 40);
    std::size_t asked = 0;
    std::size_t same = 0;
    while(asked < most && std::chrono::steady_clock::now() - begin < std::chrono::seconds(3))
        same += agree(asked++ * queries / most) ? 1 : 0;
    std::fprintf(stderr, "%s: %zu of %zu answers agree\n", name.c_str(), same, asked);
    // The peers compute in other precisions, which may decide at the border of a volume.
    return same * 20 >= asked * 19;
}

bool agree(VolumeContender &ours, VolumeContender &peer, std::size_t query)
{
    ours.ask(query);
    peer.ask(query);
    return ours.shapes() == peer.shapes();
}

bool agree(RayContender &ours, RayContender &peer, std::size_t query)
{
    Real64 const a = ours.ask(query);
    Real64 const b = peer.ask(query);
    return (a < 0) == (b < 0) && std::abs(a - b) <= 1e-3 * std::max(1.0, std::abs(a));
}

// --- cases ---

void add(std::string const &name, std::function<void(benchmark::State &)> const &run)
{
    benchmark::RegisterBenchmark(name.c_str(), run)->MinTime(MinSeconds);
}

/// A case of one contender. `makeOurs` makes the contender that it is held against; null for ours.
template <class Contender>
void add_contender(std::string const &name, std::function<std::unique_ptr<Contender>()> make,
                   std::function<std::unique_ptr<Contender>()> makeOurs,
                   std::function<std::size_t()> count)
{
    add(name,
        [=, contender = std::shared_ptr<Contender>(), next = std::size_t(0),
         agrees = true](benchmark::State &state) mutable
        {
            if(contender == nullptr)
            {
                contender = make();
                for(std::size_t i = 0; makeOurs == nullptr && i < 10; ++i)
                    contender->ask(i % count()); // what is built on demand is built now
                if(makeOurs != nullptr)
                {
                    auto const ours = makeOurs();
                    agrees = agree_on_all(name, count(),
                                          [&](std::size_t query)
                                          { return agree(*ours, *contender, query); });
                }
            }
            if(!agrees)
                state.SkipWithError("the answers differ from ours");
            else
                measure(state, *contender, count(), next);
        });
}

void add_volumes(SceneName scene, VolumeQuery query, Mode mode)
{
    std::string const name = std::string(text_of(scene)) +
                             (mode == Mode::Exact ? " exact Q" : " fast Q") +
                             std::to_string(static_cast<int>(query) + 1) + "/";
    auto const count = [=] { return volumes(scene, query).size(); };
    auto const ours = [=] { return our_volumes(scene, query, mode, true); };
    add_contender<VolumeContender>(name + "ours", ours, nullptr, count);
#ifdef BENCHMARK_WITH_OPENSCENEGRAPH
    add_contender<VolumeContender>(
        name + "openscenegraph", [=] { return peer_volumes(scene, query, mode, false); }, ours,
        count);
    add_contender<VolumeContender>(
        name + "openscenegraph-kdtree", [=] { return peer_volumes(scene, query, mode, true); },
        ours, count);
#endif
}

void add_rays(SceneName scene, RayQuery query)
{
    std::string const name =
        std::string(text_of(scene)) + (query == RayQuery::Down ? " rays down/" : " rays random/");
    auto const count = [=] { return rays(scene, query).size(); };
    auto const ours = [=] { return our_rays(scene, query, true); };
    add_contender<RayContender>(name + "ours", ours, nullptr, count);
#ifdef BENCHMARK_WITH_OPENSCENEGRAPH
    add_contender<RayContender>(
        name + "openscenegraph-kdtree", [=] { return peer_rays(scene, query); }, ours, count);
#endif
#ifdef BENCHMARK_WITH_EMBREE
    add_contender<RayContender>(
        name + "embree", [=] { return embree_rays(scene, query); }, ours, count);
#endif
}

// --- the first picks after an edit ---

void bring_up_to_date(SceneName name)
{
    scene(name)->updateVolume();
    Thread::getCurrentChangeList()->commitChanges();
}

void touch_positions(SceneName name)
{
    auto *const geometry = dynamic_cast<Geometry *>(terrain_of(name));
    auto *const positions = dynamic_cast<GeoPnt3fProperty *>(geometry->getPositions());
    positions->editValues();
    Thread::getCurrentChangeList()->commitChanges();
    bring_up_to_date(name);
}

/// Two picks on a geometry without an index; without the use of indices, two plain loops.
void add_cold(SceneName scene, bool useIndex)
{
    std::string const name =
        std::string(text_of(scene)) + " first two picks/" + (useIndex ? "ours" : "plain-loop");
    auto const run = [=](benchmark::State &state)
    {
        auto const picks = our_volumes(scene, VolumeQuery::Q1, Mode::Exact, useIndex);
        for([[maybe_unused]] auto _ : state)
        {
            touch_positions(scene);
            auto const begin = std::chrono::steady_clock::now();
            benchmark::DoNotOptimize(picks->ask(0) + picks->ask(1));
            state.SetIterationTime(
                std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count());
        }
    };
    benchmark::RegisterBenchmark(name.c_str(), run)->UseManualTime()->MinTime(MinSeconds);
}

// --- edits ---

std::vector<Transform *> transforms_of(SceneName name)
{
    struct Collector
    {
        std::vector<Transform *> found;

        bool enter(Node *node)
        {
            if(auto *const transform = dynamic_cast<Transform *>(node->getCore()))
                found.push_back(transform);
            return true;
        }
        void leave(Node *) {}
    };
    Collector collector;
    walk_children(scene(name), collector);
    return collector.found;
}

/// The time of an edit of a transform and its commit: in a scene of which no child index is left,
/// and in one that was picked in before, so that the edit has one to drop.
void add_edits(SceneName scene, bool picksBefore)
{
    std::string const name = std::string(text_of(scene)) + " edit of a transform/" +
                             (picksBefore ? "ours-after-picks" : "ours");
    auto const run = [=](benchmark::State &state)
    {
        constexpr std::size_t Edits = 1000;
        std::vector<Transform *> const transforms = transforms_of(scene);
        auto const picks = our_volumes(scene, VolumeQuery::Q3, Mode::Fast, true);
        for([[maybe_unused]] auto _ : state)
        {
            for(std::size_t i = 0; picksBefore && i < 3; ++i)
                picks->ask(0);
            auto const begin = std::chrono::steady_clock::now();
            for(std::size_t i = 0; i < Edits; ++i)
            {
                transforms[i * (transforms.size() / Edits)]->editMatrix();
                Thread::getCurrentChangeList()->commitChanges();
            }
            std::chrono::duration<double> const seconds = std::chrono::steady_clock::now() - begin;
            state.SetIterationTime(seconds.count() / Edits);
            bring_up_to_date(scene);
        }
    };
    benchmark::RegisterBenchmark(name.c_str(), run)->UseManualTime()->Iterations(5);
}

// --- the index itself ---

using Building = PrimitiveIndexSettings::Building;

/// Settings that are put back at the end.
class IndexSettings
{
  public:
    explicit IndexSettings(Building building)
        : _before(PrimitiveIndexUse::getSettings())
    {
        PrimitiveIndexSettings settings = _before;
        settings.building = building;
        PrimitiveIndexUse::setSettings(settings);
    }
    ~IndexSettings() { PrimitiveIndexUse::setSettings(_before); }

  private:
    PrimitiveIndexSettings _before;
};

/// The time of a pick that has to build the index first, and the bytes that the index takes.
void add_our_build(SceneName scene, Building building, std::string const &contender)
{
    std::string const name = text_of(scene);
    auto const run = [=](benchmark::State &state)
    {
        IndexSettings const settings(building);
        auto const picks = our_volumes(scene, VolumeQuery::Q1, Mode::Exact, true);
        for([[maybe_unused]] auto _ : state)
        {
            touch_positions(scene);
            auto const begin = std::chrono::steady_clock::now();
            benchmark::DoNotOptimize(picks->ask(0));
            state.SetIterationTime(
                std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count());
        }
    };
    auto const weigh = [=](benchmark::State &state)
    {
        UInt64 before = 0;
        {
            // The first query drops the index of the values before.
            IndexSettings const settings(Building::Automatic);
            touch_positions(scene);
            our_volumes(scene, VolumeQuery::Q1, Mode::Exact, true)->ask(0);
            before = PrimitiveIndexUse::getStatistics().bytes;
        }
        IndexSettings const settings(building);
        for([[maybe_unused]] auto _ : state)
            our_volumes(scene, VolumeQuery::Q1, Mode::Exact, true)->ask(0);
        state.counters["bytes"] =
            static_cast<double>(PrimitiveIndexUse::getStatistics().bytes - before) /
            (scene == SceneName::S2 ? 1e7 : 1e6);
    };
    benchmark::RegisterBenchmark((name + " build/" + contender).c_str(), run)
        ->UseManualTime()
        ->MinTime(MinSeconds);
    benchmark::RegisterBenchmark((name + " index per triangle/" + contender).c_str(), weigh)
        ->Iterations(1);
}

#ifdef BENCHMARK_WITH_OPENSCENEGRAPH
void add_build(SceneName scene)
{
    std::string const name = std::string(text_of(scene)) + " build/openscenegraph-kdtree";
    benchmark::RegisterBenchmark(name.c_str(),
                                 [=](benchmark::State &state)
                                 {
                                     for([[maybe_unused]] auto _ : state)
                                         benchmark::DoNotOptimize(build_peer_tree(scene));
                                 })
        ->MinTime(MinSeconds);
}
#endif

bool add_all()
{
    for(SceneName scene : AllScenes)
    {
        for(Mode mode : {Mode::Exact, Mode::Fast})
        {
            for(VolumeQuery query : {VolumeQuery::Q1, VolumeQuery::Q2, VolumeQuery::Q3})
                add_volumes(scene, query, mode);
        }
        if(scene != SceneName::S3)
            add_volumes(scene, VolumeQuery::Q4, Mode::Exact);
        add_rays(scene, RayQuery::Down);
        add_rays(scene, RayQuery::Random);
    }
    for(SceneName scene : {SceneName::S1, SceneName::S1r, SceneName::S2})
    {
        add_cold(scene, true);
        add_cold(scene, false);
    }
    for(SceneName scene : {SceneName::S1, SceneName::S1r, SceneName::S2})
    {
        add_our_build(scene, Building::AtOnce, "ours");
        add_our_build(scene, Building::Sorted, "ours-sorted");
    }
    add_edits(SceneName::S3, false);
    add_edits(SceneName::S3, true);
#ifdef BENCHMARK_WITH_OPENSCENEGRAPH
    add_build(SceneName::S1);
    add_build(SceneName::S2);
#endif
    return true;
}

[[maybe_unused]] bool const added = add_all();
} // namespace
} // namespace OSG::Bench
