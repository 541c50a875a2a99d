// One frame of a walk whose step stays blocked through all its tries, in a building of 200,000
// triangles in 500 geometries. The peer answers the 120 box queries of all tries, one after the
// other, and does no more. Ours is the whole frame, in which 30 queries are enough, since all
// raised tries have the same raise; "120 box queries" is what ours takes for those that the peer
// answers. The same building of more and fewer triangles shows how a frame grows. Before a peer is
// measured, its answers are held against ours.

#include <string>

#include <benchmark/benchmark.h>

#include "BlockedWalk.h"
#include "PeerQueries.h"

namespace OSG::Bench
{
namespace
{
constexpr Real64 MinSeconds = 0.2;
constexpr UInt32 UsualTriangles = 200000;
constexpr UInt32 FewTriangles = 20000;
constexpr UInt32 ManyTriangles = 2000000;
constexpr UInt32 ExpectedQueries = 30;

void run_ours(benchmark::State &state, UInt32 triangles)
{
    BlockedWalk walk(triangles);
    for(int i = 0; i < 10; ++i)
        walk.frame(); // what is built on demand is built now
    bool stays = true;
    for([[maybe_unused]] auto _ : state)
        stays = walk.frame() && stays;
    if(!stays || walk.queries() != ExpectedQueries)
        state.SkipWithError(
            ("the step is not blocked by 30 queries but took " + std::to_string(walk.queries()))
                .c_str());
}

void run_our_queries(benchmark::State &state)
{
    OurQueries ours(UsualTriangles);
    ours.frame(); // what is built on demand is built now
    for([[maybe_unused]] auto _ : state)
        benchmark::DoNotOptimize(ours.frame());
}

void add(std::string const &name, std::function<void(benchmark::State &)> const &run)
{
    benchmark::RegisterBenchmark(name.c_str(), run)
        ->MinTime(MinSeconds)
        ->Unit(benchmark::kMicrosecond);
}

#ifdef BENCHMARK_WITH_OPENSCENEGRAPH
void run_peer(benchmark::State &state, bool useKdTree)
{
    PeerQueries peer(UsualTriangles, useKdTree);
    if(!peer.agrees())
    {
        state.SkipWithError("the answers differ from ours");
        return;
    }
    for([[maybe_unused]] auto _ : state)
        benchmark::DoNotOptimize(peer.frame());
}
#endif

bool register_cases()
{
    std::string const blocked = "blocked frame in 200,000 triangles/";
    add(blocked + "ours", [](auto &state) { run_ours(state, UsualTriangles); });
#ifdef BENCHMARK_WITH_OPENSCENEGRAPH
    add(blocked + "openscenegraph-120-queries", [](auto &state) { run_peer(state, false); });
    add(blocked + "openscenegraph-kdtree-120-queries", [](auto &state) { run_peer(state, true); });
#endif
    std::string const queries = "120 box queries in 200,000 triangles/";
    add(queries + "ours", &run_our_queries);
#ifdef BENCHMARK_WITH_OPENSCENEGRAPH
    add(queries + "openscenegraph", [](auto &state) { run_peer(state, false); });
    add(queries + "openscenegraph-kdtree", [](auto &state) { run_peer(state, true); });
#endif
    std::string const growth = "blocked frame in 2,000,000 triangles/";
    add(growth + "ours", [](auto &state) { run_ours(state, ManyTriangles); });
    add(growth + "ours-in-200,000", [](auto &state) { run_ours(state, UsualTriangles); });
    add(growth + "ours-in-20,000", [](auto &state) { run_ours(state, FewTriangles); });
    return true;
}

[[maybe_unused]] bool const Registered = register_cases();
} // namespace
} // namespace OSG::Bench
