// Frames of 1024 by 768 pixels in an off-screen context, measured as the processor time of the
// process. Mesa's software renderer draws in the calling thread. With the OpenGL library that draws
// nothing the time is that of the scene graph alone, and a frame's calls are counted; they are
// printed by name where RENDER_CALLS is set.

#include <cstdio>
#include <cstdlib>
#include <map>
#include <set>
#include <string>

#include <benchmark/benchmark.h>

#include "FrameDrawer.h"

namespace OSG::Bench
{
namespace
{
enum class Course
{
    Still,
    Turning, ///< the camera
    Inside,
    Moving, ///< one transform
    Hiding  ///< one box comes and goes
};

struct Case
{
    char const *name;
    DrawnScene scene;
    Course course;
};

constexpr Case Cases[] = {
    {"5,000 geometries of 200 triangles, still", DrawnScene::Patches, Course::Still},
    {"5,000 geometries of 200 triangles, turning", DrawnScene::Patches, Course::Turning},
    {"100,000 boxes, still", DrawnScene::Boxes, Course::Still},
    {"100,000 boxes, turning", DrawnScene::Boxes, Course::Turning},
    {"100,000 boxes, from inside", DrawnScene::Boxes, Course::Inside},
    {"100,000 boxes, one moves", DrawnScene::Boxes, Course::Moving},
    {"100,000 boxes, one comes and goes", DrawnScene::Boxes, Course::Hiding},
    {"one geometry of 1,000,000 triangles, still", DrawnScene::Terrain, Course::Still},
};

struct NamedContender
{
    char const *name;
    Contender contender;
};

constexpr NamedContender Contenders[] = {
    {"ours", Contender::Ours},
    {"openscenegraph lists", Contender::PeerLists},
    {"openscenegraph buffers", Contender::PeerBuffers},
};

FrameView view_of(Case const &row, UInt32 frame)
{
    constexpr Real32 Step = 0.002f; // radians a frame
    if(row.course == Course::Inside)
        return inside_view();
    return whole_view(row.scene,
                      row.course == Course::Turning ? Step * static_cast<Real32>(frame) : 0.f);
}

void draw_frame(FrameDrawer &drawer, Case const &row)
{
    static UInt32 frame = 0;
    ++frame;
    if(row.course == Course::Moving)
        drawer.moveBox(0.01f * static_cast<Real32>(frame % 10));
    if(row.course == Course::Hiding)
        drawer.showBox(frame % 2 == 0);
    drawer.draw(view_of(row, frame));
}

// The calls of one frame.
void count_calls(benchmark::State &state, FrameDrawer &drawer, Case const &row,
                 char const *contender)
{
    if(!can_count_calls())
        return;
    forget_calls();
    draw_frame(drawer, row);
    state.counters["calls"] = static_cast<double>(counted_calls());
    static std::set<std::string> printed;
    std::string const title = std::string(row.name) + ", " + contender;
    if(std::getenv("RENDER_CALLS") == nullptr || !printed.insert(title).second)
        return;
    std::fprintf(stderr, "%s:\n", title.c_str());
    print_calls();
}

void measure(benchmark::State &state, Case const &row, NamedContender const &contender)
{
    FrameDrawer *const drawer = frame_drawer(row.scene, contender.contender);
    if(drawer == nullptr || *drawer->missing() != '\0')
    {
        state.SkipWithError(drawer == nullptr ? "not built" : drawer->missing());
        return;
    }
    drawer->makeCurrent();
    for(int i = 0; i < 2; ++i) // what is made once
        draw_frame(*drawer, row);
    for([[maybe_unused]] auto _ : state)
        draw_frame(*drawer, row);
    count_calls(state, *drawer, row, contender.name);
    drawer->release();
}

bool register_cases()
{
    draw_in_one_thread();
    for(Case const &row : Cases)
    {
        for(NamedContender const &contender : Contenders)
        {
#ifndef BENCHMARK_WITH_OPENSCENEGRAPH
            if(contender.contender != Contender::Ours)
                continue;
#endif
            std::string const driver = can_count_calls() ? ", without the driver/" : "/";
            benchmark::RegisterBenchmark((row.name + driver + contender.name).c_str(), measure, row,
                                         contender)
                ->MeasureProcessCPUTime()
                ->Unit(benchmark::kMillisecond);
        }
    }
    return true;
}

bool const registered = register_cases();
} // namespace

FrameDrawer *frame_drawer(DrawnScene scene, Contender contender)
{
    static std::map<std::pair<DrawnScene, Contender>, std::unique_ptr<FrameDrawer>> drawers;
    auto const [place, isNew] = drawers.try_emplace({scene, contender});
    if(isNew)
    {
        Node *const root = drawn_scene(scene);
        place->second = contender == Contender::Ours
                            ? make_our_drawer(root)
                            : make_peer_drawer(root, contender == Contender::PeerLists);
    }
    return place->second.get();
}
} // namespace OSG::Bench
