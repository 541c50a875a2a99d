#include "OSGX11Desktop.h"

#include <chrono>
#include <memory>
#include <thread>

#include <gtest/gtest.h>
#include <xcb/xcb.h>

#include "OSGDesktop.h"
#include "XServer.h"

using namespace OSG;
using namespace OSG::Test;

namespace
{
NativeWindow native(xcb_window_t window)
{
    return reinterpret_cast<NativeWindow>(static_cast<std::uintptr_t>(window));
}

/// A host with a window of 300 by 200 pixels at (100, 50), black, in which the pointer is a white
/// square, and the desktop on its connection.
class X11DesktopTest : public testing::Test
{
  protected:
    void SetUp() override
    {
        ASSERT_FALSE(server.display().empty());
        connection = xcb_connect(server.display().c_str(), nullptr);
        ASSERT_EQ(xcb_connection_has_error(connection), 0);
        screen = xcb_setup_roots_iterator(xcb_get_setup(connection)).data;
        window = makeWindow(screen->root, 100, 50, 300, 200);
        desktop = X11Desktop::create(connection);
        ASSERT_NE(desktop, nullptr);
    }
    void TearDown() override
    {
        desktop.reset();
        xcb_disconnect(connection);
    }

    xcb_window_t makeWindow(xcb_window_t parent, Int16 x, Int16 y, UInt16 width, UInt16 height)
    {
        xcb_window_t const made = xcb_generate_id(connection);
        std::uint32_t const values[] = {screen->black_pixel, XCB_EVENT_MASK_POINTER_MOTION,
                                        whiteSquare()};
        xcb_create_window(connection, XCB_COPY_FROM_PARENT, made, parent, x, y, width, height, 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, screen->root_visual,
                          XCB_CW_BACK_PIXEL | XCB_CW_EVENT_MASK | XCB_CW_CURSOR, values);
        xcb_map_window(connection, made);
        settle();
        return made;
    }

    xcb_cursor_t whiteSquare()
    {
        xcb_pixmap_t const picture = xcb_generate_id(connection);
        xcb_create_pixmap(connection, 1, picture, screen->root, 16, 16);
        xcb_gcontext_t const pen = xcb_generate_id(connection);
        std::uint32_t const one = 1;
        xcb_create_gc(connection, pen, picture, XCB_GC_FOREGROUND, &one);
        xcb_rectangle_t const all = {0, 0, 16, 16};
        xcb_poly_fill_rectangle(connection, picture, pen, 1, &all);
        xcb_cursor_t const cursor = xcb_generate_id(connection);
        xcb_create_cursor(connection, cursor, picture, picture, 65535, 65535, 65535, 0, 0, 0, 0, 0);
        return cursor;
    }

    /// Waits until the server has done what was sent so far.
    void settle()
    {
        free(xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr));
    }
    void focus(xcb_window_t target)
    {
        xcb_set_input_focus(connection, XCB_INPUT_FOCUS_PARENT, target, XCB_CURRENT_TIME);
        settle();
    }

    /// Whether the key is down, once the last answer is too old to be given again.
    bool isDown(Int16 code)
    {
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
        return desktop->isDown(code);
    }

    /// The window of the last motion among the waiting events, 0 without one.
    xcb_window_t windowOfMotion()
    {
        settle();
        xcb_window_t last = 0;
        while(xcb_generic_event_t *event = xcb_poll_for_event(connection))
        {
            EXPECT_NE(event->response_type, 0) << "an error in the host's queue";
            if((event->response_type & 0x7F) == XCB_MOTION_NOTIFY)
                last = reinterpret_cast<xcb_motion_notify_event_t *>(event)->event;
            free(event);
        }
        return last;
    }

    XServer server;
    xcb_connection_t *connection = nullptr;
    xcb_screen_t *screen = nullptr;
    xcb_window_t window = 0;
    std::shared_ptr<X11Desktop> desktop;
};
} // namespace

TEST_F(X11DesktopTest, KeysAreDownFromTheirPressToTheirRelease)
{
    struct Case
    {
        char const *key;
        Int16 code;
    };
    for(Case const &row : {Case{"w", 'W'},
                           {"y", 'Y'},
                           {"3", '3'},
                           {"Up", 38},
                           {"Next", 34},
                           {"Prior", 33},
                           {"End", 35},
                           {"Delete", 46},
                           {"Shift_R", 16},
                           {"Control_L", 17},
                           {"space", 32},
                           {"Escape", 27},
                           {"F8", 119}})
    {
        EXPECT_FALSE(isDown(row.code)) << row.key;
        ASSERT_TRUE(server.act({"keydown", row.key}));
        EXPECT_TRUE(isDown(row.code)) << row.key;
        EXPECT_FALSE(isDown('X')) << row.key;
        ASSERT_TRUE(server.act({"keyup", row.key}));
        EXPECT_FALSE(isDown(row.code)) << row.key;
    }
    EXPECT_FALSE(isDown(0));
    EXPECT_FALSE(isDown(-1));
    EXPECT_FALSE(isDown(3000));
}

