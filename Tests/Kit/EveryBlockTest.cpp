/// \file
/// Whole jobs of a host at the end of memory: the first block that is not there is each of those
/// that the job takes, one after the other. A job then ends by std::bad_alloc, or by the neutral
/// result that it has for bad input, and leaves nothing behind.

#include <new>
#include <sstream>

#include <gtest/gtest.h>

#include "OSGCadTrackballEngine.h"
#include "OSGChangeList.h"
#include "OSGConstSizeTransform.h"
#include "OSGCopterFlyEngine.h"
#include "OSGFastSelectionFunctor.h"
#include "OSGFieldContainerFactory.h"
#include "OSGGraphOpFactory.h"
#include "OSGGroup.h"
#include "OSGInputPlayer.h"
#include "OSGIntersectAction.h"
#include "OSGMarkers.h"
#include "OSGMaterialGroup.h"
#include "OSGName.h"
#include "OSGPerspectiveCamera.h"
#include "OSGSceneAccount.h"
#include "OSGSceneBounds.h"
#include "OSGSceneFileHandler.h"
#include "OSGSelectionAction.h"
#include "OSGSelectionSet.h"
#include "OSGSharpEdges.h"
#include "OSGShownTriangles.h"
#include "OSGSimpleSelectionFunctor.h"
#include "OSGSwitch.h"
#include "OSGThread.h"
#include "OSGWASDFlyEngine.h"
#include "OperationScenes.h"

