#include "OSGWalkConsole.h"

#include <limits>
#include <new>
#include <sstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "LogCapture.h"
#include "MathPrinters.h"
#include "OSGChangeList.h"
#include "OSGInputPlayer.h"
#include "OSGMemManager.h"
#include "OSGNamedEngine.h"
#include "OSGSceneFileHandler.h"
#include "OSGThread.h"
#include "SceneBuilders.h"

namespace OSG::Test
{
namespace
{
using testing::ElementsAre;
using testing::IsEmpty;
using EnginePtr = UnrecordedRefPtr<NavigatorEngine>;

void commit() { Thread::getCurrentChangeList()->commitChanges(); }

bool has_open_edits() { return Thread::getCurrentChangeList()->hasOpenEdits(); }

struct WalkConsoleTest : testing::Test
{
    WalkConsoleTest()
    {
        navigator.setEngine(engine);
        console.setScene(scene);
        commit();
    }

    /// Poses that are known by one number.
    void stand(int number)
    {
        auto const x = static_cast<Real32>(number);
        engine->set(Pnt3f(x, 0, 10), Pnt3f(x, 0, 0), Vec3f(0, 1, 0));
    }
    int place() const { return static_cast<int>(engine->getFrom()[0]); }
    void mark(int number)
    {
        stand(number);
        EXPECT_TRUE(console.addMark(std::to_string(number)));
    }
    /// A tick of 125 ms at each of the places.
    void record(std::initializer_list<int> places)
    {
        console.setTickTime(125);
        stand(*places.begin());
        ASSERT_TRUE(console.startRecording());
        console.update(now);
        for(int const *at = places.begin() + 1; at != places.end(); ++at)
        {
            stand(*at);
            console.update(now += 0.125);
        }
        console.stopRecording();
    }

