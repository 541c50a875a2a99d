#include "OSGNavigator.h"

#include <gtest/gtest.h>

#include "LogCapture.h"
#include "MathPrinters.h"
#include "NavigatedView.h"

using namespace OSG;
using namespace OSG::Test;

namespace
{
/// Notes the calls that it gets. Its pose consists of three values that a test may set.
class NotingEngine : public NavigatorEngine
{
  public:
    static UnrecordedRefPtr<NotingEngine> create()
    {
        return UnrecordedRefPtr<NotingEngine>(TransitPtr<NotingEngine>(new NotingEngine));
    }

    Pnt3f const &getFrom() override { return from; }
    Pnt3f const &getAt() override { return at; }
    Vec3f const &getUp() override { return up; }
    Matrix const &getMatrix() override
    {
        MatrixLookAt(matrix, from, at, up);
        return matrix;
    }
    Real32 getDistance() override { return 0; }
    void setFrom(Pnt3f value) override { from = value; }
    void setAt(Pnt3f value) override { at = value; }
    void setUp(Vec3f value) override { up = value; }
    void set(Matrix const &) override {}
    void set(Pnt3f newFrom, Pnt3f newAt, Vec3f newUp) override
    {
        from = newFrom;
        at = newAt;
        up = newUp;
    }
    void setDistance(Real32) override {}

    void buttonPress(Int16 button, Int16 x, Int16 y, Navigator *navigator) override
    {
        note("press " + std::to_string(button), x, y, navigator);
        if(holdsAtPress)
            navigator->setLastPosition(320, 240);
        if(updatesAtPress)
            navigator->updateCameraTransformation();
    }
    void buttonRelease(Int16 button, Int16 x, Int16 y, Navigator *navigator) override
    {
        note("release " + std::to_string(button), x, y, navigator);
    }
    void keyPress(Int16 key, Int16 x, Int16 y, Navigator *navigator) override
    {
        note("key " + std::to_string(key), x, y, navigator);
    }
    void moveTo(Int16 x, Int16 y, Navigator *navigator) override { note("move", x, y, navigator); }
    void idle(Int16 button, Int16 x, Int16 y, Navigator *navigator) override
    {
        note("idle " + std::to_string(button), x, y, navigator);
    }
    void onViewportChanged(Navigator *) override { notes.push_back("viewport"); }
    void onActivation(Navigator *) override { notes.push_back("activation"); }
    void onUpdateCameraTransformation(Navigator *) override { notes.push_back("update"); }
    void mouseMove(Int16 x, Int16 y, Navigator *navigator) override
    {
        note("hover", x, y, navigator);
    }
    void killFocus(Navigator *) override { notes.push_back("blur"); }

    std::vector<std::string> notes;
    Pnt3f from{0, 0, 5};
    Pnt3f at{0, 0, 0};
    Vec3f up{0, 1, 0};
    Matrix matrix;
    bool holdsAtPress = false;
    bool updatesAtPress = false;

  private:
    /// The event, the position of the one before it, and whether the pointer has moved.
    void note(std::string const &event, Int16 x, Int16 y, Navigator *navigator)
    {
        notes.push_back(event + " at " + std::to_string(x) + ' ' + std::to_string(y) + " last " +
                        std::to_string(navigator->getLastX()) + ' ' +
                        std::to_string(navigator->getLastY()) +
                        (navigator->getMoved() ? " moved" : ""));
    }
};

using Notes = std::vector<std::string>;

struct NavigatorOfView : ::testing::Test
{
    NavigatorOfView()
    {
        navigator.setEngine(engine);
        engine->notes.clear();
    }

