#include "OSGSelectionSet.h"

#include <algorithm>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "OSGChangeList.h"
#include "OSGThread.h"
#include "RandomNumbers.h"
#include "SceneBuilders.h"

using namespace OSG;
using namespace OSG::Test;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{
using Items = SelectionSet::Items;
using Paths = std::vector<NodePath>;

void commit() { Thread::getCurrentChangeList()->commitChanges(); }

/// Keeps what it was told, and calls back.
struct Listener : SelectionSet::Observer
{
    void selectionChanged(SelectionSet const &, SelectionSet::Change const &change) override
    {
        changes.push_back(change);
        if(react)
            react();
    }
    std::vector<SelectionSet::Change> changes;
    boost::function<void()> react;
};

struct SelectionSetTest : testing::Test
{
    SelectionSetTest()
    {
        for(int i = 0; i < 6; ++i)
            nodes.push_back(make_group());
        root = make_group({nodes.begin(), nodes.end()});
        commit();
        set.addObserver(&listener);
    }
    ~SelectionSetTest() override { set.removeObserver(&listener); }

    NodePath path(std::size_t i) const { return NodePath(nodes[i]); }
    SelectionSet::Item item(std::size_t i) const { return {path(i)}; }

    std::vector<NodePtr> nodes;
    NodePtr root;
    SelectionSet set;
    Listener listener;
};

TEST_F(SelectionSetTest, AddsEachPathOnceInOrder)
{
    EXPECT_TRUE(set.add({item(2), item(0), item(2)}));
    EXPECT_FALSE(set.add({item(0)}));
    EXPECT_TRUE(set.add({item(0), item(1)}));
    EXPECT_THAT(set.getPaths(), ElementsAre(path(2), path(0), path(1)));
    EXPECT_TRUE(set.contains(path(1)));
    EXPECT_FALSE(set.contains(path(3)));
    ASSERT_EQ(listener.changes.size(), 2u);
    EXPECT_THAT(listener.changes[0].came, ElementsAre(path(2), path(0)));
    EXPECT_THAT(listener.changes[1].came, ElementsAre(path(1)));
    EXPECT_THAT(listener.changes[1].went, IsEmpty());
}

TEST_F(SelectionSetTest, ReplacesAndTellsTheDifference)
{
    set.add({item(0), item(1), item(2)});
    EXPECT_TRUE(set.replace({item(3), item(1), item(3)}));
    EXPECT_THAT(set.getPaths(), ElementsAre(path(1), path(3)));
    EXPECT_THAT(listener.changes.back().came, ElementsAre(path(3)));
    EXPECT_THAT(listener.changes.back().went, ElementsAre(path(0), path(2)));
    EXPECT_FALSE(set.replace({item(3), item(1)}));
    EXPECT_EQ(listener.changes.size(), 2u);
}

TEST_F(SelectionSetTest, TogglesEachPathOnce)
{
    set.add({item(0), item(1)});
    EXPECT_TRUE(set.toggle({item(1), item(2), item(1), item(2)}));
    EXPECT_THAT(set.getPaths(), ElementsAre(path(0), path(2)));
    EXPECT_THAT(listener.changes.back().came, ElementsAre(path(2)));
    EXPECT_THAT(listener.changes.back().went, ElementsAre(path(1)));
}

TEST_F(SelectionSetTest, RemovesAndClears)
{
    set.add({item(0), item(1), item(2)});
    EXPECT_TRUE(set.remove({path(1), path(4), path(1)}));
    EXPECT_FALSE(set.remove({path(1)}));
    EXPECT_TRUE(set.clear());
    EXPECT_FALSE(set.clear());
    EXPECT_TRUE(set.isEmpty());
    EXPECT_THAT(listener.changes.back().went, ElementsAre(path(0), path(2)));
}

TEST_F(SelectionSetTest, OnePlaceOfANodeIsNotAnother)
{
    NodePtr const first = make_visit(nodes[0]);
    NodePtr const second = make_visit(nodes[0]);
    set.add({{NodePath(nodes[0], {first})}});
    EXPECT_FALSE(set.contains(NodePath(nodes[0], {second})));
    EXPECT_FALSE(set.contains(path(0)));
    EXPECT_TRUE(set.contains(NodePath(nodes[0], {first})));
}

TEST_F(SelectionSetTest, AFilterSaysWhatComesIn)
{
    set.add({item(0)});
    set.setFilter({SelectionFunctor::SelectLines | SelectionFunctor::SelectPoints,
                   [this](NodePath const &p) { return p != path(4); }});
    set.add({{path(1), SelectionFunctor::SelectTriangles},
             {path(2), SelectionFunctor::SelectLines},
             {path(3)},
             {path(4), SelectionFunctor::SelectLines}});
    EXPECT_THAT(set.getPaths(), ElementsAre(path(0), path(2), path(3)));
    // What is in goes out, whatever the filter says.
    set.toggle({{path(0), SelectionFunctor::SelectTriangles}});
    EXPECT_THAT(set.getPaths(), ElementsAre(path(2), path(3)));
    set.replace({{path(4)}});
    EXPECT_TRUE(set.isEmpty());
}

TEST_F(SelectionSetTest, APathOfNoNodeIsPassedOver)
{
    EXPECT_FALSE(set.add({{NodePath()}}));
    EXPECT_FALSE(set.toggle({{NodePath()}}));
    EXPECT_FALSE(set.replace({{NodePath()}}));
    EXPECT_FALSE(set.remove({NodePath()}));
    EXPECT_THAT(listener.changes, IsEmpty());
}

// --- observers ---

TEST_F(SelectionSetTest, AChangeMadeWhileBeingToldIsToldToAllAfterwards)
{
    Listener second;
    set.addObserver(&second);
    listener.react = [this]
    {
        listener.react.clear();
        set.add({item(1)});
        EXPECT_TRUE(set.contains(path(1))); // at once
    };
    set.add({item(0)});
    for(Listener const *each : {&listener, &second})
    {
        ASSERT_EQ(each->changes.size(), 2u);
        EXPECT_THAT(each->changes[0].came, ElementsAre(path(0)));
        EXPECT_THAT(each->changes[1].came, ElementsAre(path(1)));
    }
    set.removeObserver(&second);
}

TEST_F(SelectionSetTest, AnObserverMayTakeItselfAndOthersOut)
{
    Listener second, third;
    set.addObserver(&second);
    set.addObserver(&third);
    listener.react = [&]
    {
        set.removeObserver(&listener);
        set.removeObserver(&second);
    };
    set.add({item(0)});
    set.add({item(1)});
    EXPECT_EQ(listener.changes.size(), 1u);
    EXPECT_EQ(second.changes.size(), 0u);
    EXPECT_EQ(third.changes.size(), 2u);
    set.removeObserver(&third);
}

TEST_F(SelectionSetTest, AnObserverThatIsAddedMeanwhileHearsTheNextChange)
{
    Listener second;
    listener.react = [&] { set.addObserver(&second); };
    set.add({item(0)});
    EXPECT_THAT(second.changes, IsEmpty());
    set.add({item(1)});
    EXPECT_EQ(second.changes.size(), 1u); // and it is there once
    set.removeObserver(&second);
    set.addObserver(nullptr);
    set.removeObserver(nullptr);
    set.add({item(2)});
}

TEST_F(SelectionSetTest, AChangeThatAnObserverHasBrokenOffIsToldWithTheNextOne)
{
    Listener second;
    set.addObserver(&second);
    listener.react = [&]
    {
        listener.react.clear();
        set.add({item(1)});
        throw 7;
    };
    EXPECT_THROW(set.add({item(0)}), int);
    EXPECT_EQ(set.size(), 2u);
    set.add({item(2)});
    EXPECT_EQ(second.changes.size(), 2u);
    EXPECT_EQ(listener.changes.size(), 3u);
    set.removeObserver(&second);
}

// --- edits of the scene ---

TEST_F(SelectionSetTest, SurvivesEditsAsFarAsItsPathsExist)
{
    NodePtr const inner = make_group();
    nodes[3]->addChild(inner);
    NodePtr const visit = make_visit(nodes[3]);
    root->addChild(visit);
    commit();
    set.add({item(0), item(1), {NodePath(inner)}, {NodePath(inner, {visit})}});
    EXPECT_FALSE(set.prune(root));
    root->subChild(nodes[0]);
    commit();
    EXPECT_TRUE(set.prune(root));
    EXPECT_THAT(listener.changes.back().went, ElementsAre(path(0)));
    // Another place of the same node stays.
    root->subChild(visit);
    commit();
    EXPECT_TRUE(set.prune(root));
    EXPECT_THAT(set.getPaths(), ElementsAre(path(1), NodePath(inner)));
    // A node that moves within the scene keeps its path.
    nodes[4]->addChild(nodes[1]);
    commit();
    EXPECT_FALSE(set.prune(root));
    EXPECT_TRUE(set.prune(nodes[4]));
    EXPECT_THAT(set.getPaths(), ElementsAre(path(1)));
    EXPECT_TRUE(set.prune(nullptr));
    EXPECT_TRUE(set.isEmpty());
}

TEST_F(SelectionSetTest, APathThatWasNeverInTheSceneGoesWithTheNextPrune)
{
    set.prune(root);
    NodePtr const elsewhere = make_group();
    commit();
    set.prune(root);
    set.add({{NodePath(elsewhere)}});
    EXPECT_TRUE(set.prune(root));
    listener.react = [this, &elsewhere]
    {
        listener.react.clear();
        set.add({{NodePath(elsewhere)}});
    };
    set.add({item(0)});
    EXPECT_TRUE(set.prune(root));
    EXPECT_THAT(set.getPaths(), ElementsAre(path(0)));
}

TEST_F(SelectionSetTest, AgreesWithASlowList)
{
    RandomNumbers random(6);
    Paths slow;
    auto const has = [&](NodePath const &p)
    { return std::find(slow.begin(), slow.end(), p) != slow.end(); };
    std::vector<NodePtr> many;
    for(int i = 0; i < 40; ++i)
        many.push_back(make_group());
    Paths told; // what an observer has that follows the changes
    listener.changes.clear();
    for(int step = 0; step < 3000; ++step)
    {
        Items items;
        Paths paths;
        for(UInt32 i = random.below(12); i > 0; --i)
        {
            paths.push_back(NodePath(many[random.below(40)]));
            if(std::find(paths.begin(), paths.end() - 1, paths.back()) != paths.end() - 1)
                paths.pop_back();
            else
                items.push_back({paths.back()});
        }
        Paths const before = slow;
        auto const drop = [&](auto isOut)
        { slow.erase(std::remove_if(slow.begin(), slow.end(), isOut), slow.end()); };
        auto const isListed = [&](NodePath const &p)
        { return std::find(paths.begin(), paths.end(), p) != paths.end(); };
        bool changed = false;
        UInt32 const what = random.below(4);
        if(what == 0)
        {
            changed = set.replace(items);
            drop([&](NodePath const &p) { return !isListed(p); });
        }
        else if(what == 1)
        {
            changed = set.add(items);
        }
        else if(what == 2)
        {
            changed = set.toggle(items);
            drop(isListed);
        }
        else
        {
            changed = set.remove(paths);
            drop(isListed);
        }
        for(NodePath const &p : paths)
        {
            bool const wasThere = std::find(before.begin(), before.end(), p) != before.end();
            if(what < 2 ? !has(p) : what == 2 && !wasThere)
                slow.push_back(p);
        }
        ASSERT_EQ(set.getPaths(), slow) << step;
        ASSERT_EQ(changed, slow != before);
        ASSERT_EQ(listener.changes.size(), changed ? 1u : 0u);
        for(SelectionSet::Change const &change : listener.changes)
        {
            for(NodePath const &p : change.went)
                told.erase(std::find(told.begin(), told.end(), p));
            told.insert(told.end(), change.came.begin(), change.came.end());
        }
        listener.changes.clear();
        ASSERT_EQ(told, slow);
    }
}
} // namespace