TEST_F(X11DesktopTest, CodesOneAndTwoAreTheLeftAndTheRightButton)
{
    ASSERT_TRUE(server.act({"mousemove", "150", "100", "mousedown", "1"}));
    EXPECT_TRUE(isDown(1));
    EXPECT_FALSE(isDown(2));
    ASSERT_TRUE(server.act({"mouseup", "1", "mousedown", "3"}));
    EXPECT_FALSE(isDown(1));
    EXPECT_TRUE(isDown(2));
    ASSERT_TRUE(server.act({"mouseup", "3"}));
    EXPECT_FALSE(isDown(2));
}

TEST_F(X11DesktopTest, ANewKeyboardLayoutIsSeenWithinASecond)
{
    EXPECT_FALSE(isDown('W')); // the layout has been read
    constexpr xcb_keycode_t Code = 200;
    std::uint32_t const letter = 'q';
    for(int code = 8; code < 256; ++code) // no other key has the letter
    {
        std::uint32_t const none = 0;
        bool const isIt = code == Code;
        if(isIt || code == 24)
            xcb_change_keyboard_mapping(connection, 1, static_cast<xcb_keycode_t>(code), 1,
                                        isIt ? &letter : &none);
    }
    settle();
    std::this_thread::sleep_for(std::chrono::milliseconds(1050));
    ASSERT_TRUE(server.act({"keydown", std::to_string(Code)}));
    EXPECT_TRUE(isDown('Q'));
    ASSERT_TRUE(server.act({"keyup", std::to_string(Code)}));
}

TEST_F(X11DesktopTest, TheFocusMayBeOnTheWindowAroundItOrWithinIt)
{
    xcb_window_t const child = makeWindow(window, 10, 10, 50, 50);
    xcb_window_t const other = makeWindow(screen->root, 500, 300, 50, 50);
    focus(child);
    EXPECT_TRUE(desktop->isFocused(native(child)));
    EXPECT_TRUE(desktop->isFocused(native(window)));
    EXPECT_FALSE(desktop->isFocused(native(other)));
    focus(window);
    EXPECT_TRUE(desktop->isFocused(native(window)));
    EXPECT_TRUE(desktop->isFocused(native(child)));
    focus(other);
    EXPECT_FALSE(desktop->isFocused(native(window)));
    focus(screen->root);
    EXPECT_FALSE(desktop->isFocused(native(window)));
    focus(XCB_INPUT_FOCUS_POINTER_ROOT);
    EXPECT_FALSE(desktop->isFocused(native(window)));
    focus(XCB_INPUT_FOCUS_NONE);
    EXPECT_FALSE(desktop->isFocused(native(window)));
    EXPECT_FALSE(desktop->isFocused(nullptr));
}

TEST_F(X11DesktopTest, ACaptureSendsMotionOutsideOfTheWindowToIt)
{
    ASSERT_TRUE(server.act({"mousemove", "600", "500"}));
    EXPECT_EQ(windowOfMotion(), 0u);
    EXPECT_EQ(desktop->getCapture(), nullptr);
    desktop->setCapture(native(window));
    EXPECT_EQ(desktop->getCapture(), native(window));
    ASSERT_TRUE(server.act({"mousemove", "620", "510"}));
    EXPECT_EQ(windowOfMotion(), window);
    desktop->releaseCapture();
    EXPECT_EQ(desktop->getCapture(), nullptr);
    ASSERT_TRUE(server.act({"mousemove", "600", "500"}));
    EXPECT_EQ(windowOfMotion(), 0u);
}

TEST_F(X11DesktopTest, ACaptureEndsWithItsWindow)
{
    desktop->setCapture(native(window));
    xcb_unmap_window(connection, window);
    settle();
    EXPECT_EQ(desktop->getCapture(), nullptr);
    desktop->setCapture(native(window)); // is refused, as nobody can see it
    EXPECT_EQ(desktop->getCapture(), nullptr);
}

