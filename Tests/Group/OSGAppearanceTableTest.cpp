#include "OSGAppearanceTable.h"

#include <gtest/gtest.h>

#include "CollectedScene.h"
#include "LogCapture.h"
#include "OSGBillboard.h"
#include "OSGMaterialGroup.h"

namespace OSG::Test
{
namespace
{
using MaterialPtr = UnrecordedRefPtr<Material>;

struct AppearanceTableTest : testing::Test
{
    RenderActionPtr action{RenderAction::create()};
    AppearanceTable &table = action->editAppearances();
    MaterialPtr red{make_colored(0.25f)};
    MaterialPtr glass{make_colored(0.5f, 0.5f)};

    // Of the opaque shapes, then of the transparent ones; 0.8 is that of no material.
    std::vector<Real32> colors(Node *root)
    {
        DrawList const &list = collect(*action, root);
        std::vector<Real32> result;
        for(auto const *items : {&list.opaque, &list.transparent})
        {
            for(DrawItem const &item : *items)
                result.push_back(list.states[item.state]->surface.diffuse[0]);
        }
        return result;
    }
};
using Colors = std::vector<Real32>;

TEST_F(AppearanceTableTest, TheInnermostMaterialIsShown)
{
    NodePtr const inner = make_group({make_shape()});
    NodePtr const root = make_group({inner, make_shape()});
    table.set(NodePath(root), red);
    EXPECT_EQ(colors(root), Colors({0.25f, 0.25f}));
    table.set(NodePath(inner), glass);
    EXPECT_EQ(colors(root), Colors({0.25f, 0.5f}));
    EXPECT_EQ(action->getDrawList().transparent.size(), 1u);
    table.set(NodePath(inner), nullptr);
    table.erase(NodePath(root));
    EXPECT_TRUE(table.isEmpty());
    EXPECT_EQ(colors(root), Colors({0.8f, 0.8f}));
}

TEST_F(AppearanceTableTest, ItComesBeforeGroupsOfMaterials)
{
    UnrecordedRefPtr<MaterialGroup> const group(MaterialGroup::create());
    group->setMaterial(make_colored(0.75f));
    NodePtr const child = make_shape();
    NodePtr const root = make_node(group, {child, make_shape()});
    table.set(NodePath(child), red);
    EXPECT_EQ(colors(root), Colors({0.75f, 0.25f}));
    table.set(NodePath(root), glass);
    EXPECT_EQ(colors(root), Colors({0.25f, 0.5f}));
}

TEST_F(AppearanceTableTest, ATreeThatIsShownTwiceIsTwoPlaces)
{
    NodePtr const shape = make_shape();
    NodePtr const visit = make_visit(shape);
    NodePtr const root = make_group({shape, visit});
    table.set(NodePath(shape, {visit}), red);
    EXPECT_EQ(colors(root), Colors({0.8f, 0.25f}));
    table.hide(NodePath(shape));
    EXPECT_EQ(colors(root), Colors({0.25f}));
    table.hide(NodePath(visit));
    EXPECT_EQ(colors(root), Colors());
}

TEST_F(AppearanceTableTest, ATreeBelowItsVisitingNodeIsSeenThroughIt)
{
    NodePtr const shape = make_shape();
    NodePtr const visit = make_visit(shape);
    visit->addChild(shape);
    NodePtr const root = make_group({visit});
    table.set(NodePath(shape, {visit}), red);
    EXPECT_EQ(colors(root), Colors({0.25f}));
}

TEST_F(AppearanceTableTest, NodesThatAreWalkedForTheViewHaveTheirPlaces)
{
    NodePtr const shape = make_shape();
    NodePtr const other = make_group({shape});
    NodePtr const one = make_visit(other);
    NodePtr const two = make_visit(other);
    UnrecordedRefPtr<Billboard> const billboard(Billboard::create());
    NodePtr const root = make_node(billboard, {one, two, make_shape()});
    table.set(NodePath(shape, {two}), red);
    EXPECT_EQ(colors(root), Colors({0.8f, 0.8f, 0.25f}));
    table.hide(NodePath(other, {one}));
    EXPECT_EQ(colors(root), Colors({0.25f, 0.8f}));
    table.isolate({NodePath(two)});
    EXPECT_EQ(colors(root), Colors({0.25f}));
    table.hide(NodePath(root));
    EXPECT_EQ(colors(root), Colors());
}

TEST_F(AppearanceTableTest, NothingButTheIsolatedIsDrawnUnlessItIsHidden)
{
    NodePtr const first = make_shape(red);
    NodePtr const second = make_shape(glass);
    NodePtr const group = make_group({first, second});
    NodePtr const root = make_group({group, make_shape()});
    table.isolate({NodePath(group)});
    EXPECT_EQ(colors(root), Colors({0.25f, 0.5f}));
    table.hide(NodePath(first));
    EXPECT_EQ(colors(root), Colors({0.5f}));
    table.erase(NodePath(group)); // which leaves the isolation
    EXPECT_EQ(colors(root), Colors({0.5f}));
    table.isolate({});
    EXPECT_EQ(colors(root), Colors());
    table.endIsolation();
    table.show(NodePath(first));
    EXPECT_TRUE(table.isEmpty());
    EXPECT_EQ(colors(root).size(), 3u);
}

TEST_F(AppearanceTableTest, ARowHasNoEffectWhileItsPathIsNotInTheScene)
{
    NodePtr const shape = make_shape();
    NodePtr const root = make_group({shape, make_shape()});
    table.set(NodePath(shape), red);
    table.hide(NodePath(make_shape()));
    EXPECT_EQ(colors(root), Colors({0.8f, 0.25f}));
    root->subChild(shape);
    EXPECT_EQ(colors(root), Colors({0.8f}));
    root->addChild(shape);
    EXPECT_EQ(colors(root), Colors({0.8f, 0.25f}));
}

TEST_F(AppearanceTableTest, AMaterialOfTheTableThatIsEditedIsReadAgain)
{
    NodePtr const shape = make_shape();
    NodePtr const root = make_group({shape});
    UnrecordedRefPtr<SimpleMaterial> const material = make_colored(0.25f);
    table.set(NodePath(shape), material);
    EXPECT_EQ(colors(root), Colors({0.25f}));
    material->setDiffuse(Color3f(0.75f, 0, 0));
    EXPECT_EQ(colors(root), Colors({0.75f}));
    for(int i = 0; i < 50; ++i) // at the address of the one before, maybe
    {
        table.set(NodePath(shape), make_colored(static_cast<Real32>(i) / 64));
        EXPECT_EQ(colors(root), Colors({static_cast<Real32>(i) / 64}));
    }
}

TEST_F(AppearanceTableTest, ATableThatSaysTheSameHasTheSameNumber)
{
    NodePath const path(make_shape());
    table.hide(path);
    UInt64 const number = table.getNumber();
    table.hide(path);
    table.set(path, nullptr);
    EXPECT_EQ(table.getNumber(), number);
    table.set(path, red);
    EXPECT_NE(table.getNumber(), number);
    EXPECT_EQ(table.getMaterial(path), red);
    EXPECT_TRUE(table.isHidden(path));
}

TEST_F(AppearanceTableTest, APathOfNoNodeIsRefused)
{
    LogCapture log;
    table.hide(NodePath());
    EXPECT_TRUE(table.isEmpty());
    EXPECT_EQ(log.count("AppearanceTable: a path of no node has no appearance\n"), 1u);
}
} // namespace
} // namespace OSG::Test