    NavigatedView view;
    Navigator &navigator = view.navigator;
    UnrecordedRefPtr<NotingEngine> const engine = NotingEngine::create();
};

// --- events ---

TEST_F(NavigatorOfView, PassesEventsWithThePositionBefore)
{
    navigator.buttonPress(1, 10, 20);
    navigator.moveTo(11, 22);
    navigator.buttonRelease(1, 13, 24);
    navigator.mouseMove(15, 26);
    navigator.keyPress(3, 17, 28);
    navigator.idle(-1, 100, 100);
    navigator.killFocus();
    navigator.keyPressEx(4, NavigatorEvent::KeyDown, 19, 30);
    EXPECT_EQ(engine->notes,
              (Notes{"press 1 at 10 20 last 0 0", "move at 11 22 last 10 20 moved",
                     "release 1 at 13 24 last 11 22 moved", "hover at 15 26 last 13 24 moved",
                     "key 3 at 17 28 last 15 26 moved", "idle -1 at 100 100 last 17 28 moved",
                     "blur", "key 4 at 19 30 last 17 28 moved"}));
}

TEST_F(NavigatorOfView, APointerThatReturnsHasMoved)
{
    navigator.buttonPress(0, 10, 20);
    EXPECT_FALSE(navigator.getMoved());
    navigator.moveTo(10, 20);
    EXPECT_FALSE(navigator.getMoved());
    navigator.moveTo(11, 20);
    navigator.moveTo(10, 20);
    EXPECT_TRUE(navigator.getMoved());
    navigator.buttonPress(0, 10, 20);
    EXPECT_FALSE(navigator.getMoved());
    navigator.buttonRelease(0, 10, 20);
    EXPECT_FALSE(navigator.getMoved());
}

TEST_F(NavigatorOfView, APositionThatTheEngineSetsHoldsUntilTheNextPress)
{
    engine->holdsAtPress = true;
    navigator.buttonPress(0, 10, 20);
    navigator.buttonRelease(0, 10, 20);
    navigator.mouseMove(30, 40);
    navigator.moveTo(50, 60);
    navigator.idle(0, 70, 80);
    EXPECT_EQ(navigator.getLastX(), 320);
    EXPECT_EQ(navigator.getLastY(), 240);
    EXPECT_TRUE(navigator.getMoved());
    engine->holdsAtPress = false;
    navigator.buttonPress(0, 11, 21);
    EXPECT_EQ(navigator.getLastX(), 11);
    EXPECT_EQ(navigator.getLastY(), 21);
}

TEST_F(NavigatorOfView, PassesNothingWhileSomethingIsMissing)
{
    struct Row
    {
        char const *name;
        void (*take)(NavigatedView &);
        void (*give)(NavigatedView &);
    };
    for(Row const &row :
        {Row{"viewport", [](NavigatedView &v) { v.navigator.setViewport(nullptr); },
             [](NavigatedView &v) { v.navigator.setViewport(v.viewport); }},
         Row{"root", [](NavigatedView &v) { v.viewport->setRoot(nullptr); },
             [](NavigatedView &v) { v.viewport->setRoot(v.root); }},
         Row{"camera", [](NavigatedView &v) { v.viewport->setCamera(nullptr); },
             [](NavigatedView &v) { v.viewport->setCamera(v.camera); }}})
    {
        row.take(view);
        engine->notes.clear();
        navigator.buttonPress(0, 1, 2);
        navigator.moveTo(3, 4);
        navigator.buttonRelease(0, 3, 4);
        navigator.keyPress(2, 5, 6);
        navigator.mouseMove(7, 8);
        navigator.idle(0, 7, 8);
        navigator.killFocus();
        EXPECT_EQ(engine->notes, Notes()) << row.name;
        EXPECT_EQ(navigator.getLastX(), 7);
        row.give(view);
        engine->notes.clear();
        navigator.mouseMove(9, 9);
        EXPECT_EQ(engine->notes, (Notes{"hover at 9 9 last 7 8 moved"})) << row.name;
    }
}

TEST(Navigator, DoesNothingWithoutAnEngine)
{
    NavigatedView view;
    view.navigator.buttonPress(0, 1, 2);
    view.navigator.updateCameraTransformation();
    EXPECT_EQ(view.navigator.getLastX(), 1);
    Matrix viewing;
    view.camera->getViewing(viewing, 10, 10);
    EXPECT_EQ(viewing, translation(0, 0, -10));
}

TEST_F(NavigatorOfView, ShowsEventsToAnObserver)
{
    struct Witness : NavigatorObserver
    {
        void observe(NavigatorEvent const &event) override { seen.push_back(event); }
        std::vector<NavigatorEvent> seen;
    } witness;
    navigator.setEventObserver(&witness);
    EXPECT_EQ(navigator.getEventObserver(), &witness);
    navigator.setViewport(nullptr);
    navigator.buttonPress(4, 1, 2);
    navigator.keyPressEx(65, NavigatorEvent::KeyUp, 3, 4);
    navigator.setEventObserver(nullptr);
    navigator.moveTo(5, 6);
    EXPECT_EQ(witness.seen, (std::vector<NavigatorEvent>{
                                {NavigatorEvent::ButtonPress, 4, 0, 1, 2},
                                {NavigatorEvent::Key, 65, NavigatorEvent::KeyUp, 3, 4}}));
}

// --- buttons that no engine knows ---

TEST_F(NavigatorOfView, ShowsTheFramesOfTheHostToAnObserver)
{
    struct Witness : NavigatorObserver
    {
        void observe(NavigatorEvent const &) override {}
        void observeFrame() override { ++frames; }
        int frames = 0;
    } witness;
    navigator.setEventObserver(&witness);
    navigator.updateCameraTransformation();
    EXPECT_EQ(witness.frames, 1);
    // One that the engine makes comes again with the event in a replay.
    engine->updatesAtPress = true;
    navigator.buttonPress(0, 1, 1);
    EXPECT_EQ(witness.frames, 1);
    navigator.updateCameraTransformation();
    EXPECT_EQ(witness.frames, 2);
    navigator.setEventObserver(nullptr);
}

TEST_F(NavigatorOfView, AnotherButtonDuringADragChangesNothing)
{
    for(Int16 const other : {5, 7, -1, 32767})
    {
        navigator.buttonPress(0, 10, 20);
        navigator.moveTo(11, 20);
        engine->notes.clear();
        navigator.buttonPress(other, 30, 40);
        navigator.buttonRelease(other, 50, 60);
        navigator.moveTo(12, 20);
        EXPECT_EQ(engine->notes,
                  (Notes{"press " + std::to_string(other) + " at 30 40 last 11 20 moved",
                         "move at 12 20 last 11 20 moved"}));
        navigator.buttonRelease(0, 12, 20);
    }
}

TEST_F(NavigatorOfView, AnotherButtonDuringADragIsNoMotion)
{
    navigator.buttonPress(1, 10, 20);
    navigator.buttonPress(5, 30, 40);
    navigator.buttonRelease(5, 50, 60);
    EXPECT_FALSE(navigator.getMoved());
    navigator.buttonRelease(1, 10, 20);
    EXPECT_FALSE(navigator.getMoved());
}

TEST_F(NavigatorOfView, AnotherButtonMakesNoLaterReleaseAClick)
{
    navigator.buttonPress(0, 10, 20);
    navigator.buttonRelease(0, 11, 20);
    navigator.buttonPress(5, 30, 40);
    EXPECT_TRUE(navigator.getMoved());
    navigator.buttonRelease(0, 30, 40);
    EXPECT_TRUE(navigator.getMoved());
}

TEST_F(NavigatorOfView, AnotherButtonByItselfIsPressedAndReleased)
{
    navigator.buttonPress(2, 1, 1);
    navigator.buttonRelease(2, 1, 1);
    engine->notes.clear();
    navigator.buttonPress(6, 10, 20);
    navigator.buttonRelease(6, 10, 20);
    EXPECT_EQ(engine->notes,
              (Notes{"press 6 at 10 20 last 1 1", "release 6 at 10 20 last 10 20 moved"}));
}

// --- settings ---

TEST(Navigator, HasItsSettings)
{
    Navigator navigator;
    EXPECT_EQ(navigator.getMotionFactor(), 1.f);
    EXPECT_EQ(navigator.getRotationAngle(), 0.05f);
    EXPECT_FALSE(navigator.getClickCenter());
    EXPECT_FALSE(navigator.getClickNoIntersect());
    navigator.setMotionFactor(3);
    navigator.setRotationAngle(0.2f);
    navigator.setClickCenter(true);
    navigator.setClickNoIntersect(true);
    EXPECT_EQ(navigator.getMotionFactor(), 3.f);
    EXPECT_EQ(navigator.getRotationAngle(), 0.2f);
    EXPECT_TRUE(navigator.getClickCenter());
    EXPECT_TRUE(navigator.getClickNoIntersect());
}

// --- normalised coordinates ---

TEST_F(NavigatorOfView, CalcFromToGoesFromTheLastPosition)
{
    navigator.mouseMove(0, 480);
    Real32 fromX, fromY, toX, toY;
    EXPECT_TRUE(navigator.calcFromTo(320, 120, fromX, fromY, toX, toY));
    EXPECT_EQ(fromX, -1.f);
    EXPECT_EQ(fromY, -1.f);
    EXPECT_EQ(toX, 0.f);
    EXPECT_EQ(toY, 0.5f);
}

TEST(Navigator, CalcFromToIsZeroWithoutPixels)
{
    Navigator navigator;
    ViewportPtr const nothing(Viewport::create());
    for(Viewport *const viewport : {static_cast<Viewport *>(nullptr), nothing.get()})
    {
        navigator.setViewport(viewport);
        Real32 values[4] = {1, 2, 3, 4};
        EXPECT_FALSE(navigator.calcFromTo(5, 6, values[0], values[1], values[2], values[3]));
        for(Real32 const value : values)
            EXPECT_EQ(value, 0.f);
    }
}

// --- camera ---

TEST_F(NavigatorOfView, EventsPutThePoseOntoTheCamera)
{
    engine->from = Pnt3f(1, 2, 3);
    engine->at = Pnt3f(1, 2, 0);
    navigator.mouseMove(1, 1);
    EXPECT_EQ(view.beacon->getToWorld(), translation(1, 2, 3));
    EXPECT_EQ(engine->notes, (Notes{"hover at 1 1 last 0 0"}));
}

TEST_F(NavigatorOfView, UpdateReadsThePoseThenLetsTheEngineWork)
{
    engine->from = Pnt3f(1, 2, 3);
    engine->at = Pnt3f(1, 2, 0);
    navigator.updateCameraTransformation();
    EXPECT_EQ(view.beacon->getToWorld(), translation(1, 2, 3));
    EXPECT_EQ(engine->notes, Notes{"update"});
}

TEST_F(NavigatorOfView, PosesACameraBelowOtherTransforms)
{
    Matrix const above = translation(5, 0, 0) * rotation(Vec3f(0, 1, 0), 0.7f) * scaling(2, 2, 2);
    NodePtr const parent = make_transform(above, {view.beacon});
    navigator.updateCameraTransformation();
    EXPECT_TRUE(view.beacon->getToWorld().equals(translation(0, 0, 5), 1e-5f));
    LogCapture const log;
    dynamic_cast<Transform *>(parent->getCore())->setMatrix(scaling(0, 1, 1));
    navigator.updateCameraTransformation();
    EXPECT_EQ(log.count("TransformationMatrix<>::calcInverse: Singular matrix, no inverse!\n"), 1u);
}

TEST_F(NavigatorOfView, AStillCameraIsNotEdited)
{
    navigator.updateCameraTransformation();
    FieldContainer *const core = view.beacon->getCore();
    core->takeChangeMask();
    navigator.updateCameraTransformation();
    EXPECT_EQ(core->getChangeMask(), 0u);
}

TEST_F(NavigatorOfView, LeavesABeaconThatIsNoTransform)
{
    NodePtr const group = make_group();
    view.camera->setBeacon(group);
    navigator.updateCameraTransformation();
    EXPECT_EQ(group->getToWorld(), Matrix());
    view.camera->setBeacon(nullptr);
    navigator.updateCameraTransformation();
}

// --- engines ---

TEST_F(NavigatorOfView, AnotherEngineGoesOnFromThePose)
{
    UnrecordedRefPtr<NotingEngine> const other = NotingEngine::create();
    engine->from = Pnt3f(1, 2, 3);
    navigator.setEngine(other);
    EXPECT_EQ(other->from, Pnt3f(1, 2, 3));
    EXPECT_EQ(other->notes, Notes{"activation"});
    EXPECT_EQ(navigator.getEngine(), other.get());
    EXPECT_EQ(engine->getRefCount(), 1);
    navigator.setEngine(other);
    EXPECT_EQ(other->notes, Notes{"activation"});
    navigator.setEngine(nullptr);
    EXPECT_EQ(other->getRefCount(), 1);
}

TEST(Navigator, TheFirstEngineKeepsItsPose)
{
    NavigatedView view;
    UnrecordedRefPtr<NotingEngine> const engine = NotingEngine::create();
    view.navigator.setEngine(engine);
    EXPECT_EQ(engine->from, Pnt3f(0, 0, 5));
}

TEST_F(NavigatorOfView, TellsTheEngineOfAnotherViewport)
{
    navigator.setViewport(view.viewport);
    EXPECT_EQ(engine->notes, Notes());
    ViewportPtr const other(Viewport::create());
    navigator.setViewport(other);
    EXPECT_EQ(engine->notes, Notes{"viewport"});
}

// --- keys of engines that override one operation, both or none ---

/// Overrides both.
class TwoKeysEngine : public NotingEngine
{
  public:
    void keyPressEx(Int16 key, UInt16 modifiers, Int16, Int16, Navigator *) override
    {
        notes.push_back("keyEx " + std::to_string(key) + " with " + std::to_string(modifiers));
    }
};

/// Overrides keyPressEx alone.
class ExtendedKeysEngine : public TwoKeysEngine
{
  public:
    void keyPress(Int16 key, Int16 x, Int16 y, Navigator *navigator) override
    {
        NavigatorEngine::keyPress(key, x, y, navigator);
    }
};

/// Overrides neither.
class DeafEngine : public NotingEngine
{
  public:
    void keyPress(Int16 key, Int16 x, Int16 y, Navigator *navigator) override
    {
        NavigatorEngine::keyPress(key, x, y, navigator);
    }
};

template <class Engine>
Notes notes_of_keys()
{
    UnrecordedRefPtr<Engine> const engine(TransitPtr<Engine>(new Engine));
    NavigatedView view;
    view.navigator.setEngine(engine);
    engine->notes.clear();
    view.navigator.keyPress(7, 1, 2);
    view.navigator.keyPressEx(8, 0, 1, 2);
    view.navigator.keyPressEx(9, NavigatorEvent::KeyDown, 1, 2);
    view.navigator.keyPressEx(9, NavigatorEvent::KeyUp, 1, 2);
    return engine->notes;
}

TEST(NavigatorEngine, AnEngineThatOverridesKeyPressAloneHearsKeysThatGoDown)
{
    EXPECT_EQ(notes_of_keys<NotingEngine>(),
              (Notes{"key 7 at 1 2 last 0 0", "key 8 at 1 2 last 1 2", "key 9 at 1 2 last 1 2"}));
}

TEST(NavigatorEngine, AnEngineThatOverridesKeyPressExAloneHearsAllKeys)
{
    EXPECT_EQ(notes_of_keys<ExtendedKeysEngine>(),
              (Notes{"keyEx 7 with 0", "keyEx 8 with 0", "keyEx 9 with 8", "keyEx 9 with 16"}));
}

TEST(NavigatorEngine, AnEngineThatOverridesBothHearsEachThroughItsOwn)
{
    EXPECT_EQ(notes_of_keys<TwoKeysEngine>(), (Notes{"key 7 at 1 2 last 0 0", "keyEx 8 with 0",
                                                     "keyEx 9 with 8", "keyEx 9 with 16"}));
}

TEST(NavigatorEngine, AnEngineThatOverridesNeitherIgnoresKeys)
{
    EXPECT_EQ(notes_of_keys<DeafEngine>(), Notes());
}

/// Answers a key by sending another key.
class RepeatingEngine : public NotingEngine
{
  public:
    void keyPress(Int16 key, Int16 x, Int16 y, Navigator *navigator) override
    {
        NotingEngine::keyPress(key, x, y, navigator);
        if(key < 10)
            navigator->keyPressEx(static_cast<Int16>(key + 10), NavigatorEvent::KeyDown, x, y);
    }
};

TEST(NavigatorEngine, AKeyMayBringAnotherKey)
{
    EXPECT_EQ(notes_of_keys<RepeatingEngine>(),
              (Notes{"key 7 at 1 2 last 0 0", "key 17 at 1 2 last 0 0", "key 8 at 1 2 last 1 2",
                     "key 18 at 1 2 last 1 2", "key 9 at 1 2 last 1 2", "key 19 at 1 2 last 1 2"}));
}
} // namespace
