#include "OSGUserNavigatorEngine.h"

#include <cstring>

#include <gtest/gtest.h>

#include "LogCapture.h"
#include "MathPrinters.h"
#include "NavigatedView.h"
#include "OSGCadTrackballEngine.h"
#include "OSGCopterFlyEngine.h"
#include "OSGMemManager.h"
#include "OSGWASDFlyEngine.h"
#include "OSGWASDWalkEngine.h"

using namespace OSG;
using namespace OSG::Test;

namespace
{
using EnginePtr = UnrecordedRefPtr<UserNavigatorEngine>;

struct EngineRow
{
    char const *name;
    EnginePtr (*create)();
};

void PrintTo(EngineRow const &row, std::ostream *out) { *out << row.name; }

EngineRow const EngineRows[] = {
    {"Cad", [] { return EnginePtr(CadTrackballEngine::create(0.8f)); }},
    {"Fly", [] { return EnginePtr(WASDFlyEngine::create()); }},
    {"Copter", [] { return EnginePtr(CopterFlyEngine::create()); }},
    {"Walk", [] { return EnginePtr(WASDWalkEngine::create()); }},
};

class AnyEngine : public ::testing::TestWithParam<EngineRow>
{
};

INSTANTIATE_TEST_SUITE_P(Engines, AnyEngine, ::testing::ValuesIn(EngineRows),
                         [](auto const &suite) { return suite.param.name; });

TEST_P(AnyEngine, ComesWithOneReference)
{
    EnginePtr const engine = GetParam().create();
    ASSERT_NE(engine.get(), nullptr);
    EXPECT_EQ(engine->getRefCount(), 1);
}

TEST_P(AnyEngine, IsNamedLikeItsBaseWhenAskedThroughIt)
{
    EnginePtr const engine = GetParam().create();
    EXPECT_STREQ(engine->getClassname(), "UserNavigatorEngine");
}

TEST(UserNavigatorEngine, EveryEngineHasItsOwnName)
{
    EXPECT_STREQ(CadTrackballEngine::getClassname(), "CadTrackballEngine");
    EXPECT_STREQ(WASDFlyEngine::getClassname(), "WASDFlyEngine");
    EXPECT_STREQ(CopterFlyEngine::getClassname(), "CopterFlyEngine");
    EXPECT_STREQ(WASDWalkEngine::getClassname(), "WASDWalkEngine");
}

/// The slot of a virtual function in the table of its class. In the C++ ABI of this system a
/// pointer to a virtual member function holds the offset of its slot, plus 1. The destructor has
/// slots 0 and 1.
template <class Function>
std::ptrdiff_t slot_of(Function function)
{
    std::ptrdiff_t word;
    std::memcpy(&word, &function, sizeof(word));
    return (word - 1) / static_cast<std::ptrdiff_t>(sizeof(void *));
}

TEST(UserNavigatorEngine, HasItsVirtualOperationsInOrder)
{
    using E = UserNavigatorEngine;
    using Set = void (E::*)(Matrix const &);
    using SetParts = void (E::*)(Pnt3f, Pnt3f, Vec3f);
    std::ptrdiff_t const slots[] = {slot_of(&E::getFrom),
                                    slot_of(&E::getAt),
                                    slot_of(&E::getUp),
                                    slot_of(&E::getMatrix),
                                    slot_of(&E::getDistance),
                                    slot_of(&E::setFrom),
                                    slot_of(&E::setAt),
                                    slot_of(&E::setUp),
                                    slot_of(static_cast<Set>(&E::set)),
                                    slot_of(static_cast<SetParts>(&E::set)),
                                    slot_of(&E::setDistance),
                                    slot_of(&E::buttonPress),
                                    slot_of(&E::buttonRelease),
                                    slot_of(&E::keyPress),
                                    slot_of(&E::moveTo),
                                    slot_of(&E::idle),
                                    slot_of(&E::onViewportChanged),
                                    slot_of(&E::onActivation),
                                    slot_of(&E::onUpdateCameraTransformation),
                                    slot_of(&E::keyPressEx),
                                    slot_of(&E::mouseMove),
                                    slot_of(&E::killFocus),
                                    slot_of(&WASDFlyEngine::rotate),
                                    slot_of(&WASDFlyEngine::forward),
                                    slot_of(&WASDFlyEngine::right)};
    std::ptrdiff_t expected = 2;
    for(std::ptrdiff_t const slot : slots)
        EXPECT_EQ(slot, expected++);
}

TEST_P(AnyEngine, IsNotMadeWithoutMemory)
{
    LogCapture const log(LOG_PROGRESS);
    set_mem_limit(1);
    EnginePtr const engine = GetParam().create();
    set_mem_limit(0);
    EXPECT_EQ(engine.get(), nullptr);
    EXPECT_TRUE(log.texts().empty());
}

TEST_P(AnyEngine, KeysAreKeysWithoutModifiers)
{
    LogCapture log(LOG_NOTICE);
    for(int key = -40; key < 300; ++key)
    {
        NavigatedView view;
        EnginePtr const plain = GetParam().create();
        EnginePtr const extended = GetParam().create();
        plain->keyPress(static_cast<Int16>(key), 3, 4, &view.navigator);
        std::vector<std::string> const plainLog = log.texts();
        log.clear();
        extended->keyPressEx(static_cast<Int16>(key), 0, 3, 4, &view.navigator);
        EXPECT_EQ(plain->getMatrix(), extended->getMatrix()) << key;
        EXPECT_EQ(plain->getAt(), extended->getAt()) << key;
        EXPECT_EQ(plainLog, log.texts()) << key;
        log.clear();
    }
}

TEST_P(AnyEngine, DoesNothingWhenAKeyGoesUp)
{
    LogCapture const log(LOG_NOTICE);
    NavigatedView view;
    EnginePtr const engine = GetParam().create();
    Matrix const before = engine->getMatrix();
    for(Int16 key = 0; key < 130; ++key)
    {
        engine->keyPressEx(key, NavigatorEvent::KeyUp, 3, 4, &view.navigator);
        engine->keyPressEx(key, NavigatorEvent::KeyUp | NavigatorEvent::VirtualKey, 3, 4,
                           &view.navigator);
    }
    EXPECT_EQ(engine->getMatrix(), before);
    EXPECT_TRUE(log.texts().empty());
}

TEST_P(AnyEngine, HoversAndLostFocusMoveNothing)
{
    NavigatedView view;
    EnginePtr const engine = GetParam().create();
    Matrix const before = engine->getMatrix();
    engine->mouseMove(100, 100, &view.navigator);
    engine->killFocus(&view.navigator);
    EXPECT_EQ(engine->getMatrix(), before);
}

// The trackball starts elsewhere: one unit in front of the origin.
TEST(EyeEngine, StartsInTheOriginLookingAlongZ)
{
    EnginePtr const engines[] = {EnginePtr(WASDFlyEngine::create().get()),
                                 EnginePtr(CopterFlyEngine::create().get()),
                                 EnginePtr(WASDWalkEngine::create().get())};
    for(EnginePtr const &engine : engines)
    {
        EXPECT_EQ(engine->getFrom(), Pnt3f(0, 0, 0));
        EXPECT_EQ(engine->getAt(), Pnt3f(0, 0, 1));
        EXPECT_EQ(engine->getUp(), Vec3f(0, 1, 0));
    }
}

TEST_P(AnyEngine, TakesAPoseOfThreeParts)
{
    EnginePtr const engine = GetParam().create();
    engine->set(Pnt3f(1, 2, 13), Pnt3f(1, 2, 3), Vec3f(0, 1, 0));
    EXPECT_EQ(engine->getFrom(), Pnt3f(1, 2, 13));
    EXPECT_EQ(engine->getAt(), Pnt3f(1, 2, 3));
    EXPECT_EQ(engine->getUp(), Vec3f(0, 1, 0));
    EXPECT_EQ(engine->getMatrix(), translation(1, 2, 13));
    engine->setFrom(Pnt3f(1, 2, 23));
    EXPECT_EQ(engine->getMatrix(), translation(1, 2, 23));
    engine->setAt(Pnt3f(1, 2, 33));
    EXPECT_TRUE(engine->getMatrix().equals(
        translation(1, 2, 23) * rotation(Vec3f(0, 1, 0), 3.14159265f), 1e-5f));
    engine->setUp(Vec3f(1, 0, 0));
    EXPECT_TRUE(
        Vec3f(engine->getMatrix()[1][0], engine->getMatrix()[1][1], engine->getMatrix()[1][2])
            .equals(Vec3f(1, 0, 0), 1e-5f));
}

// --- what a host may get wrong ---

bool is_finite_pose(UserNavigatorEngine &engine)
{
    return is_finite(engine.getMatrix()) && is_finite(engine.getFrom()) &&
           is_finite(engine.getAt()) && is_finite(engine.getUp()) &&
           is_finite(engine.getDistance());
}

TEST_P(AnyEngine, PosesThatAreNotFiniteAreNotTaken)
{
    LogCapture const log;
    EnginePtr const engine = GetParam().create();
    engine->set(Pnt3f(1, 2, 13), Pnt3f(1, 2, 3), Vec3f(0, 1, 0));
    Matrix const before = engine->getMatrix();
    Real32 const values[] = {NAN, INFINITY, -INFINITY};
    for(Real32 const bad : values)
    {
        Matrix matrix = translation(1, 2, 3);
        matrix[2][1] = bad;
        engine->set(matrix);
        matrix = translation(bad, 2, 3);
        engine->set(matrix);
        engine->set(Pnt3f(bad, 2, 3), Pnt3f(), Vec3f(0, 1, 0));
        engine->set(Pnt3f(1, 2, 3), Pnt3f(0, bad, 0), Vec3f(0, 1, 0));
        engine->set(Pnt3f(1, 2, 3), Pnt3f(), Vec3f(0, bad, 0));
        engine->setFrom(Pnt3f(bad, 0, 0));
        engine->setAt(Pnt3f(0, bad, 0));
        engine->setUp(Vec3f(0, 0, bad));
        engine->setDistance(bad);
        EXPECT_TRUE(is_finite_pose(*engine)) << bad;
    }
    EXPECT_TRUE(engine->getMatrix().equals(before, 1e-4f));
}

TEST_P(AnyEngine, ViewsWithoutADirectionLeaveTheMatrix)
{
    LogCapture const log(LOG_NOTICE);
    EnginePtr const engine = GetParam().create();
    engine->set(Pnt3f(1, 2, 13), Pnt3f(1, 2, 3), Vec3f(0, 1, 0));
    Matrix const before = engine->getMatrix();
    engine->set(Pnt3f(4, 5, 6), Pnt3f(4, 5, 6), Vec3f(0, 1, 0));
    EXPECT_EQ(engine->getMatrix(), before);
    engine->set(Pnt3f(1, 2, 13), Pnt3f(1, 2, 3), Vec3f(0, 0, 1));
    EXPECT_EQ(engine->getMatrix(), before);
    engine->set(Pnt3f(1, 2, 13), Pnt3f(1, 2, 3), Vec3f(0, 0, 0));
    EXPECT_EQ(engine->getMatrix(), before);
}

/// Sends every kind of event, with every button and key, from ordinary and from extreme places.
void mistreat(UserNavigatorEngine &engine, Navigator &navigator)
{
    Int16 const places[] = {0, 1, 320, -32768, 32767};
    for(Int16 const x : places)
    {
        for(Int16 button = -1; button < 6; ++button)
        {
            engine.buttonPress(button, x, 240, &navigator);
            engine.moveTo(240, x, &navigator);
            engine.moveTo(x, x, &navigator);
            engine.idle(button, x, 100, &navigator);
            engine.buttonRelease(button, x, 240, &navigator);
        }
        for(Int16 key = 0; key < 128; ++key)
        {
            engine.keyPressEx(key, 0, x, x, &navigator);
            engine.keyPressEx(key, NavigatorEvent::VirtualKey, x, x, &navigator);
        }
        for(int state = 0; state < 4; ++state)
        {
            engine.buttonPress(NavigatorEvent::LeftButton, 1, 1, &navigator);
            for(int i = 0; i < 5; ++i)
                engine.idle(0, x, static_cast<Int16>(-x), &navigator);
            engine.buttonPress(NavigatorEvent::LeftButton, 1, 1, &navigator);
            engine.keyPressEx(' ', NavigatorEvent::VirtualKey, 1, 1, &navigator);
        }
    }
}

TEST_P(AnyEngine, SurvivesSettingsThatAreNotFinite)
{
    LogCapture const log;
    for(Real32 const bad : {NAN, INFINITY, 3e38f, -3e38f, 0.f})
    {
        for(bool const orthographic : {false, true})
        {
            NavigatedView view;
            if(orthographic)
                view.setCamera(make_orthographic(10, 0.1f, 100).get());
            view.navigator.setMotionFactor(bad);
            view.navigator.setRotationAngle(bad);
            view.navigator.setClickCenter(true);
            EnginePtr const engine = GetParam().create();
            mistreat(*engine, view.navigator);
            EXPECT_TRUE(is_finite_pose(*engine)) << bad;
            view.navigator.setEngine(engine);
            view.navigator.updateCameraTransformation();
            EXPECT_TRUE(is_finite(view.beacon->getToWorld()));
        }
    }
}

TEST_P(AnyEngine, SurvivesViewsThatShowNothing)
{
    struct Row
    {
        char const *name;
        void (*spoil)(NavigatedView &);
    };
    for(Row const &row :
        {Row{"no pixels", [](NavigatedView &v) { v.window->setSize(0, 0); }},
         Row{"no rows", [](NavigatedView &v) { v.window->setSize(640, 0); }},
         Row{"one pixel", [](NavigatedView &v) { v.window->setSize(1, 1); }},
         Row{"no window", [](NavigatedView &v) { v.window->subPort(v.viewport); }},
         Row{"singular beacon", [](NavigatedView &v)
             { dynamic_cast<Transform &>(*v.beacon->getCore()).setMatrix(scaling(0, 0, 0)); }},
         Row{"beacon with NaN", [](NavigatedView &v)
             { dynamic_cast<Transform &>(*v.beacon->getCore()).setMatrix(scaling(NAN, 1, 1)); }},
         Row{"no beacon", [](NavigatedView &v) { v.camera->setBeacon(nullptr); }},
         Row{"no opening",
             [](NavigatedView &v) { dynamic_cast<PerspectiveCamera &>(*v.camera).setFov(0); }},
         Row{"no depth", [](NavigatedView &v) { v.camera->setFar(0.01f); }},
         Row{"orthographic of no size",
             [](NavigatedView &v) { v.setCamera(make_orthographic(0, 0.1f, 100).get()); }},
         Row{"empty scene", [](NavigatedView &v) { v.viewport->setRoot(make_group()); }}})
    {
        LogCapture const log;
        NavigatedView view;
        row.spoil(view);
        view.navigator.setClickCenter(true);
        EnginePtr const engine = GetParam().create();
        mistreat(*engine, view.navigator);
        EXPECT_TRUE(is_finite_pose(*engine)) << row.name;
    }
}

TEST_P(AnyEngine, SurvivesNoViewAtAll)
{
    LogCapture const log;
    struct Row
    {
        char const *name;
        void (*take)(NavigatedView &);
    };
    for(Row const &row :
        {Row{"viewport", [](NavigatedView &v) { v.navigator.setViewport(nullptr); }},
         Row{"camera", [](NavigatedView &v) { v.viewport->setCamera(nullptr); }},
         Row{"root", [](NavigatedView &v) { v.viewport->setRoot(nullptr); }}})
    {
        NavigatedView view;
        row.take(view);
        view.navigator.setClickCenter(true);
        EnginePtr const engine = GetParam().create();
        mistreat(*engine, view.navigator);
        EXPECT_TRUE(is_finite_pose(*engine)) << row.name;
    }
}
} // namespace