TEST_F(X11DesktopTest, ThePointerGoesWhereItIsSet)
{
    desktop->setPointer({123, 45});
    EXPECT_EQ(desktop->getPointer().x, 123);
    EXPECT_EQ(desktop->getPointer().y, 45);
    desktop->setPointer({1 << 20, -(1 << 20)}); // is held at the screen's edge
    EXPECT_EQ(desktop->getPointer().x, 799);
    EXPECT_EQ(desktop->getPointer().y, 0);
}

TEST_F(X11DesktopTest, AHiddenPointerIsNotDrawn)
{
    ASSERT_EQ(desktop->missing(), nullptr);
    auto const becomes = [this](int brightness)
    {
        for(int tries = 0; tries < 200; ++tries)
        {
            if(server.brightest(205, 105, 8) == brightness)
                return true;
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        }
        return false;
    };
    desktop->setPointer({200, 100});
    EXPECT_TRUE(becomes(255));
    desktop->showPointer(false);
    desktop->showPointer(false);
    EXPECT_TRUE(becomes(0));
    desktop->showPointer(true);
    EXPECT_TRUE(becomes(255));
    desktop->showPointer(true);
    desktop->showPointer(false);
    EXPECT_TRUE(becomes(0));
}

TEST_F(X11DesktopTest, AClientAreaHasItsSizeAndItsPlaceOnTheScreen)
{
    xcb_window_t const child = makeWindow(window, 10, 20, 50, 60);
    EXPECT_EQ(desktop->getClientSize(native(child)).width, 50);
    EXPECT_EQ(desktop->getClientSize(native(child)).height, 60);
    EXPECT_EQ(desktop->toScreen(native(child), {1, 2}).x, 111);
    EXPECT_EQ(desktop->toScreen(native(child), {1, 2}).y, 72);
}

TEST_F(X11DesktopTest, TheClockCountsNanoseconds)
{
    EXPECT_EQ(desktop->getTicksPerSecond(), 1000000000);
    Int64 const before = desktop->getTicks();
    EXPECT_LE(before, desktop->getTicks());
}

TEST_F(X11DesktopTest, AnUnknownWindowGivesNeutralAnswersAndNoErrorToTheHost)
{
    NativeWindow const unknown = native(0x1FFFFFF);
    EXPECT_FALSE(desktop->isFocused(unknown));
    desktop->setCapture(unknown);
    desktop->setCapture(nullptr);
    EXPECT_EQ(desktop->getCapture(), nullptr);
    EXPECT_EQ(desktop->getClientSize(unknown).width, 0);
    EXPECT_EQ(desktop->toScreen(unknown, {3, 4}).x, 3);
    EXPECT_EQ(windowOfMotion(), 0u); // fails on an error
}

TEST_F(X11DesktopTest, NothingHappensWhenTheServerIsGone)
{
    desktop->setCapture(native(window));
    desktop->showPointer(false);
    focus(window);
    ASSERT_TRUE(server.act({"keydown", "w"}));
    ASSERT_TRUE(isDown('W'));
    server.kill();
    EXPECT_FALSE(isDown('W'));
    EXPECT_FALSE(isDown(1));
    EXPECT_FALSE(desktop->isFocused(native(window)));
    EXPECT_EQ(desktop->getCapture(), nullptr);
    desktop->setCapture(native(window));
    desktop->releaseCapture();
    desktop->setPointer({1, 1});
    EXPECT_EQ(desktop->getPointer().x, 0);
    desktop->showPointer(true);
    EXPECT_EQ(desktop->getClientSize(native(window)).width, 0);
    EXPECT_EQ(desktop->toScreen(native(window), {3, 4}).y, 4);
    EXPECT_EQ(X11Desktop::create(connection), nullptr);
}

TEST_F(X11DesktopTest, AForgottenConnectionIsNotAskedAgain)
{
    desktop->setCapture(native(window));
    ASSERT_TRUE(server.act({"mousemove", "150", "100", "mousedown", "1"}));
    ASSERT_TRUE(isDown(1));
    desktop->forgetConnection();
    EXPECT_FALSE(isDown(1));
    EXPECT_EQ(desktop->getCapture(), nullptr);
    desktop->setPointer({1, 1});
    desktop->showPointer(false);
    EXPECT_EQ(desktop->getClientSize(native(window)).width, 0);
}

TEST(X11Desktop, NeedsAConnection)
{
    EXPECT_EQ(X11Desktop::create(nullptr), nullptr);
    xcb_connection_t *const failed = xcb_connect("no such display", nullptr);
    EXPECT_EQ(X11Desktop::create(failed), nullptr);
    xcb_disconnect(failed);
}
