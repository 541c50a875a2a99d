// A person at a real window: a toolkit's window on a real server runs the loop of a host, and keys
// and motion come from outside of the process.

#include <chrono>
#include <future>
#include <memory>
#include <thread>

#include <gtest/gtest.h>

#include "CameraBuilders.h"
#include "GeometryBuilders.h"
#include "MathPrinters.h"
#include "OSGNavigator.h"
#include "OSGWASDWalkEngine.h"
#include "OSGWIN32Window.h"
#include "OSGX11Desktop.h"
#include "XServer.h"

// After our headers: those of X define macros such as ButtonPress.
// clang-format off
#define GLFW_INCLUDE_NONE
#define GLFW_EXPOSE_NATIVE_X11
#include <GLFW/glfw3.h>
#include <GLFW/glfw3native.h>
#include <X11/Xlib-xcb.h>
// clang-format on

using namespace OSG;
using namespace OSG::Test;

namespace
{
using Clock = std::chrono::steady_clock;
using Moment = Clock::time_point;

Real64 milliseconds(Moment from, Moment to)
{
    return std::chrono::duration<Real64, std::milli>(to - from).count();
}

Int16 short_of(double pixel) { return static_cast<Int16>(pixel); }

/// A floor of 100 by 100 metres.
NodePtr make_floor()
{
    return make_group({make_node(make_geometry(
        one_primitive(QuadsPrimitive, {{-50, 0, 50}, {50, 0, 50}, {50, 0, -50}, {-50, 0, -50}})))});
}

/// A window of 640 by 480 pixels at (50, 40), a person on the floor before it, and the host's loop.
class X11WalkTest : public testing::Test
{
  protected:
    static constexpr int Left = 50;
    static constexpr int Top = 40;
    static constexpr int Width = 640;
    static constexpr int Height = 480;

    void SetUp() override
    {
        ASSERT_FALSE(server.display().empty());
        setenv("DISPLAY", server.display().c_str(), 1);
        ASSERT_EQ(glfwInit(), GLFW_TRUE);
        openWindow();
        ASSERT_NE(glfw, nullptr);
        desktop = X11Desktop::create(XGetXCBConnection(glfwGetX11Display()));
        ASSERT_NE(desktop, nullptr);
        Desktop::setCurrent(desktop);
        startWalk();
        ASSERT_TRUE(server.act({"mousemove", "370", "280"})); // the middle of the window
        ASSERT_TRUE(server.act({"windowfocus", "--sync", id()}));
        play([] {});
    }
    void TearDown() override
    {
        navigator.setEngine(nullptr);
        walk = nullptr;
        Desktop::setCurrent(nullptr);
        if(desktop != nullptr)
            desktop->forgetConnection();
        glfwTerminate();
    }

    void openWindow()
    {
        glfwWindowHint(GLFW_CLIENT_API, GLFW_NO_API);
        glfwWindowHint(GLFW_DECORATED, GLFW_FALSE);
        glfwWindowHint(GLFW_VISIBLE, GLFW_FALSE);
        glfw = glfwCreateWindow(Width, Height, "walk", nullptr, nullptr);
        if(glfw == nullptr)
            return;
        glfwSetWindowPos(glfw, Left, Top);
        glfwShowWindow(glfw);
        glfwSetWindowUserPointer(glfw, &navigator);
        glfwSetMouseButtonCallback(glfw, onButton);
        glfwSetKeyCallback(glfw, onKey);
        glfwSetWindowFocusCallback(glfw,
                                   [](GLFWwindow *w, int focused)
                                   {
                                       if(focused == GLFW_FALSE)
                                           host(w).killFocus();
                                   });
    }

