// Selections of the program in our model, held against each other and against the library.

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

Words const view = {"--from", "7.5,3.2,9.5", "--at", "0,1,0",  "--up",
                    "0,1,0",  "--fov",       "45",   "--size", "1280x720"};
OSG::PickView const same_view = {{7.5f, 3.2f, 9.5f}, {0, 1, 0}, {0, 1, 0}, 45, 1280, 720};

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
    EXPECT_EQ(keys_of(result), "file hits count seconds complete");
    EXPECT_EQ(result["count"], result["hits"].size());
    ASSERT_GT(result["hits"].size(), 0u);
    for(Json const &hit : result["hits"])
    {
        EXPECT_EQ(keys_of(hit), "node name index distance point normal matrix visitSubTree");
        EXPECT_EQ(hit["matrix"].size(), 16u);
        EXPECT_EQ(hit["point"].size(), 3u);
        EXPECT_EQ(hit["visitSubTree"], Json::array());
    }
}

TEST(Select, APixelIsTheSameAsItsRectangleAndItsCorners)
{
    Json const by_pixel = hits(view + Words{"--pixel", "640,330", "--radius", "10"});
    ASSERT_GT(by_pixel.size(), 1u);
    EXPECT_EQ(hits(view + Words{"--rect", "630,320,650,340"}), by_pixel);
    EXPECT_EQ(hits(view + Words{"--rect", "650,320,630,340"}), by_pixel);
    auto const volume =
        OSG::pick_volume(same_view, OSG::pixel_square(640, 330, 10), model()->getVolume());
    ASSERT_TRUE(volume);
    EXPECT_EQ(hits(corners_of(*volume)), by_pixel);
}

TEST(Select, TheRadiusIsTwoPixelsUnlessItIsGiven)
{
    Json const two = hits(view + Words{"--pixel", "640,330", "--radius", "2"});
    EXPECT_EQ(hits(view + Words{"--pixel", "640,330"}), two);
    EXPECT_NE(hits(view + Words{"--pixel", "640,330", "--radius", "40"}), two);
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
        OSG::pick_volume(same_view, OSG::pixel_rectangle(420, 300, 760, 460), model()->getVolume());
    OSG::UnrecordedRefPtr<OSG::SelectionAction> const action(OSG::SelectionAction::create());
    OSG::SimpleSelectionFunctor functor(action, 1, OSG::SelectionFunctor::NearPlane);
    action->pushFrustum(*volume);
    action->apply(model());
    auto const &found = functor.hits(OSG::SelectionFunctor::AllHits);
    Json const printed = hits(view + Words{"--rect", "420,300,760,460", "--hits", "all"});
    ASSERT_EQ(printed.size(), found.size());
    for(std::size_t i = 0; i < found.size(); ++i)
    {
        EXPECT_EQ(printed[i]["index"], found[i].index);
        EXPECT_EQ(printed[i]["distance"].get<float>(), found[i].distance);
        EXPECT_EQ(printed[i]["point"][1].get<float>(), found[i].point[1]);
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
    EXPECT_EQ(hits(view + Words{"--pixel", "640,330", "--radius", "0"}).size(), 0u);
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
