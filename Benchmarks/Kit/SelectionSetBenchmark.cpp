// A selection set of 100,000 paths in a scene of as many leaves, four levels deep. Times are for
// one path, but those of a prune, which are for a whole one.

#include <memory>

#include <benchmark/benchmark.h>

#include "OSGChangeList.h"
#include "OSGGroup.h"
#include "OSGSelectionSet.h"
#include "OSGThread.h"
#include "SceneGraph.h"

namespace OSG::Bench
{
namespace
{
using NodePtr = UnrecordedRefPtr<Node>;
constexpr std::size_t NumPaths = 100000;
constexpr int Width = 47; // 47 * 47 * 47 leaves are enough

NodePtr make_group()
{
    bring_up();
    UnrecordedRefPtr<Group> const core(Group::create());
    NodePtr node(Node::create());
    node->setCore(core);
    return node;
}

/// The scene, its leaves, and items for them.
struct Leaves
{
    Leaves()
        : root(make_group())
    {
        items.reserve(NumPaths);
        addLevel(root, 3);
        Thread::getCurrentChangeList()->commitChanges();
    }
    void addLevel(Node *above, int levels)
    {
        for(int i = 0; i < Width && items.size() < NumPaths; ++i)
        {
            NodePtr const node = make_group();
            above->addChild(node);
            if(levels > 1)
                addLevel(node, levels - 1);
            else
                items.push_back({NodePath(node)});
        }
    }

    NodePtr root;
    SelectionSet::Items items;
};

/// Hears of changes and does nothing.
struct Listener : SelectionSet::Observer
{
    void selectionChanged(SelectionSet const &, SelectionSet::Change const &change) override
    {
        benchmark::DoNotOptimize(change.came.size());
    }
};

/// A set with an observer, which makes the set say what has changed.
struct ObservedSet
{
    ObservedSet() { set.addObserver(&listener); }
    ~ObservedSet() { set.removeObserver(&listener); }
    Listener listener;
    SelectionSet set;
};

void count_paths(benchmark::State &state)
{
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations() * NumPaths));
}

void add_at_once(benchmark::State &state)
{
    Leaves const leaves;
    for([[maybe_unused]] auto _ : state)
    {
        state.PauseTiming();
        auto observed = std::make_unique<ObservedSet>();
        state.ResumeTiming();
        observed->set.add(leaves.items);
        state.PauseTiming();
        observed.reset();
        state.ResumeTiming();
    }
    count_paths(state);
}

void add_one_by_one(benchmark::State &state)
{
    Leaves const leaves;
    for([[maybe_unused]] auto _ : state)
    {
        state.PauseTiming();
        auto observed = std::make_unique<ObservedSet>();
        state.ResumeTiming();
        for(SelectionSet::Item const &item : leaves.items)
            observed->set.add({item});
        state.PauseTiming();
        observed.reset();
        state.ResumeTiming();
    }
    count_paths(state);
}

void toggle_at_once(benchmark::State &state)
{
    Leaves const leaves;
    ObservedSet observed;
    // Half of the paths go when the other half comes.
    observed.set.add({leaves.items.begin(), leaves.items.begin() + NumPaths / 2});
    for([[maybe_unused]] auto _ : state)
        observed.set.toggle(leaves.items);
    count_paths(state);
}

void look_up(benchmark::State &state)
{
    Leaves const leaves;
    ObservedSet observed;
    observed.set.add(leaves.items);
    for([[maybe_unused]] auto _ : state)
    {
        std::size_t found = 0;
        for(SelectionSet::Item const &item : leaves.items)
            found += observed.set.contains(item.path) ? 1 : 0;
        if(found != NumPaths)
            state.SkipWithError("a path is missing");
    }
    count_paths(state);
}

void clear(benchmark::State &state)
{
    Leaves const leaves;
    ObservedSet observed;
    for([[maybe_unused]] auto _ : state)
    {
        state.PauseTiming();
        observed.set.add(leaves.items);
        state.ResumeTiming();
        observed.set.clear();
    }
    count_paths(state);
}

void prune_after_nothing(benchmark::State &state)
{
    Leaves const leaves;
    ObservedSet observed;
    observed.set.add(leaves.items);
    observed.set.prune(leaves.root);
    for([[maybe_unused]] auto _ : state)
        benchmark::DoNotOptimize(observed.set.prune(leaves.root));
}

void prune_after_an_edit(benchmark::State &state)
{
    Leaves const leaves;
    ObservedSet observed;
    observed.set.add(leaves.items);
    for([[maybe_unused]] auto _ : state)
    {
        state.PauseTiming();
        leaves.root->addChild(make_group());
        Thread::getCurrentChangeList()->commitChanges();
        state.ResumeTiming();
        if(observed.set.prune(leaves.root))
            state.SkipWithError("a path has gone");
    }
}

BENCHMARK(add_at_once)->Name("selection set, add at once, a path/ours");
BENCHMARK(add_one_by_one)->Name("selection set, add one by one, a path/ours");
BENCHMARK(toggle_at_once)->Name("selection set, toggle at once, a path/ours");
BENCHMARK(look_up)->Name("selection set, look up, a path/ours");
BENCHMARK(clear)->Name("selection set, clear, a path/ours");
BENCHMARK(prune_after_nothing)->Name("selection set, prune without an edit/ours");
BENCHMARK(prune_after_an_edit)->Name("selection set, prune after an edit/ours");
} // namespace
} // namespace OSG::Bench