    static Navigator &host(GLFWwindow *w)
    {
        return *static_cast<Navigator *>(glfwGetWindowUserPointer(w));
    }
    /// Where the pointer is now. A motion event says where it was, and behind a wrap that would be
    /// a turn; so this host hears of motion once a frame.
    struct Pointer
    {
        Int16 x;
        Int16 y;
    };
    static Pointer pointer(GLFWwindow *w)
    {
        double x = 0;
        double y = 0;
        glfwGetCursorPos(w, &x, &y);
        return {short_of(x), short_of(y)};
    }
    static void onButton(GLFWwindow *w, int button, int action, int)
    {
        Pointer const at = pointer(w);
        Int16 const code = button == GLFW_MOUSE_BUTTON_RIGHT ? NavigatorEvent::RightButton
                                                             : NavigatorEvent::LeftButton;
        if(action == GLFW_PRESS)
            host(w).buttonPress(code, at.x, at.y);
        else
            host(w).buttonRelease(code, at.x, at.y);
    }
    static void onKey(GLFWwindow *w, int key, int, int action, int)
    {
        Int16 const code = key == GLFW_KEY_ESCAPE ? 27 : key == GLFW_KEY_F3 ? 114 : 0;
        if(code != 0 && action == GLFW_PRESS)
            host(w).keyPressEx(code, NavigatorEvent::KeyDown | NavigatorEvent::VirtualKey,
                               host(w).getLastX(), host(w).getLastY());
    }

    void startWalk()
    {
        walk = WASDWalkEngine::create();
        camera->setBeacon(beacon);
        viewport->setCamera(camera);
        viewport->setRoot(floor);
        window->setSize(Width, Height);
        window->addPort(viewport);
        window->setHwnd(reinterpret_cast<NativeWindow>(glfwGetX11Window(glfw)));
        floor->updateVolume();
        navigator.setEngine(walk);
        navigator.setViewport(viewport);
        walk->set(Pnt3f(0, 1.65f, 0), Pnt3f(0, 1.65f, -1), Vec3f(0, 1, 0));
    }

    std::string id() const { return std::to_string(glfwGetX11Window(glfw)); }

    void frame()
    {
        Moment const begin = Clock::now();
        longestFrame = std::max(longestFrame, milliseconds(lastFrame, begin));
        lastFrame = begin;
        // What the server was told before now has become events when this returns.
        XSync(glfwGetX11Display(), False);
        glfwWaitEventsTimeout(0.004);
        Pointer const at = pointer(glfw);
        if(at.x != navigator.getLastX() || at.y != navigator.getLastY())
            navigator.mouseMove(at.x, at.y);
        else
            navigator.idle(-1, at.x, at.y);
        navigator.updateCameraTransformation();
    }
    /// The loop while `action` goes on elsewhere, and some frames more.
    template <class Action>
    void play(Action action)
    {
        lastFrame = Clock::now();
        auto const ended = std::async(std::launch::async, action);
        while(ended.wait_for(std::chrono::seconds(0)) != std::future_status::ready)
            frame();
        for(int i = 0; i < 5; ++i)
            frame();
    }
    void act(std::vector<std::string> const &words)
    {
        play([this, &words] { EXPECT_TRUE(server.act(words)) << words.front(); });
    }

    /// Between which moments the key or button went down and up again, and what that gives.
    struct Held
    {
        Real64 least; ///< milliseconds that it was down at least
        Real64 most;
    };
    template <class Words>
    Held hold(Words const &down, Words const &up, int duration)
    {
        Held held{};
        play(
            [&]
            {
                Moment const begin = Clock::now();
                EXPECT_TRUE(server.act(down));
                Moment const isDown = Clock::now();
                std::this_thread::sleep_for(std::chrono::milliseconds(duration));
                Moment const goesUp = Clock::now();
                EXPECT_TRUE(server.act(up));
                held = {milliseconds(isDown, goesUp), milliseconds(begin, Clock::now())};
            });
        return held;
    }

    XServer server;
    GLFWwindow *glfw = nullptr;
    std::shared_ptr<X11Desktop> desktop;
    NodePtr const floor = make_floor();
    NodePtr const beacon = make_transform(Matrix());
    UnrecordedRefPtr<Camera> const camera = make_perspective(0.8f, 0.1f, 1000.f);
    UnrecordedRefPtr<Viewport> const viewport{Viewport::create()};
    UnrecordedRefPtr<WIN32Window> const window{WIN32Window::create()};
    Navigator navigator;
    UnrecordedRefPtr<WASDWalkEngine> walk;
    Moment lastFrame;
    Real64 longestFrame = 0;
};

/// Metres in a millisecond, with the settings as they are at first: 1 times 0.001 times 10 times
/// 0.2.
constexpr Real64 Speed = 0.002;
} // namespace

