#include "WayPlot.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "FileContent.h"
#include "OSGNamedEngine.h"
#include "OSGSceneView.h"
#include "SceneBuilders.h"
#include "TempFolder.h"

using namespace OSG;
using namespace OSG::Test;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;
using Viewer::sketch_way;

namespace
{
std::vector<PathPoint> through(std::vector<Pnt3f> const &places)
{
    std::vector<PathPoint> way;
    for(Pnt3f const &place : places)
        way.push_back({place, place + Vec3f(0, 0, -1)});
    return way;
}

TEST(SketchWay, TheLongerSideFillsTheSquareAndTheShorterOneIsInTheMiddle)
{
    EXPECT_THAT(sketch_way(through({{2, 7, 10}, {6, 7, 12}}), false),
                ElementsAre(Pnt2f(0, 0.25f), Pnt2f(1, 0.75f)));
}

TEST(SketchWay, WithZUpwardsYPointsUpOnThePlan)
{
    EXPECT_THAT(sketch_way(through({{0, 0, 5}, {0, 2, 9}}), true),
                ElementsAre(Pnt2f(0.5f, 1), Pnt2f(0.5f, 0)));
}

TEST(SketchWay, AWayThatStaysLiesInTheMiddleAndNoWayHasNoPlaces)
{
    EXPECT_THAT(sketch_way(through({{3, 1, 3}}), false), ElementsAre(Pnt2f(0.5f, 0.5f)));
    EXPECT_THAT(sketch_way({}, false), IsEmpty());
}

TEST(SketchWay, PlacesThatAreNotFiniteAreLeftOut)
{
    float const infinite = std::numeric_limits<float>::infinity();
    float const most = std::numeric_limits<float>::max();
    EXPECT_THAT(sketch_way(through({{infinite, 0, 0}, {1, 0, 1}}), false),
                ElementsAre(Pnt2f(0.5f, 0.5f)));
    EXPECT_THAT(sketch_way(through({{-most, 0, 0}, {most, 0, 0}}), false),
                ElementsAre(Pnt2f(0, 0.5f), Pnt2f(1, 0.5f)));
}

TEST(LengthOfWay, IsTheNumberOfItsPoints)
{
    SceneView view;
    UnrecordedRefPtr<NavigatorEngine> const engine{make_engine("fly")};
    view.setEngine(engine);
    WalkConsole console(view.getNavigator());
    EXPECT_EQ(Viewer::length_of_way(console), 0u);
    NodePtr const scene = make_group();
    view.setScene(scene);
    console.setScene(scene);
    EXPECT_EQ(Viewer::length_of_way(console), 0u);
    ASSERT_TRUE(console.startRecording());
    EXPECT_EQ(Viewer::length_of_way(console), 1u);
    EXPECT_EQ(Viewer::length_of_way(console), console.getWay().size());
    ASSERT_TRUE(console.clearRecording());
    EXPECT_EQ(Viewer::length_of_way(console), 0u);
    console.setScene(nullptr);
}

TEST(SaveWayPlot, WritesAPictureAndTellsWhereItCannot)
{
    TempFolder folder;
    auto const way = through({{0, 0, 0}, {1, 0, 1}});
    EXPECT_EQ(Viewer::save_way_plot(folder.path("way.svg"), nullptr, way, Vec3f(0, 1, 0)), "");
    EXPECT_THAT(content_of(folder.path("way.svg")), StartsWith("<"));
    EXPECT_NE(Viewer::save_way_plot(folder.path("no/way.svg"), nullptr, way, Vec3f(0, 1, 0)), "");
}
} // namespace
