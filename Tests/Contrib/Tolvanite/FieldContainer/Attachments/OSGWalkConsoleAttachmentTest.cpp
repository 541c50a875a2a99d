#include "OSGWalkConsoleAttachment.h"

#include <limits>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "OSGFieldHandle.h"
#include "RandomNumbers.h"

namespace OSG
{
namespace
{
using ConsolePtr = UnrecordedRefPtr<WalkConsoleAttachment>;

/// A viewpoint that is known by one number.
struct View
{
    Pnt3f from;
    Pnt3f at;
    Vec3f up;

    explicit View(Real32 number = -1.f)
        : from(number, 0.f, 0.f)
        , at(0.f, number, 0.f)
        , up(0.f, 0.f, 1.f)
    {
    }
    int number() const { return static_cast<int>(from[0]); }
};

class WalkConsole : public testing::Test
{
  protected:
    ConsolePtr console{WalkConsoleAttachment::create()};
    View view;
    std::string label = "untouched";

    void mark(int number, char const *name = "", bool setCurrent = false)
    {
        View const v(static_cast<Real32>(number));
        console->addMark(v.from, v.at, v.up, name, setCurrent);
    }
    void tick(int number)
    {
        View const v(static_cast<Real32>(number));
        console->addRecorded(v.from, v.at, v.up);
    }
    void ticks(std::initializer_list<int> numbers)
    {
        for(int number : numbers)
            tick(number);
    }

    using MarkStep = bool (WalkConsoleAttachment::*)(Pnt3f &, Pnt3f &, Vec3f &, std::string &);
    using TickStep = bool (WalkConsoleAttachment::*)(Pnt3f &, Pnt3f &, Vec3f &);
    bool go(MarkStep step) { return ((*console).*step)(view.from, view.at, view.up, label); }
    bool go(TickStep step) { return ((*console).*step)(view.from, view.at, view.up); }

