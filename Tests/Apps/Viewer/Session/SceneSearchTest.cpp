#include "SceneSearch.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "OSGChangeList.h"
#include "OSGName.h"
#include "OSGThread.h"
#include "SceneBuilders.h"

using namespace OSG;
using namespace OSG::Test;
using testing::ElementsAre;
using testing::IsEmpty;
using Viewer::SceneSearch;
using Viewer::search_scene;

namespace
{
NodePtr named(char const *name, NodePtr const &node)
{
    setName(node.get(), name);
    return node;
}

std::vector<std::string> addresses(SceneSearch const &search)
{
    std::vector<std::string> texts;
    for(SceneSearch::Found const &found : search.found)
        texts.push_back(found.address);
    return texts;
}

struct SceneSearchTest : testing::Test
{
    NodePtr bolt = named("Bolt M8", make_group());
    NodePtr nut = named("nut M8", make_group());
    NodePtr set = make_transform(Matrix(), {bolt, nut});
    NodePtr plate = named("plate", make_group());
    NodePtr root = make_group({plate, set});
};

TEST_F(SceneSearchTest, FindsNamesWhateverTheCaseOfTheirLetters)
{
    EXPECT_THAT(addresses(search_scene(root, "m8")), ElementsAre("/1/0", "/1/1"));
    EXPECT_THAT(addresses(search_scene(root, "BOLT")), ElementsAre("/1/0"));
}

TEST_F(SceneSearchTest, FindsTypesAndNamesOfCores)
{
    EXPECT_THAT(addresses(search_scene(root, "transform")), ElementsAre("/1"));
    setName(set->getCore(), "assembly");
    EXPECT_THAT(addresses(search_scene(root, "assembly")), ElementsAre("/1"));
    EXPECT_THAT(addresses(search_scene(root, "group")), ElementsAre("/", "/0", "/1/0", "/1/1"));
}

TEST_F(SceneSearchTest, FindsNothingForNoTextAndInNoScene)
{
    EXPECT_THAT(addresses(search_scene(root, "")), IsEmpty());
    EXPECT_THAT(addresses(search_scene(root, "wheel")), IsEmpty());
    EXPECT_THAT(addresses(search_scene(nullptr, "bolt")), IsEmpty());
}

TEST_F(SceneSearchTest, FindsEachPlaceOfATreeThatIsShownTwice)
{
    NodePtr const other = make_visit(root);
    NodePtr const both = make_group({make_visit(root), make_group({other})});
    SceneSearch const search = search_scene(both, "nut");
    EXPECT_THAT(addresses(search), ElementsAre("/0@/1/1", "/1/0@/1/1"));
    EXPECT_EQ(search.found[1].path, NodePath(nut, {other}));
    EXPECT_FALSE(search.isCut);
}

TEST_F(SceneSearchTest, AddressesAreThoseOfThePaths)
{
    NodePtr const inner = make_visit(root);
    NodePtr const outer = make_visit(inner);
    for(SceneSearch::Found const &found : search_scene(outer, "p").found)
        EXPECT_EQ(found.address, found.path.text(outer));
    EXPECT_EQ(search_scene(outer, "p").found.size(), 4u);
}

TEST_F(SceneSearchTest, TellsWhereThereIsMoreThanItGives)
{
    Children many;
    for(std::size_t i = 0; i <= SceneSearch::MostFound; ++i)
        many.push_back(named("screw", make_group()));
    NodePtr const box = make_group(many);
    SceneSearch const search = search_scene(box, "screw");
    EXPECT_EQ(search.found.size(), SceneSearch::MostFound);
    EXPECT_TRUE(search.isCut);
    box->subChild(0u);
    EXPECT_FALSE(search_scene(box, "screw").isCut);
}

TEST_F(SceneSearchTest, ATreeThatShowsItselfIsSearchedToAnEnd)
{
    UnrecordedRefPtr<VisitSubTree> const core(VisitSubTree::create());
    NodePtr const circle = named("circle", make_group({make_node(core)}));
    core->setSubTreeRoot(circle);
    SceneSearch const search = search_scene(circle, "circle");
    EXPECT_THAT(addresses(search), ElementsAre("/"));
    core->setSubTreeRoot(nullptr);
}

TEST_F(SceneSearchTest, AFollowedSearchSearchesForAnotherTextAndInAnotherScene)
{
    Viewer::FollowedSearch search;
    search.update(root, "m8");
    EXPECT_THAT(addresses(search.getAnswer()), ElementsAre("/1/0", "/1/1"));
    search.update(root, "nut");
    EXPECT_THAT(addresses(search.getAnswer()), ElementsAre("/1/1"));
    search.update(set, "nut");
    EXPECT_THAT(addresses(search.getAnswer()), ElementsAre("/1"));
    search.update(set, "");
    EXPECT_THAT(addresses(search.getAnswer()), IsEmpty());
    search.update(nullptr, "nut");
    EXPECT_THAT(addresses(search.getAnswer()), IsEmpty());
}

TEST_F(SceneSearchTest, AFollowedSearchIsMadeAgainAfterACommittedEdit)
{
    Viewer::FollowedSearch search;
    search.update(root, "nut");
    EXPECT_THAT(addresses(search.getAnswer()), ElementsAre("/1/1"));
    root->subChild(plate);
    Thread::getCurrentChangeList()->commitChanges();
    search.update(root, "nut");
    EXPECT_THAT(addresses(search.getAnswer()), ElementsAre("/0/1"));
    bolt->addChild(named("nut of the bolt", make_group()));
    Thread::getCurrentChangeList()->commitChanges();
    search.update(root, "nut");
    EXPECT_THAT(addresses(search.getAnswer()), ElementsAre("/0/0/0", "/0/1"));
}

TEST_F(SceneSearchTest, AFollowedSearchIsMadeAgainWhenANodeGetsAnotherName)
{
    Viewer::FollowedSearch search;
    search.update(root, "wheel");
    setName(plate.get(), "wheel");
    Thread::getCurrentChangeList()->commitChanges();
    search.update(root, "wheel");
    EXPECT_THAT(addresses(search.getAnswer()), ElementsAre("/0"));
}

TEST_F(SceneSearchTest, AFollowedSearchIsNotMadeAgainForNodesOfOtherScenes)
{
    Thread::getCurrentChangeList()->commitChanges();
    Viewer::FollowedSearch search;
    search.update(root, "nut");
    SceneSearch::Found const *const found = search.getAnswer().found.data();
    NodePtr const camera = make_transform(Matrix());
    Thread::getCurrentChangeList()->commitChanges();
    search.update(root, "nut");
    EXPECT_EQ(search.getAnswer().found.data(), found);
}
} // namespace
