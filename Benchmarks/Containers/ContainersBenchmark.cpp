// Our half of the container benchmarks: the time to make, drop, copy, save and visit a node, a name
// or a box. The peer's half does the same with the peer's classes.
//
// All times are CPU time per node or box.

#include <sstream>

#include <benchmark/benchmark.h>

#include "OSGAction.h"
#include "OSGDeepClone.h"
#include "OSGSceneFileHandler.h"
#include "OSGTraverse.h"
#include "OurScenes.h"

namespace OSG::Bench
{
namespace
{
void count_items(benchmark::State &state, std::size_t perIteration)
{
    state.SetItemsProcessed(static_cast<int64_t>(perIteration) *
                            static_cast<int64_t>(state.iterations()));
}

void make_named(benchmark::State &state)
{
    bring_up();
    for([[maybe_unused]] auto _ : state)
    {
        NodePtr root = our_named_tree(TreeNodes);
        state.PauseTiming();
        root = nullptr;
        commit();
        state.ResumeTiming();
    }
    count_items(state, TreeNodes);
}

void drop_named(benchmark::State &state)
{
    bring_up();
    for([[maybe_unused]] auto _ : state)
    {
        state.PauseTiming();
        NodePtr root = our_named_tree(TreeNodes);
        state.ResumeTiming();
        root = nullptr;
        commit();
    }
    count_items(state, TreeNodes);
}

void update_volumes(benchmark::State &state)
{
    bring_up();
    NodeList leaves;
    NodePtr const root = our_shown_tree(TreeNodes, leaves);
    root->updateVolume();
    commit();
    for([[maybe_unused]] auto _ : state)
    {
        state.PauseTiming();
        for(Node *leaf : leaves)
            leaf->invalidateVolume();
        commit();
        state.ResumeTiming();
        root->updateVolume();
    }
    commit();
    if(root->getVolume().getMax() != Pnt3f(1, 1, 0))
        state.SkipWithError("the tree has the box of its triangle");
    count_items(state, TreeNodes);
}

void traverse_tree(benchmark::State &state)
{
    bring_up();
    NodeList leaves;
    NodePtr const root = our_shown_tree(TreeNodes, leaves);
    std::size_t seen = 0;
    for([[maybe_unused]] auto _ : state)
    {
        seen = 0;
        traverse(root,
                 [&seen](Node *)
                 {
                     ++seen;
                     return ActionBase::Continue;
                 });
    }
    if(seen != TreeNodes)
        state.SkipWithError("every node is visited");
    count_items(state, TreeNodes);
}

/// Calls a function for the core of each node of the tree.
class CountingAction : public Action
{
  public:
    CountingAction()
    {
        Functor const enter = [this](NodeCore *, Action *)
        {
            ++seen;
            return Continue;
        };
        registerEnterFunction(Group::getClassType(), enter);
        registerEnterFunction(Geometry::getClassType(), enter);
    }
    ~CountingAction() override = default;

    std::size_t seen = 0;
};

void act_on_tree(benchmark::State &state)
{
    bring_up();
    NodeList leaves;
    NodePtr const root = our_shown_tree(TreeNodes, leaves);
    CountingAction action;
    for([[maybe_unused]] auto _ : state)
    {
        action.seen = 0;
        action.apply(root);
    }
    if(action.seen != TreeNodes)
        state.SkipWithError("every core is met");
    count_items(state, TreeNodes);
}

void clone_scene(benchmark::State &state, NodePtr const &root, std::size_t items)
{
    commit();
    for([[maybe_unused]] auto _ : state)
    {
        UnrecordedRefPtr<FieldContainer> copy(deepClone(root, "Geometry"));
        commit();
        state.PauseTiming();
        copy = nullptr;
        commit();
        state.ResumeTiming();
    }
    count_items(state, items);
}

void clone_named(benchmark::State &state)
{
    bring_up();
    clone_scene(state, our_named_tree(TreeNodes), TreeNodes);
}

void clone_boxes(benchmark::State &state)
{
    bring_up();
    clone_scene(state, our_boxes(Boxes), Boxes);
}

void write_boxes(benchmark::State &state)
{
    bring_up();
    NodePtr const root = our_boxes(Boxes);
    for([[maybe_unused]] auto _ : state)
    {
        std::ostringstream out;
        if(!SceneFileHandlerBase::the()->write(root, out, "osb"))
            state.SkipWithError("the scene is written");
    }
    count_items(state, Boxes);
}

void read_boxes(benchmark::State &state)
{
    bring_up();
    std::ostringstream out;
    SceneFileHandlerBase::the()->write(our_boxes(Boxes), out, "osb");
    std::string const bytes = out.str();
    for([[maybe_unused]] auto _ : state)
    {
        std::istringstream in(bytes);
        NodePtr root(SceneFileHandlerBase::the()->read(in, "osb"));
        commit();
        state.PauseTiming();
        if(root == nullptr || root->getNChildren() != Boxes)
            state.SkipWithError("the scene is read");
        root = nullptr;
        commit();
        state.ResumeTiming();
    }
    count_items(state, Boxes);
}

void measure_file(benchmark::State &state)
{
    bring_up();
    std::ostringstream out;
    SceneFileHandlerBase::the()->write(our_boxes(Boxes), out, "osb");
    for([[maybe_unused]] auto _ : state)
        benchmark::DoNotOptimize(state.iterations());
    state.counters["bytes"] = static_cast<double>(out.str().size()) / static_cast<double>(Boxes);
}

template <class T>
void measure_object(benchmark::State &state)
{
    for([[maybe_unused]] auto _ : state)
        benchmark::DoNotOptimize(state.iterations());
    state.counters["bytes"] = sizeof(T);
}

BENCHMARK(make_named)->Name("make a named node/ours")->Unit(benchmark::kMillisecond);
BENCHMARK(drop_named)->Name("drop a named node/ours")->Unit(benchmark::kMillisecond);
BENCHMARK(update_volumes)->Name("update the volume of a node/ours")->Unit(benchmark::kMillisecond);
BENCHMARK(traverse_tree)->Name("traverse a node/ours")->Unit(benchmark::kMillisecond);
BENCHMARK(act_on_tree)->Name("act on a node/ours")->Unit(benchmark::kMillisecond);
BENCHMARK(clone_named)->Name("clone a named node/ours")->Unit(benchmark::kMillisecond);
BENCHMARK(clone_boxes)->Name("clone a box/ours")->Unit(benchmark::kMillisecond);
BENCHMARK(write_boxes)->Name("write a box in binary/ours")->Unit(benchmark::kMillisecond);
BENCHMARK(read_boxes)->Name("read a box in binary/ours")->Unit(benchmark::kMillisecond);
BENCHMARK(measure_file)->Name("a box in a binary file/ours")->Iterations(1);
BENCHMARK(measure_object<Node>)->Name("sizeof a node/ours")->Iterations(1);
BENCHMARK(measure_object<Group>)->Name("sizeof a group/ours")->Iterations(1);
} // namespace
} // namespace OSG::Bench
