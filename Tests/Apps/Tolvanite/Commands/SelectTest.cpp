// Selections of the program in our model, compared with one another and with the library.

#include <cmath>
#include <fstream>
#include <iomanip>
#include <sstream>

#include <gtest/gtest.h>

#include "Keys.h"
#include "OSGNode.h"
#include "OSGPickVolume.h"
#include "OSGSceneFileHandler.h"
#include "OSGSelectionAction.h"
#include "OSGSimpleSelectionFunctor.h"
#include "Program.h"

namespace Tool::Test
{
namespace
{
using Words = std::vector<std::string>;

Words operator+(Words words, Words const &more)
{
    words.insert(words.end(), more.begin(), more.end());
    return words;
}

Words const View = {"--from", "7.5,3.2,9.5", "--at", "0,1,0",  "--up",
                    "0,1,0",  "--fov",       "45",   "--size", "1280x720"};
OSG::WindowView const SameView = {{7.5f, 3.2f, 9.5f}, {0, 1, 0}, {0, 1, 0}, 45, 1280, 720};

Json select(Words const &words)
{
    Outcome const outcome = run_program(Words{"select", pavilion(), "--json"} + words);
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_EQ(outcome.err, "");
    return Json::parse(outcome.out);
}

Json hits(Words const &words) { return select(words)["hits"]; }

/// Our model, read once.
OSG::Node *model()
{
    static OSG::UnrecordedRefPtr<OSG::Node> const scene(
        OSG::SceneFileHandlerBase::the()->read(pavilion().c_str()));
    scene->updateVolume();
    return scene;
}

std::string text_of(OSG::Pnt3f const &point)
{
    return Json(point[0]).dump() + ',' + Json(point[1]).dump() + ',' + Json(point[2]).dump();
}

Words corners_of(OSG::Frustum const &volume)
{
    Words words{"--corners"};
    for(OSG::Pnt3f const &corner : {volume.nlb(), volume.nrb(), volume.nrt(), volume.nlt(),
                                    volume.flb(), volume.frb(), volume.frt(), volume.flt()})
        words.push_back(text_of(corner));
    return words;
}

TEST(Select, HasTheseKeysInThisOrder)
{
    Json const result = select({"--box", "-1,0,-1", "1,1,1"});
    EXPECT_EQ(keys_of(result), "file hits count seconds complete indexed");
    EXPECT_EQ(result["count"], result["hits"].size());
    ASSERT_GT(result["hits"].size(), 0u);
    for(Json const &hit : result["hits"])
    {
        EXPECT_EQ(keys_of(hit), "node name index distance point normal matrix visitSubTree");
        EXPECT_EQ(hit["matrix"].size(), 16u);
        EXPECT_TRUE(hit["point"].is_null() || hit["point"].size() == 3u);
        EXPECT_EQ(hit["visitSubTree"], Json::array());
    }
}

TEST(Select, APixelIsTheSameAsItsRectangleAndItsCorners)
{
    Json const by_pixel = hits(View + Words{"--pixel", "640,330", "--radius", "10"});
    ASSERT_GT(by_pixel.size(), 1u);
    EXPECT_EQ(hits(View + Words{"--rect", "630,320,650,340"}), by_pixel);
    EXPECT_EQ(hits(View + Words{"--rect", "650,320,630,340"}), by_pixel);
    auto const volume =
        OSG::pick_volume(SameView, OSG::pixel_square(640, 330, 10), model()->getVolume());
    ASSERT_TRUE(volume);
    // Corners have no eye.
    Json without_eye = by_pixel;
    for(Json &hit : without_eye)
        hit.erase("eyeDistance");
    EXPECT_EQ(hits(corners_of(*volume)), without_eye);
}

TEST(Select, TheRadiusIsTwoPixelsUnlessItIsGiven)
{
    Json const two = hits(View + Words{"--pixel", "640,330", "--radius", "2"});
    EXPECT_EQ(hits(View + Words{"--pixel", "640,330"}), two);
    EXPECT_NE(hits(View + Words{"--pixel", "640,330", "--radius", "40"}), two);
}

TEST(Select, ABoxIsTheSameAsItsCorners)
{
    Json const by_box = hits({"--box", "-2,0,-1", "2,1,3"});
    ASSERT_GT(by_box.size(), 1u);
    EXPECT_EQ(hits({"--corners", "-2,0,3", "2,0,3", "2,1,3", "-2,1,3", "-2,0,-1", "2,0,-1",
                    "2,1,-1", "-2,1,-1"}),
              by_box);
}

TEST(Select, FindsWhatTheLibraryFinds)
{
    auto const volume =
        OSG::pick_volume(SameView, OSG::pixel_rectangle(420, 300, 760, 460), model()->getVolume());
    OSG::UnrecordedRefPtr<OSG::SelectionAction> const action(OSG::SelectionAction::create());
    OSG::SimpleSelectionFunctor functor(action, 1, OSG::SelectionFunctor::NearPlane);
    action->pushFrustum(*volume);
    action->apply(model());
    auto const &found = functor.hits(OSG::SelectionFunctor::AllHits);
    Json const printed = hits(View + Words{"--rect", "420,300,760,460", "--hits", "all"});
    ASSERT_EQ(printed.size(), found.size());
    for(std::size_t i = 0; i < found.size(); ++i)
    {
        EXPECT_EQ(printed[i]["index"], found[i].index);
        EXPECT_EQ(printed[i]["distance"].get<float>(), found[i].distance);
        EXPECT_EQ(printed[i]["point"].is_null(), !found[i].hasPoint);
        if(found[i].hasPoint)
        {
            EXPECT_EQ(printed[i]["point"][1].get<float>(), found[i].point[1]);
        }
        std::string const node = '/' + std::to_string(model()->findChild(found[i].node));
        EXPECT_EQ(printed[i]["node"], node);
    }
}

TEST(Select, HitsAreFrontUnlessOthersAreAsked)
{
    Words const box{"--box", "-1,0,-1", "1,1,1"};
    Json const front = hits(box + Words{"--hits", "front"});
    Json const back = hits(box + Words{"--hits", "back"});
    Json const all = hits(box + Words{"--hits", "all"});
    EXPECT_EQ(hits(box), front);
    EXPECT_EQ(front.size(), back.size());
    EXPECT_GT(all.size(), front.size());
    EXPECT_EQ(all.front(), front.front());
    for(std::size_t i = 1; i < back.size(); ++i)
        EXPECT_GE(back[i - 1]["distance"], back[i]["distance"]);
}

TEST(Select, DistancesCountFromThePlane)
{
    // Parallel to the near side, half a unit behind it.
    TextFile const file("plane.obj",
                        "v -0.25 -0.5 0.5\nv 0.75 -0.5 0.5\nv 0.75 0.25 0.5\nf 1 2 3\n");
    std::pair<char const *, float> const distances[] = {{"near", 0.5f},  {"far", 1.5f},
                                                        {"left", 0.75f}, {"right", 0.25f},
                                                        {"top", 0.75f},  {"bottom", 0.5f}};
    for(auto const &[plane, distance] : distances)
    {
        Outcome const outcome = run_program(
            {"select", file.path(), "--box", "-1,-1,-1", "1,1,1", "--plane", plane, "--json"});
        Json const hits_there = Json::parse(outcome.out)["hits"];
        ASSERT_EQ(hits_there.size(), 1u) << plane;
        EXPECT_EQ(hits_there[0]["distance"].get<float>(), distance) << plane;
    }
}

TEST(Select, KindsAreTrianglesUnlessOthersAreAsked)
{
    Words const box{"--box", "-1,0,-1", "1,1,1"};
    EXPECT_EQ(hits(box + Words{"--kinds", "triangles"}), hits(box));
    EXPECT_EQ(hits(box + Words{"--kinds", "triangles,lines,points"}), hits(box));
    EXPECT_EQ(hits(box + Words{"--kinds", "lines,points"}).size(), 0u);
    EXPECT_EQ(hits(box + Words{"--fast", "--kinds", "lines"}).size(), 0u);
}

TEST(Select, FastTellsTheSameNodes)
{
    Words const box{"--box", "-1,0,-1", "1,1,1"};
    std::set<std::string> exact;
    std::set<std::string> fast;
    for(Json const &hit : hits(box))
        exact.insert(hit["node"]);
    for(Json const &hit : hits(box + Words{"--fast"}))
    {
        fast.insert(hit["node"]);
        EXPECT_EQ(hit["index"], -1);
        EXPECT_EQ(hit["distance"], 0);
    }
    EXPECT_EQ(fast, exact);
}

TEST(Select, AViewThatShowsNothingHasNoHits)
{
    Words const away = {"--from", "0,1,90", "--at",   "0,1,99", "--up",   "0,1,0",
                        "--fov",  "45",     "--size", "64x64",  "--rect", "0,0,64,64"};
    Json const result = select(away);
    EXPECT_EQ(result["hits"], Json::array());
    EXPECT_EQ(result["count"], 0);
}

// A click on the bowl from within the room, and the same with the model moved far away.
Json picked_from_inside(std::string const &file, float moved)
{
    std::string const from = std::to_string(moved + 1) + ",1.7," + std::to_string(moved + 3);
    std::string const at = std::to_string(moved) + ",0.95," + std::to_string(moved);
    Outcome const outcome =
        run_program({"select", file, "--from", from, "--at", at, "--up", "0,1,0", "--fov", "30",
                     "--size", "1280x720", "--pixel", "640,360", "--json"});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    return Json::parse(outcome.out)["hits"];
}

/// The vertices of our model a thousand units away along x and z, without materials.
std::string moved_pavilion(float by)
{
    std::ifstream in(pavilion());
    std::ostringstream text;
    text << std::setprecision(12);
    for(std::string line; std::getline(in, line);)
    {
        std::istringstream words(line);
        std::string word;
        double x = 0;
        double y = 0;
        double z = 0;
        if(words >> word && word == "v" && words >> x >> y >> z)
            text << "v " << x + by << ' ' << y << ' ' << z + by << '\n';
        else if(word != "mtllib")
            text << line << '\n';
    }
    return text.str();
}

TEST(Select, APickFromWithinTheBoundsMeasuresFromTheEye)
{
    Json const found = picked_from_inside(pavilion(), 0);
    ASSERT_GT(found.size(), 0u);
    // The eye is 3.25 from the middle of the picture, which the bowl surrounds.
    EXPECT_NEAR(found[0]["eyeDistance"].get<double>(), 3.2, 0.3);
    for(Json const &hit : found)
    {
        double const x = hit["point"][0].get<double>() - 1;
        double const y = hit["point"][1].get<double>() - 1.7;
        double const z = hit["point"][2].get<double>() - 3;
        EXPECT_NEAR(hit["eyeDistance"].get<double>(), std::sqrt(x * x + y * y + z * z), 1e-5);
        // Distances count from the near side, which is close to the eye.
        EXPECT_NEAR(hit["distance"].get<double>(), hit["eyeDistance"].get<double>(), 0.02);
    }
}

TEST(Select, APickFindsTheSameNodesWhereTheModelIsFarFromTheOrigin)
{
    TextFile const file("moved.obj", moved_pavilion(1000));
    Json const here = picked_from_inside(pavilion(), 0);
    Json const there = picked_from_inside(file.path(), 1000);
    ASSERT_EQ(there.size(), here.size());
    for(std::size_t i = 0; i < here.size(); ++i)
    {
        EXPECT_EQ(there[i]["node"], here[i]["node"]);
        EXPECT_NEAR(there[i]["eyeDistance"].get<double>(), here[i]["eyeDistance"].get<double>(),
                    1e-3);
    }
}

TEST(Select, ABoxOfAnySizeFindsWhatIsInIt)
{
    for(std::string const size : {"1e3", "1e9", "1e20", "1e30"})
        EXPECT_EQ(
            hits({"--box", '-' + size + ",-" + size + ",-" + size, size + ',' + size + ',' + size})
                .size(),
            hits({"--box", "-100,-100,-100", "100,100,100"}).size())
            << size;
}

TEST(Select, WithoutAViewThereIsNoDistanceFromAnEye)
{
    for(Json const &hit : hits({"--box", "-1,0,-1", "1,1,1"}))
        EXPECT_FALSE(hit.contains("eyeDistance"));
    for(Json const &hit : hits(View + Words{"--pixel", "640,330", "--fast"}))
    {
        EXPECT_EQ(hit["point"], nullptr);
        EXPECT_EQ(hit["eyeDistance"], nullptr);
    }
}

TEST(Select, ATriangleWhollyInsideHasNoNearestPoint)
{
    TextFile const file("inside.obj", "v 5 0 0\nv 6 0 0\nv 5 1 0\nf 1 2 3\n");
    Outcome const outcome = run_program(
        {"select", file.path(), "--box", "0,-9,-9", "9,9,9", "--hits", "all", "--json"});
    Json const found = Json::parse(outcome.out)["hits"];
    ASSERT_EQ(found.size(), 2u);
    EXPECT_EQ(found[0]["point"], nullptr);
    EXPECT_EQ(found[1]["point"], Json({5, 1, 0}));
    Outcome const table = run_program({"select", file.path(), "--box", "0,-9,-9", "9,9,9"});
    EXPECT_NE(table.out.find(" - "), std::string::npos) << table.out;
}

TEST(Select, APixelMayBeAFraction)
{
    Json const whole = hits(View + Words{"--rect", "629.5,320,650,340"});
    EXPECT_EQ(hits(View + Words{"--rect", "650,340,629.5,320"}), whole);
    EXPECT_EQ(hits(View + Words{"--pixel", "640.5,330.25", "--radius", "10"}),
              hits(View + Words{"--rect", "630.5,320.25,650.5,340.25"}));
}

Words const FlatView = {"--from", "7.5,3.2,9.5", "--at", "0,1,0",  "--up",
                        "0,1,0",  "--ortho",     "9",    "--size", "1280x720"};

TEST(Select, WithoutPerspectiveFindsWhatTheLibraryFinds)
{
    OSG::WindowView view = SameView;
    view.orthographicHeight = 9;
    auto const volume =
        OSG::pick_volume(view, OSG::pixel_rectangle(420, 300, 760, 460), model()->getVolume());
    ASSERT_TRUE(volume);
    Json found = hits(FlatView + Words{"--rect", "420,300,760,460", "--hits", "all"});
    ASSERT_GT(found.size(), 3u);
    for(Json &hit : found)
    {
        EXPECT_TRUE(hit.contains("eyeDistance"));
        hit.erase("eyeDistance");
    }
    EXPECT_EQ(hits(corners_of(*volume) + Words{"--hits", "all"}), found);
}

TEST(Select, ARectangleGivenAsALassoHasTheHitsOfTheRectangle)
{
    for(Words const &view : {View, FlatView})
        for(std::string const hit : {"front", "back", "all"})
            for(std::string const plane : {"near", "far"})
            {
                Words const more = {"--hits", hit, "--plane", plane};
                Json const wanted = hits(view + Words{"--rect", "420,300,760,460"} + more);
                ASSERT_GT(wanted.size(), 3u);
                for(std::string const lasso :
                    {"420,300,760,300,760,460,420,460", "760,460,760,300,420,300,420,460",
                     "500,300,760,300,760,460,420,460,420,300"})
                    EXPECT_EQ(hits(view + Words{"--lasso", lasso} + more), wanted) << lasso;
            }
}

std::set<std::string> nodes_in(Json const &found)
{
    std::set<std::string> nodes;
    for(Json const &hit : found)
        nodes.insert(hit["node"]);
    return nodes;
}

// The points bulge by a thousandth of a pixel, so the lasso is no rectangle.
TEST(Select, ALassoHasTheHitsOfWhatItEncloses)
{
    std::string const bulging = "420,300,600,299.999,760,300,760.001,400,760,460,420,460";
    for(Words const &more :
        {Words{}, Words{"--enclosed"}, Words{"--fast"}, Words{"--fast", "--enclosed"}})
    {
        auto const wanted = nodes_in(hits(View + Words{"--rect", "420,300,760,460"} + more));
        EXPECT_GT(wanted.size(), 3u);
        EXPECT_EQ(nodes_in(hits(View + Words{"--lasso", bulging} + more)), wanted);
    }
    Json const exact = hits(View + Words{"--rect", "420,300,760,460"});
    Json const lassoed = hits(View + Words{"--lasso", bulging});
    ASSERT_EQ(lassoed.size(), exact.size());
    for(std::size_t i = 0; i < exact.size(); ++i)
        EXPECT_NEAR(lassoed[i]["distance"].get<double>(), exact[i]["distance"].get<double>(), 1e-3);
}

TEST(Select, ALassoWithoutAnAreaHasNoHits)
{
    for(std::string const lasso :
        {"5,5", "5,5,900,700", "5,5,900,700,5,5", "0,0,9,9,400,400", "7,7,7,7,7,7",
         "0,0,1280,0,1280,720,0,720,0,0,1280,0,1280,720,0,720",
         "640,0,900,700,0,250,1280,250,380,700,640,0,900,700,0,250,1280,250,380,700"})
        EXPECT_EQ(hits(View + Words{"--lasso", lasso}).size(), 0u) << lasso;
    EXPECT_EQ(hits(View + Words{"--rect", "420,300,420,460"}).size(), 0u);
}

TEST(Select, WhatALassoGoesRoundTwiceIsOutside)
{
    TextFile const file("lasso.obj", "v -0.1 -0.1 0\nv 0.1 -0.1 0\nv 0 0.1 0\nf 1 2 3\n"
                                     "v -0.1 3.6 0\nv 0.1 3.6 0\nv 0 3.7 0\nf 4 5 6\n");
    // Ten pixels are a unit; the star's corners are 40 pixels from the middle.
    Outcome const outcome =
        run_program({"select", file.path(), "--from", "0,0,5", "--at", "0,0,0", "--up", "0,1,0",
                     "--ortho", "10", "--size", "100x100", "--lasso",
                     "50,10,73.5,82.4,12,37.6,88,37.6,26.5,82.4", "--json"});
    Json const found = Json::parse(outcome.out)["hits"];
    ASSERT_EQ(found.size(), 1u) << outcome.err;
    EXPECT_NEAR(found[0]["distance"].get<double>(), 0.005, 1e-3);
    EXPECT_EQ(found[0]["index"], 1);
}

TEST(Select, EnclosedKeepsOfTheHitsWhatLiesWhollyInside)
{
    Json const all = hits(View + Words{"--rect", "420,300,760,460", "--hits", "all"});
    Json const enclosed =
        hits(View + Words{"--rect", "420,300,760,460", "--hits", "all", "--enclosed"});
    EXPECT_GT(enclosed.size(), 3u);
    EXPECT_LT(enclosed.size(), all.size());
    auto const kept = nodes_in(enclosed);
    Json wanted = Json::array();
    for(Json const &hit : all)
        if(kept.contains(hit["node"]))
            wanted.push_back(hit);
    EXPECT_EQ(enclosed, wanted);
    // The whole scene is enclosed by a box around it.
    Words const box{"--box", "-100,-100,-100", "100,100,100"};
    EXPECT_EQ(hits(box + Words{"--enclosed"}), hits(box));
    // Kinds that are not there hit nothing, so nothing is enclosed.
    EXPECT_EQ(hits(box + Words{"--enclosed", "--kinds", "lines,points"}).size(), 0u);
}

TEST(Select, WithoutJsonIsATable)
{
    Outcome const outcome = run_program({"select", pavilion(), "--box", "-1,0,-1", "1,1,1"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.out.rfind("distance", 0), 0u);
    EXPECT_NE(outcome.out.find(" hits in "), std::string::npos);
}
} // namespace
} // namespace Tool::Test
