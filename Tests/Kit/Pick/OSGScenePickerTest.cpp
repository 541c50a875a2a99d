#include "OSGScenePicker.h"

#include <gtest/gtest.h>

#include "OSGPointerTool.h"
#include "OSGSceneView.h"
#include "OSGSelectionSet.h"
#include "OperationScenes.h"

namespace OSG::Test
{
namespace
{
/// Two triangles one behind the other, seen from the front in a window of 100 by 100 pixels.
struct ScenePickerTest : testing::Test
{
    SceneView view;
    ScenePicker picker{view};
    NodePtr front = make_triangle({0, 0, 1});
    NodePtr back = make_triangle({0, 0, -1});
    NodePtr scene = make_group({front, back});
    Pnt2f middle{50, 50};

    void SetUp() override
    {
        view.setSize(100, 100);
        view.setScene(scene);
        view.setView({{0.25f, 0.25f, 10}, {0.25f, 0.25f, 0}, {0, 1, 0}, 30, 100, 100});
    }
    std::vector<Node *> nodesAt(Pnt2f const &pixel)
    {
        auto const region = picker.regionAt(pixel);
        std::vector<Node *> nodes;
        if(region)
            for(PickResult const &result : picker.results(*region))
                nodes.push_back(result.getNode());
        return nodes;
    }
};

TEST_F(ScenePickerTest, FindsWhatLiesUnderAPixelTheForemostFirst)
{
    EXPECT_EQ(nodesAt(middle), (std::vector<Node *>{front, back}));
    EXPECT_EQ(picker.foremost(middle)->getNode(), front);
    EXPECT_TRUE(nodesAt({2, 2}).empty());
    EXPECT_FALSE(picker.foremost({2, 2}).has_value());
}

TEST_F(ScenePickerTest, PassesOverWhatTheViewHidesAndCutsAway)
{
    view.getRenderAction()->editAppearances().hide(NodePath(front));
    EXPECT_EQ(nodesAt(middle), std::vector<Node *>{back});
    view.getRenderAction()->editAppearances().clear();
    SectionPlanes sections;
    sections.add(Vec3f(0, 0, -1), 0); // keeps what is behind the origin
    view.setSections(sections);
    EXPECT_EQ(nodesAt(middle), std::vector<Node *>{back});
    view.setSections({});
    EXPECT_EQ(nodesAt(middle).size(), 2u);
}

TEST_F(ScenePickerTest, BandsAndLassosTakeWhatTheyTouchOrWhatLiesInside)
{
    auto const all = picker.regionOf(PixelArea{0, 0, 100, 100});
    auto const part = picker.regionOf(PixelArea{45, 45, 55, 55});
    auto const lasso = picker.regionOf({{40, 60}, {50, 40}, {60, 60}});
    ASSERT_TRUE(all && part && lasso);
    EXPECT_EQ(picker.results(*all, true).size(), 2u);
    EXPECT_EQ(picker.results(*part).size(), 2u);
    EXPECT_TRUE(picker.results(*part, true).empty());
    EXPECT_EQ(picker.results(*lasso).size(), 2u);
    EXPECT_FALSE(picker.regionOf(std::vector<Pnt2f>{{40, 60}}).has_value());
}

TEST_F(ScenePickerTest, LooksForTheKindsThatAreSet)
{
    picker.setKinds(SelectionFunctor::SelectLines);
    EXPECT_TRUE(nodesAt(middle).empty());
    EXPECT_EQ(picker.settings().kinds, UInt32(SelectionFunctor::SelectLines));
}

TEST_F(ScenePickerTest, AnswersOfTheSceneThatIsShownNow)
{
    EXPECT_EQ(nodesAt(middle).size(), 2u);
    NodePtr const other = make_triangle();
    view.setScene(other);
    EXPECT_EQ(nodesAt(middle), std::vector<Node *>{other});
    view.setScene(nullptr);
    EXPECT_EQ(picker.selector(), nullptr);
    EXPECT_TRUE(nodesAt(middle).empty());
}

TEST_F(ScenePickerTest, AnEditIsSeenByTheNextPick)
{
    EXPECT_EQ(nodesAt(middle).size(), 2u);
    scene->subChild(front);
    EXPECT_EQ(nodesAt(middle), std::vector<Node *>{back});
}

TEST_F(ScenePickerTest, ModifiersSayHowResultsChangeTheSelection)
{
    SelectionSet selection;
    auto const results = picker.results(*picker.regionAt(middle));
    select(selection, {results[0]}, 0);
    EXPECT_EQ(selection.getPaths(), std::vector<NodePath>{NodePath(front)});
    select(selection, {results[1]}, PointerTool::Shift);
    EXPECT_EQ(selection.size(), 2u);
    select(selection, {results[0]}, PointerTool::Control);
    EXPECT_EQ(selection.getPaths(), std::vector<NodePath>{NodePath(back)});
    select(selection, {}, PointerTool::Shift);
    EXPECT_EQ(selection.size(), 1u);
    select(selection, {}, 0);
    EXPECT_TRUE(selection.isEmpty());
}
} // namespace
} // namespace OSG::Test