    /// The marks from the first to the last, by number; the cursor ends at the last.
    std::vector<int> marks()
    {
        std::vector<int> numbers;
        for(bool more = go(&WalkConsoleAttachment::startMark); more;
            more = go(&WalkConsoleAttachment::nextMark))
            numbers.push_back(view.number());
        return numbers;
    }
    std::vector<int> play()
    {
        std::vector<int> numbers;
        for(bool more = go(&WalkConsoleAttachment::startRecorded); more;
            more = go(&WalkConsoleAttachment::nextRecorded))
            numbers.push_back(view.number());
        return numbers;
    }
    template <class T>
    T field(char const *name)
    {
        std::ostringstream text;
        OutStream out(text);
        console->getField(name)->pushIndexedValueToStream(out, 0);
        T value{};
        std::istringstream(text.str()) >> value;
        return value;
    }
    UInt32 rows(char const *name) { return console->getField(name)->size(); }
};

using Console = WalkConsoleAttachment;

TEST_F(WalkConsole, StartsWithoutMarksOrRecordingAndWithATickOfAHundredMilliseconds)
{
    EXPECT_EQ(console->getTickTime(), 100u);
    EXPECT_EQ(field<int>("MarkIndex"), -1);
    EXPECT_EQ(field<int>("RecordedIndex"), -1);
    EXPECT_EQ(field<unsigned>("TickCounter"), 0u);
    EXPECT_EQ(console->getHomeAt(), Pnt3f(0.f, 0.f, 0.f));
    EXPECT_EQ(console->getHomeFrom(), Pnt3f(0.f, 0.f, 0.f));
    EXPECT_FALSE(console->getHasHome());
    for(bool atCursor : {false, true})
    {
        EXPECT_FALSE(console->hasMark(atCursor));
        EXPECT_FALSE(console->hasRecorded(atCursor));
    }
    EXPECT_FALSE(console->hasNextMark() || console->hasPrevMark());
    EXPECT_FALSE(console->hasNextRecorded() || console->hasPrevRecorded());
}

TEST_F(WalkConsole, NothingIsDeliveredOrWrittenWhereThereIsNothing)
{
    for(MarkStep step :
        {&Console::startMark, &Console::endMark, &Console::nextMark, &Console::prevMark})
        EXPECT_FALSE(go(step));
    for(TickStep step : {&Console::startRecorded, &Console::endRecorded, &Console::nextRecorded,
                         &Console::prevRecorded})
        EXPECT_FALSE(go(step));
    EXPECT_EQ(view.number(), -1);
    EXPECT_EQ(label, "untouched");
    EXPECT_FALSE(console->removeMark());
}

TEST_F(WalkConsole, HomeInTextFormIsInCapitals)
{
    console->setHasHome(true);
    EXPECT_EQ(field<std::string>("HasHome"), "TRUE");
    console->setHasHome(false);
    EXPECT_EQ(field<std::string>("HasHome"), "FALSE");
}

// --- marks ---

TEST_F(WalkConsole, AnEqualMarkInARowIsDroppedWithItsLabel)
{
    mark(1, "first");
    mark(1, "second", true);
    EXPECT_EQ(marks(), std::vector<int>{1});
    EXPECT_EQ(label, "first");
}

TEST_F(WalkConsole, AnEqualMarkLeavesTheCursorWhereItIs)
{
    mark(1);
    mark(1, "", true);
    EXPECT_FALSE(console->hasMark(true));
}

TEST_F(WalkConsole, OnlyTheLastMarkIsCompared)
{
    for(int number : {1, 2, 1})
        mark(number);
    EXPECT_EQ(marks(), (std::vector<int>{1, 2, 1}));
}

TEST_F(WalkConsole, ViewpointsAreEqualUpToAndWithAMillionthInEachComponent)
{
    Pnt3f const zero(0.f, 0.f, 0.f);
    console->addMark(zero, zero, Vec3f(0.f, 0.f, 1.f), "", false);
    for(Real32 difference : {1e-6f, -1e-6f})
        console->addMark(Pnt3f(0.f, difference, 0.f), zero, Vec3f(0.f, 0.f, 1.f), "", false);
    EXPECT_EQ(rows("MarkFrom"), 1u);
    Real32 const more = std::nextafter(1e-6f, 1.f);
    console->addMark(zero, zero, Vec3f(more, 0.f, 1.f), "", false);
    EXPECT_EQ(rows("MarkFrom"), 2u);
    Real32 const nan = std::numeric_limits<Real32>::quiet_NaN();
    for(int i = 0; i < 2; ++i)
        console->addMark(Pnt3f(nan, 0.f, 0.f), zero, Vec3f(0.f, 0.f, 1.f), "", false);
    EXPECT_EQ(rows("MarkFrom"), 4u);
}

TEST_F(WalkConsole, FromNowhereThereIsNoNextMark)
{
    mark(1);
    mark(2);
    EXPECT_FALSE(go(&Console::nextMark));
    EXPECT_FALSE(go(&Console::prevMark));
    EXPECT_FALSE(console->hasNextMark());
    EXPECT_TRUE(console->hasMark(false));
    EXPECT_FALSE(console->hasMark(true));
}

TEST_F(WalkConsole, StepsThroughMarksInBothDirections)
{
    for(int number : {1, 2, 3})
        mark(number, number == 2 ? "two" : "other");
    EXPECT_EQ(marks(), (std::vector<int>{1, 2, 3}));
    EXPECT_FALSE(console->hasNextMark());
    ASSERT_TRUE(console->hasPrevMark());
    ASSERT_TRUE(go(&Console::prevMark));
    EXPECT_EQ(view.number(), 2);
    EXPECT_EQ(view.at, Pnt3f(0.f, 2.f, 0.f));
    EXPECT_EQ(label, "two");
    ASSERT_TRUE(go(&Console::prevMark));
    EXPECT_FALSE(go(&Console::prevMark));
    EXPECT_EQ(view.number(), 1);
    ASSERT_TRUE(go(&Console::endMark));
    EXPECT_EQ(view.number(), 3);
}

TEST_F(WalkConsole, RemovingTheOnlyMarkLeavesTheCursorNowhere)
{
    mark(1, "", true);
    EXPECT_TRUE(console->removeMark());
    EXPECT_EQ(field<int>("MarkIndex"), -1);
    EXPECT_FALSE(console->hasMark(false));
    EXPECT_FALSE(console->removeMark());
}

TEST_F(WalkConsole, AfterARemovalTheCursorStandsAtTheFollower)
{
    for(int number : {1, 2, 3})
        mark(number);
    go(&Console::startMark);
    EXPECT_TRUE(console->removeMark());
    EXPECT_EQ(field<int>("MarkIndex"), 0);
    EXPECT_EQ(marks(), (std::vector<int>{2, 3}));
    EXPECT_TRUE(console->removeMark());
    EXPECT_EQ(field<int>("MarkIndex"), 0);
}

TEST_F(WalkConsole, ClearingMarksEmptiesAllAndPutsTheCursorNowhere)
{
    mark(1, "", true);
    tick(5);
    console->clearMark();
    EXPECT_FALSE(console->hasMark(false));
    EXPECT_EQ(field<int>("MarkIndex"), -1);
    EXPECT_TRUE(console->hasRecorded(false));
}

// --- recording ---

TEST_F(WalkConsole, EqualTicksInARowShareAnEntry)
{
    ticks({1, 1, 1, 2});
    EXPECT_EQ(rows("RecordedFrom"), 2u);
    EXPECT_EQ(console->getField("RecordedCardinality")->size(), 2u);
    EXPECT_EQ(play(), (std::vector<int>{1, 1, 1, 2}));
}

TEST_F(WalkConsole, PlaysForwardTickByTick)
{
    ticks({1, 1, 1, 2});
    ASSERT_TRUE(go(&Console::startRecorded));
    unsigned const counters[] = {1, 2, 3, 1};
    int const entries[] = {0, 0, 0, 1};
    for(int i = 0; i < 4; ++i)
    {
        EXPECT_EQ(field<unsigned>("TickCounter"), counters[i]);
        EXPECT_EQ(field<int>("RecordedIndex"), entries[i]);
        EXPECT_EQ(console->hasNextRecorded(), i < 3);
        EXPECT_EQ(go(&Console::nextRecorded), i < 3);
    }
    EXPECT_EQ(view.number(), 2);
}

TEST_F(WalkConsole, PlaysBackwardTickByTick)
{
    ticks({1, 1, 1, 2});
    ASSERT_TRUE(go(&Console::endRecorded));
    unsigned const counters[] = {1, 3, 2, 1};
    for(int i = 0; i < 4; ++i)
    {
        EXPECT_EQ(view.number(), i == 0 ? 2 : 1);
        EXPECT_EQ(field<unsigned>("TickCounter"), counters[i]);
        EXPECT_EQ(console->hasPrevRecorded(), i < 3);
        EXPECT_EQ(go(&Console::prevRecorded), i < 3);
    }
}

TEST_F(WalkConsole, AFailedStepLeavesTheCursor)
{
    ticks({1, 2, 2});
    go(&Console::endRecorded);
    EXPECT_FALSE(go(&Console::nextRecorded));
    EXPECT_EQ(field<int>("RecordedIndex"), 1);
    EXPECT_EQ(field<unsigned>("TickCounter"), 2u);
}

TEST_F(WalkConsole, FromNowhereThereIsNoNextTick)
{
    tick(1);
    EXPECT_FALSE(go(&Console::nextRecorded));
    EXPECT_FALSE(go(&Console::prevRecorded));
    EXPECT_FALSE(console->hasRecorded(true));
    EXPECT_TRUE(console->hasRecorded(false));
}

TEST_F(WalkConsole, RecordingOnGivesTheCursorAtTheEndANextTick)
{
    ticks({1});
    go(&Console::endRecorded);
    EXPECT_FALSE(console->hasNextRecorded());
    tick(1);
    EXPECT_TRUE(go(&Console::nextRecorded));
    EXPECT_FALSE(go(&Console::nextRecorded));
    tick(2);
    ASSERT_TRUE(go(&Console::nextRecorded));
    EXPECT_EQ(view.number(), 2);
}

TEST_F(WalkConsole, ClearingTheRecordingKeepsTickTimeAndHome)
{
    console->setTickTime(40);
    console->setHasHome(true);
    ticks({1, 2});
    go(&Console::endRecorded);
    console->clearRecorded();
    EXPECT_FALSE(console->hasRecorded(false));
    EXPECT_EQ(field<int>("RecordedIndex"), -1);
    EXPECT_EQ(field<unsigned>("TickCounter"), 0u);
    EXPECT_EQ(console->getTickTime(), 40u);
    EXPECT_TRUE(console->getHasHome());
}

TEST_F(WalkConsole, RandomRecordingsPlayAsTheyWereTakenInBothDirections)
{
    OSG::Test::RandomNumbers random(7);
    for(int round = 0; round < 50; ++round)
    {
        console->clearRecorded();
        std::vector<int> taken;
        int const length = 1 + static_cast<int>(random.below(60));
        for(int i = 0; i < length; ++i)
        {
            taken.push_back(static_cast<int>(random.below(3)));
            tick(taken.back());
        }
        ASSERT_EQ(play(), taken);
        std::vector<int> back;
        for(bool more = go(&Console::endRecorded); more; more = go(&Console::prevRecorded))
            back.push_back(view.number());
        ASSERT_EQ(back, std::vector<int>(taken.rbegin(), taken.rend()));
    }
}

TEST_F(WalkConsole, StepsMarkTheCursorFieldsAndEditsTheListsAsChanged)
{
    console->takeChangeMask();
    mark(1);
    EXPECT_EQ(console->takeChangeMask(), BitVector(0x40 | 0x80 | 0x100 | 0x200));
    go(&Console::startMark);
    EXPECT_EQ(console->takeChangeMask(), BitVector(0x20));
    tick(1);
    EXPECT_EQ(console->takeChangeMask(), BitVector(0x2000 | 0x4000 | 0x8000 | 0x10000));
    tick(1);
    EXPECT_EQ(console->takeChangeMask(), BitVector(0x2000));
}

TEST_F(WalkConsole, ListsOfUnequalLengthAreReadAsFarAsAllOfThemGo)
{
    for(int number : {1, 2, 3})
        mark(number);
    ticks({1, 2, 3});
    console->editField("MarkUp")->removeIndex(2);
    console->editField("RecordedFrom")->removeIndex(0);
    EXPECT_EQ(marks(), (std::vector<int>{1, 2}));
    EXPECT_EQ(play().size(), 2u);
    mark(4);
    EXPECT_EQ(marks(), (std::vector<int>{1, 2, 4}));
    EXPECT_EQ(rows("MarkLabel"), 3u);
}
} // namespace
} // namespace OSG
