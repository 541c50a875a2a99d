#include "SceneRows.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "OSGChangeList.h"
#include "OSGGeometry.h"
#include "OSGName.h"
#include "OSGSimpleMaterial.h"
#include "OSGThread.h"
#include "SceneBuilders.h"

using namespace OSG;
using namespace OSG::Test;
using testing::ElementsAre;
using testing::IsEmpty;
using Viewer::SceneRows;

namespace
{
void commit() { Thread::getCurrentChangeList()->commitChanges(); }

NodePtr named(char const *name, NodePtr const &node)
{
    setName(node.get(), name);
    return node;
}

/// Each row by its depth and label, with a mark for what can be opened and what is open.
std::vector<std::string> shown(SceneRows const &rows)
{
    std::vector<std::string> texts;
    for(SceneRows::Row const &row : rows.getRows())
        texts.push_back(std::string(row.depth, ' ') + Viewer::label_of(*row.node) +
                        (row.isOpen     ? " -"
                         : row.hasBelow ? " +"
                                        : ""));
    return texts;
}

struct SceneRowsTest : testing::Test
{
    NodePtr bolt = named("bolt", make_group());
    NodePtr nut = named("nut", make_group());
    NodePtr pair = named("pair", make_group({bolt, nut}));
    NodePtr plate = named("plate", make_group());
    NodePtr root = named("root", make_group({pair, plate}));
    SceneRows rows;
};

TEST_F(SceneRowsTest, TheRootOfASceneIsOpenAtFirst)
{
    rows.update(root);
    EXPECT_THAT(shown(rows), ElementsAre("root -", " pair +", " plate"));
}

TEST_F(SceneRowsTest, ARowIsOpenedAndClosed)
{
    rows.update(root);
    rows.toggle(1);
    EXPECT_THAT(shown(rows), ElementsAre("root -", " pair -", "  bolt", "  nut", " plate"));
    rows.toggle(1);
    EXPECT_THAT(shown(rows), ElementsAre("root -", " pair +", " plate"));
}

TEST_F(SceneRowsTest, ARowThatIsNotThereIsNotOpened)
{
    rows.update(root);
    rows.toggle(7);
    rows.toggle(2);
    EXPECT_THAT(shown(rows), ElementsAre("root -", " pair +", " plate"));
}

TEST_F(SceneRowsTest, NoSceneHasNoRows)
{
    rows.update(root);
    rows.update(nullptr);
    EXPECT_THAT(shown(rows), IsEmpty());
    EXPECT_EQ(rows.reveal(NodePath(bolt)), 0u);
}

TEST_F(SceneRowsTest, AnotherSceneIsClosedAgain)
{
    rows.update(root);
    rows.toggle(1);
    rows.update(pair);
    EXPECT_THAT(shown(rows), ElementsAre("pair -", " bolt", " nut"));
    rows.update(root);
    EXPECT_THAT(shown(rows), ElementsAre("root -", " pair +", " plate"));
}

TEST_F(SceneRowsTest, ACommittedEditIsShownAndWhatWasOpenStaysOpen)
{
    rows.update(root);
    rows.toggle(1);
    pair->subChild(nut);
    plate->addChild(nut);
    commit();
    rows.update(root);
    EXPECT_THAT(shown(rows), ElementsAre("root -", " pair -", "  bolt", " plate +"));
}

TEST_F(SceneRowsTest, ARowOutlivesItsNodesPlaceInTheScene)
{
    rows.update(root);
    root->subChild(plate);
    plate = nullptr;
    EXPECT_THAT(shown(rows), ElementsAre("root -", " pair +", " plate"));
    commit();
    rows.update(root);
    EXPECT_THAT(shown(rows), ElementsAre("root -", " pair +"));
}

TEST_F(SceneRowsTest, RevealOpensWhatIsAroundAPlaceAndTellsItsRow)
{
    rows.update(root);
    EXPECT_EQ(rows.reveal(NodePath(nut)), 3u);
    EXPECT_THAT(shown(rows), ElementsAre("root -", " pair -", "  bolt", "  nut", " plate"));
}

TEST_F(SceneRowsTest, APlaceOfAnotherSceneIsNotRevealed)
{
    rows.update(pair);
    EXPECT_EQ(rows.reveal(NodePath(plate)), rows.getRows().size());
    EXPECT_EQ(rows.getRows().size(), 3u);
}

TEST_F(SceneRowsTest, ATreeThatIsShownTwiceHasRowsBelowEachThatShowsIt)
{
    NodePtr const left = named("left", make_visit(pair));
    NodePtr const right = named("right", make_visit(pair));
    NodePtr const both = named("both", make_group({left, right}));
    rows.update(both);
    NodePath const place(nut, {right});
    EXPECT_EQ(rows.reveal(place), 5u);
    EXPECT_THAT(shown(rows),
                ElementsAre("both -", " left +", " right -", "  pair -", "   bolt", "   nut"));
    EXPECT_EQ(rows.pathOf(rows.getRows()[5]), place);
    EXPECT_EQ(rows.pathOf(rows.getRows()[1]), NodePath(left));
}

TEST_F(SceneRowsTest, ATreeThatShowsItselfIsOpenedLevelByLevel)
{
    UnrecordedRefPtr<VisitSubTree> const core(VisitSubTree::create());
    NodePtr const again = named("again", make_node(core));
    NodePtr const circle = named("circle", make_group({again}));
    core->setSubTreeRoot(circle);
    rows.update(circle);
    rows.toggle(1);
    rows.toggle(2);
    EXPECT_THAT(shown(rows), ElementsAre("circle -", " again -", "  circle -", "   again +"));
    EXPECT_EQ(rows.pathOf(rows.getRows()[3]), NodePath(again, {again}));
    core->setSubTreeRoot(nullptr);
}

TEST_F(SceneRowsTest, ADeepSceneIsListedWithoutRecursion)
{
    NodePtr deepest = named("deepest", make_group());
    NodePtr node = deepest;
    for(int level = 0; level < 100000; ++level)
        node = make_group({node});
    rows.update(node);
    EXPECT_EQ(rows.getRows().size(), 2u);
    EXPECT_EQ(rows.reveal(NodePath(deepest)), 100000u);
    EXPECT_EQ(rows.getRows().back().depth, 100000u);
}

TEST(SceneRowsLabel, IsTheNameOfTheNodeOrOfItsCoreOrTheTypeOfTheCore)
{
    NodePtr const node = make_group();
    EXPECT_EQ(Viewer::label_of(*node), "Group");
    setName(node->getCore(), "core");
    EXPECT_EQ(Viewer::label_of(*node), "core");
    setName(node.get(), "node");
    EXPECT_EQ(Viewer::label_of(*node), "node");
    EXPECT_EQ(Viewer::label_of(*NodePtr(Node::create())), "no core");
}

TEST(SceneRowsLabel, OfANodeWithoutANameHasItsNumberAmongTheChildren)
{
    NodePtr const first = make_group();
    NodePtr const second = make_group();
    NodePtr const root = make_group({first, second});
    EXPECT_EQ(Viewer::label_of(*second, Viewer::number_of(*second)), "Group 1");
    EXPECT_EQ(Viewer::label_of(*root, Viewer::number_of(*root)), "Group");
    setName(second.get(), "second");
    EXPECT_EQ(Viewer::label_of(*second, Viewer::number_of(*second)), "second");
}

TEST(SceneRowsLabel, OfAGeometryWithoutANameHasTheNameOfItsMaterial)
{
    UnrecordedRefPtr<Geometry> const geometry(Geometry::create());
    NodePtr const node = make_node(geometry);
    EXPECT_EQ(Viewer::label_of(*node, 19), "Geometry 19");
    UnrecordedRefPtr<SimpleMaterial> const material(SimpleMaterial::create());
    geometry->setMaterial(material);
    EXPECT_EQ(Viewer::label_of(*node, 19), "Geometry 19");
    setName(material.get(), "steel");
    EXPECT_EQ(Viewer::label_of(*node, 19), "Geometry 19 (steel)");
}

TEST_F(SceneRowsTest, RowsKnowTheirNumberAmongTheChildren)
{
    NodePtr const visit = make_visit(pair);
    root->addChild(visit);
    rows.update(root);
    rows.reveal(NodePath(nut, {visit}));
    std::vector<std::optional<UInt32>> numbers;
    for(SceneRows::Row const &row : rows.getRows())
        numbers.push_back(row.number);
    EXPECT_THAT(numbers, ElementsAre(std::nullopt, 0u, 1u, 2u, std::nullopt, 0u, 1u));
}
} // namespace