namespace OSG::Test
{
namespace
{
void commit() { Thread::getCurrentChangeList()->commitChanges(); }

NodePtr make_scene()
{
    NodePtr const shared = make_triangle({5, 0, 0});
    setName(shared, "a name that is too long to stand in a string without a block");
    NodePtr const materials =
        make<MaterialGroup>({make_triangle(), make_group({make_triangle(), make_triangle()})});
    core_of<MaterialGroup>(materials)->setMaterial(make_material());
    NodePtr root = make_group({make_transform(translation(1, 0, 0), {make_triangle(), shared}),
                               materials, make<Switch>({make_triangle()}),
                               make_group({make_group({make_triangle()})}), make_visit(shared)});
    commit();
    root->updateVolume();
    commit();
    return root;
}

Frustum everything()
{
    Pnt3f const corners[8] = {{-9, -9, 9},  {9, -9, 9},  {9, 9, 9},  {-9, 9, 9},
                              {-9, -9, -9}, {9, -9, -9}, {9, 9, -9}, {-9, 9, -9}};
    return Frustum(corners);
}

// --- the jobs ---

template <class Functor, class... Settings>
void select_all(Node *scene, Settings... settings)
{
    UnrecordedRefPtr<SelectionAction> const action(SelectionAction::create());
    Functor functor(action, settings...);
    action->pushFrustum(everything());
    action->apply(scene);
    functor.hits(SelectionFunctor::FrontHits);
    functor.hits(SelectionFunctor::BackHits);
}

void select_exactly(Node *scene)
{
    select_all<SimpleSelectionFunctor>(scene, 7u, SelectionFunctor::NearPlane);
}
void select_fast(Node *scene) { select_all<FastSelectionFunctor>(scene); }

void cast_ray(Node *scene)
{
    UnrecordedRefPtr<IntersectAction> const action(IntersectAction::create());
    action->setLine(Line(Pnt3f(0.2f, 0.2f, 5), Vec3f(0, 0, -1)), 100);
    action->apply(scene);
}

void run_operation(Node *scene, char const *name)
{
    UnrecordedRefPtr<GraphOp> const operation(GraphOpFactoryBase::the()->create(name));
    operation->setParams("color_is_vector=true unknown=1");
    operation->traverse(scene);
}
void run_mrg(Node *scene) { run_operation(scene, "Mrg"); }
void run_grp_merge(Node *scene) { run_operation(scene, "GrpMerge"); }
void run_simplify(Node *scene) { run_operation(scene, "SimplifyRenderEngine"); }

void account(Node *scene) { account_of(scene); }

void read_obj(Node *)
{
    std::istringstream in(
        "v 0 0 0\nv 1 0 0\nv 0 1 0\nvt 0 0\nvn 0 0 1\nusemtl a\nf 1/1/1 2/1/1 3/1/1\n"
        "usemtl b\nf 3 2 1\nmtllib none.mtl\n");
    UnrecordedRefPtr<Node> const read(SceneFileHandlerBase::the()->read(in, "obj"));
}

void write_and_read_osb(Node *scene)
{
    std::stringstream file;
    if(!SceneFileHandlerBase::the()->write(scene, file, "osb"))
        return;
    UnrecordedRefPtr<Node> const read(SceneFileHandlerBase::the()->read(file, "osb"));
}

template <class Engine, class... Settings>
void navigate(Node *scene, Settings... settings)
{
    std::istringstream text("tolvanite-events 1\ncamera perspective 60\nfrom 0 0 9\nat 0 0 0\n"
                            "up 0 1 0\n0 press 0 30 20\n0.1 move 40 30\n0.2 release 0 40 30\n");
    RecordingResult const result = read_recording(text);
    UnrecordedRefPtr<Engine> const engine(Engine::create(settings...));
    if(!result.recording || engine == nullptr)
        return;
    InputPlayer player(*result.recording, engine, scene, 64, 48);
    while(player.step())
        player.getPose();
}

void orbit(Node *scene) { navigate<CadTrackballEngine>(scene, 0.8f); }
void fly(Node *scene) { navigate<WASDFlyEngine>(scene); }
void hover(Node *scene) { navigate<CopterFlyEngine>(scene); }

void count_shown(Node *scene)
{
    UnrecordedRefPtr<PerspectiveCamera> const camera(PerspectiveCamera::create());
    camera->setFov(1);
    camera->setNear(1);
    camera->setFar(100);
    count_shown_triangles(scene, *camera, 64, 48);
}

void bound(Node *scene)
{
    scene->addChild(make<ConstSizeTransform>({make_triangle()}));
    bounds_of(scene);
}

struct Listener : SelectionSet::Observer
{
    void selectionChanged(SelectionSet const &set, SelectionSet::Change const &) override
    {
        size = set.size();
    }
    std::size_t size = 0;
};

void keep_a_selection(Node *scene)
{
    Listener listener;
    SelectionSet set;
    set.addObserver(&listener);
    set.add({{NodePath(scene)}, {NodePath(scene->getChild(0))}});
    set.toggle({{NodePath(scene->getChild(1))}, {NodePath(scene)}});
    set.prune(scene);
    set.replace({{NodePath(scene->getChild(2))}});
    ASSERT_EQ(listener.size, 1u);
}

void find_sharp_edges(Node *scene)
{
    UnrecordedRefPtr<RenderAction> const action(RenderAction::create());
    SharpEdges edges;
    edges.drawBy(*action);
    action->apply(scene);
    commit();
    for(int step = 0; step < 9 && !edges.build(2); ++step)
        commit();
}

void place_markers(Node *)
{
    Markers markers;
    markers.addPoint({0, 0, 0}, Color3f(1, 0, 0));
    markers.addPoint({1, 0, 0}, Color3f(1, 0, 0));
    markers.addLine({0, 0, 0}, {1, 0, 0}, Color3f(1, 0, 0));
}

struct Job
{
    char const *name;
    void (*run)(Node *scene);
};

Job const Jobs[] = {{"SelectExactly", &select_exactly},
                    {"SelectFast", &select_fast},
                    {"CastARay", &cast_ray},
                    {"RunMrg", &run_mrg},
                    {"RunGrpMerge", &run_grp_merge},
                    {"RunSimplifyRenderEngine", &run_simplify},
                    {"Account", &account},
                    {"CountShown", &count_shown},
                    {"Bound", &bound},
                    {"KeepASelection", &keep_a_selection},
                    {"FindSharpEdges", &find_sharp_edges},
                    {"PlaceMarkers", &place_markers},
                    {"ReadObj", &read_obj},
                    {"WriteAndReadOsb", &write_and_read_osb},
                    {"OrbitByRecording", &orbit},
                    {"FlyByRecording", &fly},
                    {"HoverByRecording", &hover}};

// --- the attempts ---

/// Tries a job that has `blocks` blocks for itself; `done` tells whether these sufficed. Gives the
/// number of containers that are left of it.
UInt32 attempt(Job const &job, UInt64 blocks, bool &done)
{
    UInt32 const before = FieldContainerFactoryBase::the()->getNumContainers();
    {
        NodePtr const scene = make_scene();
        set_mem_block_limit(blocks);
        done = true;
        try
        {
            job.run(scene);
        }
        catch(std::bad_alloc const &)
        {
            done = false;
        }
        // A job that swallows the failure has a neutral result; then the next block is missing too.
        void *const probe = MemMalloc(1);
        done = done && probe != nullptr;
        MemFree(probe);
        set_mem_limit(0);
        commit();
    }
    commit();
    return FieldContainerFactoryBase::the()->getNumContainers() - before;
}

class EveryBlock : public testing::TestWithParam<Job>
{
};

TEST_P(EveryBlock, MayBeMissingAndNothingIsLeftBehind)
{
    bool done = false;
    // What is made once, and lists that keep their room.
    attempt(GetParam(), 1000000, done);
    ASSERT_TRUE(done);
    UInt64 const begin = get_mem_bytes();
    UInt64 blocks = 0;
    for(done = false; !done; ++blocks)
    {
        ASSERT_EQ(attempt(GetParam(), blocks, done), 0u) << "with " << blocks << " blocks";
        ASSERT_LT(blocks, 100000u);
    }
    EXPECT_GT(blocks, 3u);
    // Less than a byte for each attempt would be no leak; a list may keep a larger block.
    EXPECT_LT(get_mem_bytes(), begin + 1024 + blocks);
}

INSTANTIATE_TEST_SUITE_P(Jobs, EveryBlock, testing::ValuesIn(Jobs),
                         [](auto const &row) { return std::string(row.param.name); });
} // namespace
} // namespace OSG::Test