    EnginePtr const engine{make_engine("fly")};
    NodePtr const scene = make_group();
    Navigator navigator;
    WalkConsole console{navigator};
    Real64 now = 100;
};

// --- marks ---

TEST_F(WalkConsoleTest, GoesFromMarkToMark)
{
    for(int const number : {1, 2, 3})
        mark(number);
    EXPECT_THAT(console.getMarkLabels(), ElementsAre("1", "2", "3"));
    EXPECT_EQ(console.getMarkIndex(), 2);
    EXPECT_FALSE(console.goToNextMark());
    EXPECT_TRUE(console.goToFirstMark());
    EXPECT_EQ(place(), 1);
    EXPECT_TRUE(console.goToNextMark());
    EXPECT_EQ(place(), 2);
    EXPECT_TRUE(console.goToLastMark());
    EXPECT_EQ(place(), 3);
    EXPECT_TRUE(console.goToPreviousMark());
    EXPECT_EQ(place(), 2);
    EXPECT_TRUE(console.goToMark(0));
    EXPECT_EQ(place(), 1);
    EXPECT_EQ(console.getMarkIndex(), 0);
    EXPECT_FALSE(console.goToPreviousMark());
    EXPECT_FALSE(console.goToMark(3));
    EXPECT_EQ(place(), 1);
}

TEST_F(WalkConsoleTest, TakesTheWholePose)
{
    engine->set(Pnt3f(1, 2, 3), Pnt3f(4, 6, 3), Vec3f(0, 0, 1));
    CameraPose const pose = pose_of(*engine);
    ASSERT_TRUE(console.addMark("a"));
    stand(9);
    ASSERT_TRUE(console.goToFirstMark());
    EXPECT_EQ(pose_of(*engine), pose);
}

TEST_F(WalkConsoleTest, RemovesTheCurrentMarkOrAll)
{
    for(int const number : {1, 2, 3})
        mark(number);
    console.goToMark(1);
    EXPECT_TRUE(console.removeMark());
    EXPECT_THAT(console.getMarkLabels(), ElementsAre("1", "3"));
    EXPECT_EQ(console.getMarkIndex(), 1);
    EXPECT_EQ(place(), 2); // the engine stays
    EXPECT_TRUE(console.clearMarks());
    EXPECT_THAT(console.getMarkLabels(), IsEmpty());
    EXPECT_EQ(console.getMarkIndex(), -1);
    EXPECT_FALSE(console.clearMarks());
    EXPECT_FALSE(console.removeMark());
}

TEST_F(WalkConsoleTest, AMarkWhereTheLastOneStandsIsNotAdded)
{
    mark(1);
    console.addMark("again");
    EXPECT_THAT(console.getMarkLabels(), ElementsAre("1"));
}

// --- what is stored where ---

TEST_F(WalkConsoleTest, LookingEditsNothing)
{
    NodePtr const other = make_group();
    commit();
    console.setScene(other);
    EXPECT_FALSE(console.goToFirstMark() || console.goToNextMark() || console.goToMark(0) ||
                 console.removeMark() || console.clearMarks() || console.startPlaying() ||
                 console.clearRecording() || console.goHome() || console.hasHome());
    EXPECT_THAT(console.getWay(), IsEmpty());
    EXPECT_EQ(console.getTickTime(), 100u);
    EXPECT_TRUE(console.setTickTime(100)); // it is so already
    console.update(1);
    EXPECT_EQ(console.getAttachment(), nullptr);
    EXPECT_FALSE(has_open_edits());
}

TEST_F(WalkConsoleTest, TheFirstMarkMakesTheAttachmentAndASecondConsoleFindsIt)
{
    mark(4);
    ASSERT_NE(console.getAttachment(), nullptr);
    WalkConsole other(navigator);
    other.setScene(scene);
    EXPECT_EQ(other.getAttachment(), console.getAttachment());
    EXPECT_THAT(other.getMarkLabels(), ElementsAre("4"));
}

TEST_F(WalkConsoleTest, MarksAndWayAreSavedWithTheScene)
{
    mark(1);
    record({2, 3});
    console.setHome();
    commit();
    std::stringstream file;
    ASSERT_TRUE(SceneFileHandlerBase::the()->write(scene, file, "osb"));
    NodePtr const read(SceneFileHandlerBase::the()->read(file, "osb"));
    ASSERT_NE(read, nullptr);
    console.setScene(read);
    EXPECT_THAT(console.getMarkLabels(), ElementsAre("1"));
    EXPECT_EQ(console.getWay().size(), 2u);
    EXPECT_TRUE(console.hasHome());
}

TEST_F(WalkConsoleTest, WithoutASceneOrAnEngineNothingHappens)
{
    mark(1);
    record({1, 2});
    console.setHome();
    auto const doesNothing = [this]
    {
        return !(console.addMark("x") || console.goToFirstMark() || console.goToMark(0) ||
                 console.startRecording() || console.startPlaying() || console.setHome() ||
                 console.goHome());
    };
    navigator.setEngine(nullptr);
    EXPECT_TRUE(doesNothing());
    navigator.setEngine(engine);
    console.setScene(nullptr);
    EXPECT_TRUE(doesNothing());
    EXPECT_FALSE(console.setTickTime(5));
    console.setScene(scene);
    EXPECT_THAT(console.getMarkLabels(), ElementsAre("1"));
}

TEST_F(WalkConsoleTest, WithoutMemoryNothingIsHalfStored)
{
    stand(3);
    auto const attempt = [this](UInt64 blocks)
    {
        std::string const label(100, 'x');
        set_mem_block_limit(blocks);
        bool isDone = true;
        try
        {
            console.addMark(label);
        }
        catch(std::bad_alloc const &)
        {
            isDone = false;
        }
        set_mem_limit(0);
        return isDone;
    };
    UInt64 blocks = 0;
    for(; !attempt(blocks); ++blocks)
        ASSERT_EQ(console.getAttachment(), nullptr);
    EXPECT_GT(blocks, 2u);
    EXPECT_EQ(console.getMarkLabels().size(), 1u);
}

// --- the way ---

TEST_F(WalkConsoleTest, RecordsEachTickAndPlaysThemBack)
{
    record({1, 1, 2, 3});
    std::vector<PathPoint> const way = console.getWay();
    ASSERT_EQ(way.size(), 3u);
    EXPECT_EQ(way[1].from, Pnt3f(2, 0, 10));
    stand(50);
    ASSERT_TRUE(console.startPlaying());
    EXPECT_EQ(place(), 1);
    std::vector<int> places;
    for(console.update(now); console.isPlaying(); console.update(now += 0.125))
        places.push_back(place());
    EXPECT_THAT(places, ElementsAre(1, 1, 2, 3));
    EXPECT_EQ(place(), 3);
}

TEST_F(WalkConsoleTest, OfManyTicksTheEngineIsGivenTheLast)
{
    record({1, 2, 3, 4, 5});
    console.startPlaying();
    console.update(now);
    console.update(now + 0.375);
    EXPECT_EQ(place(), 4);
}

TEST_F(WalkConsoleTest, ALongPauseDoesNotPlayAllAtOnce)
{
    record({0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10});
    console.startPlaying();
    console.update(now);
    console.update(now + 3600);
    EXPECT_EQ(place(), 8); // a second later
    EXPECT_TRUE(console.isPlaying());
}

TEST_F(WalkConsoleTest, TimeThatIsNoneOrRunsBackwardsRecordsNothing)
{
    record({1});
    console.startRecording();
    std::size_t const points = console.getWay().size();
    console.update(now);
    stand(2);
    console.update(std::numeric_limits<Real64>::quiet_NaN());
    console.update(now - 50);
    EXPECT_EQ(console.getWay().size(), points);
    console.update(now - 50 + 0.125);
    EXPECT_EQ(console.getWay().size(), points + 1);
}

TEST_F(WalkConsoleTest, ATickTimeOfZeroIsATickInEachFrame)
{
    console.setTickTime(0);
    stand(1);
    console.startRecording();
    console.update(now);
    stand(2);
    console.update(now);
    EXPECT_EQ(console.getWay().size(), 2u);
}

TEST_F(WalkConsoleTest, RecordingGoesOnAfterEarlierTicksUntilTheyAreCleared)
{
    record({1, 2});
    record({3, 4});
    EXPECT_EQ(console.getWay().size(), 4u);
    EXPECT_TRUE(console.clearRecording());
    EXPECT_THAT(console.getWay(), IsEmpty());
    EXPECT_FALSE(console.startPlaying());
}

TEST_F(WalkConsoleTest, RecordingAndPlayingEndOneAnother)
{
    record({1, 2});
    console.startPlaying();
    EXPECT_TRUE(console.startRecording());
    EXPECT_FALSE(console.isPlaying());
    EXPECT_TRUE(console.startPlaying());
    EXPECT_FALSE(console.isRecording());
    console.stopRecording(); // not what is under way
    EXPECT_TRUE(console.isPlaying());
    console.stopPlaying();
    EXPECT_FALSE(console.isPlaying());
}

TEST_F(WalkConsoleTest, AnotherSceneInTheMiddleEndsRecordingAndPlaying)
{
    record({1, 2});
    NodePtr const other = make_group();
    console.startRecording();
    console.setScene(scene); // the same
    EXPECT_TRUE(console.isRecording());
    console.setScene(other);
    EXPECT_FALSE(console.isRecording());
    console.update(now + 10);
    EXPECT_EQ(console.getAttachment(), nullptr);
    console.setScene(scene);
    console.startPlaying();
    console.setScene(other);
    EXPECT_FALSE(console.isPlaying());
}

TEST_F(WalkConsoleTest, AnEngineThatGoesInTheMiddleEndsPlaying)
{
    record({1, 2});
    console.startPlaying();
    navigator.setEngine(nullptr);
    console.update(now + 1);
    EXPECT_FALSE(console.isPlaying());
}

// --- home ---

TEST_F(WalkConsoleTest, HomeIsGoneToWithTheDirectionUpwardsOfTheScene)
{
    EXPECT_FALSE(console.hasHome());
    engine->set(Pnt3f(1, 2, 3), Pnt3f(1, 7, 3), Vec3f(1, 0, 1));
    ASSERT_TRUE(console.setHome());
    stand(9);
    console.setUpward(Vec3f(0, 0, 1));
    ASSERT_TRUE(console.goHome());
    EXPECT_EQ(engine->getFrom(), Pnt3f(1, 2, 3));
    EXPECT_EQ(engine->getAt(), Pnt3f(1, 7, 3));
    EXPECT_EQ(engine->getUp(), Vec3f(0, 0, 1));
}

TEST_F(WalkConsoleTest, AHomeThatLooksAlongThatDirectionTakesAnotherOne)
{
    engine->set(Pnt3f(0, 5, 0), Pnt3f(0, 0, 0), Vec3f(0, 0, -1));
    console.setHome();
    engine->set(Pnt3f(0, 0, 9), Pnt3f(0, 0, 0), Vec3f(1, 0, 0));
    ASSERT_TRUE(console.goHome());
    EXPECT_EQ(engine->getUp(), Vec3f(1, 0, 0)); // the engine's
    stand(1);                                   // up (0, 1, 0) serves neither
    ASSERT_TRUE(console.goHome());
    EXPECT_EQ(engine->getFrom(), Pnt3f(0, 5, 0));
}

TEST_F(WalkConsoleTest, AViewpointThatShowsNothingIsNotGoneTo)
{
    mark(1);
    WalkConsoleAttachment &store = *console.getAttachment();
    store.setHasHome(true); // at and from are both the origin
    LogCapture log;
    EXPECT_FALSE(console.goHome());
    store.addMark(Pnt3f(std::numeric_limits<Real32>::quiet_NaN(), 0, 0), Pnt3f(0, 0, 0),
                  Vec3f(0, 1, 0), "bad", false);
    stand(7);
    EXPECT_FALSE(console.goToLastMark());
    EXPECT_EQ(place(), 7);
    EXPECT_THAT(log.texts(), ElementsAre("WalkConsole: a stored viewpoint shows nothing\n",
                                         "WalkConsole: a stored viewpoint shows nothing\n"));
}
} // namespace
} // namespace OSG::Test