TEST_F(X11WalkTest, WHeldForASecondWalksForwardByTheFormula)
{
    longestFrame = 0;
    Held const held = hold(std::vector<std::string>{"keydown", "w"},
                           std::vector<std::string>{"keyup", "w"}, 1000);
    Real64 const walked = -walk->getFrom()[2];
    RecordProperty("bounds", std::to_string(Speed * (held.least - longestFrame)) + " to " +
                                 std::to_string(Speed * (held.most + longestFrame)));
    // A key counts for the whole frame in whose end it is seen.
    EXPECT_GE(walked, Speed * (held.least - longestFrame) - 1e-3);
    EXPECT_LE(walked, Speed * (held.most + longestFrame) + 1e-3);
    EXPECT_GT(walked, Speed * 500); // so that a slow machine does not make the bounds meaningless
    EXPECT_NEAR(walk->getFrom()[0], 0, 1e-5);
    Pnt3f const there = walk->getFrom();
    play([] {});
    EXPECT_EQ(walk->getFrom(), there); // the key is up
}

TEST_F(X11WalkTest, AMouseButtonWalksWhileItIsHeld)
{
    longestFrame = 0;
    Held const held = hold(std::vector<std::string>{"mousedown", "3"},
                           std::vector<std::string>{"mouseup", "3"}, 200);
    Real64 const walked = walk->getFrom()[2];
    EXPECT_GE(walked, Speed * (held.least - longestFrame) - 1e-3);
    EXPECT_LE(walked, Speed * (held.most + longestFrame) + 1e-3);
}

TEST_F(X11WalkTest, NoKeyWalksWithoutTheFocus)
{
    ASSERT_TRUE(
        server.act({"windowfocus", std::to_string(DefaultRootWindow(glfwGetX11Display()))}));
    hold(std::vector<std::string>{"keydown", "w"}, std::vector<std::string>{"keyup", "w"}, 100);
    EXPECT_EQ(walk->getFrom(), Pnt3f(0, 1.65f, 0));
}

TEST_F(X11WalkTest, EscapeBringsThePointerBackToWhereItVanished)
{
    act({"mousemove", "210", "330"});
    act({"key", "F3"});
    ASSERT_FALSE(walk->wasd_walk_console());
    EXPECT_EQ(desktop->getCapture(), window->getHwnd());
    act({"mousemove", "400", "150"});
    EXPECT_EQ(desktop->getPointer().x, 400);
    act({"key", "Escape"});
    EXPECT_TRUE(walk->wasd_walk_console());
    EXPECT_EQ(desktop->getCapture(), nullptr);
    EXPECT_EQ(desktop->getPointer().x, 210);
    EXPECT_EQ(desktop->getPointer().y, 330);
}

TEST_F(X11WalkTest, LeavingTheViewWrapsThePointerWithoutATurn)
{
    act({"key", "F3"});
    Pnt3f const before = walk->getAt();
    act({"mousemove", "390", "280"});
    Pnt3f const turned = walk->getAt();
    EXPECT_GT((turned - before).length(), 0.01f); // within the view it turns
    act({"mousemove", "760", "300"});
    EXPECT_EQ(desktop->getPointer().x, Left + Width / 2);
    EXPECT_EQ(desktop->getPointer().y, Top + Height / 2);
    EXPECT_EQ(walk->getAt(), turned);
    act({"mousemove", "350", "280"}); // from the middle to the left
    EXPECT_GT((walk->getAt() - turned).length(), 0.01f);
}

TEST_F(X11WalkTest, AMotionKeyHidesThePointerAndItsReleaseBringsItBack)
{
    act({"mousemove", "300", "200"});
    act({"keydown", "q"});
    EXPECT_EQ(desktop->getCapture(), window->getHwnd());
    act({"mousemove", "320", "220"});
    act({"keyup", "q"});
    EXPECT_EQ(desktop->getCapture(), nullptr);
    EXPECT_EQ(desktop->getPointer().x, 300);
    EXPECT_EQ(desktop->getPointer().y, 200);
}
