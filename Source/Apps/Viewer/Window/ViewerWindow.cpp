#include "ViewerWindow.h"

#include <tuple>

#include "KeyCodes.h"
#include "OSGNavigatorEvent.h"
#include "OSGPointerTool.h"
#include "OSGX11Desktop.h"

// After our headers: those of X define macros such as ButtonPress.
// clang-format off
#include <imgui.h>
#include <imgui_impl_glfw.h>
#define GLFW_INCLUDE_NONE
#include <GLFW/glfw3.h>
#ifdef VIEWER_WITH_X11
#define GLFW_EXPOSE_NATIVE_X11
#include <GLFW/glfw3native.h>
#include <X11/Xlib-xcb.h>
#endif
// clang-format on

namespace Viewer
{
namespace
{
// What the toolkit complained of last.
std::string &complaint()
{
    static std::string text;
    return text;
}

GLFWwindow *create(ViewerWindow::Size size, int samples)
{
    glfwWindowHint(GLFW_CONTEXT_VERSION_MAJOR, 2);
    glfwWindowHint(GLFW_CONTEXT_VERSION_MINOR, 1);
    glfwWindowHint(GLFW_DEPTH_BITS, 24);
    glfwWindowHint(GLFW_SAMPLES, samples);
    return glfwCreateWindow(size.width, size.height, "Tolvanite", nullptr, nullptr);
}

OSG::Int16 navigator_button(int button)
{
    switch(button)
    {
    case GLFW_MOUSE_BUTTON_LEFT:
        return OSG::NavigatorEvent::LeftButton;
    case GLFW_MOUSE_BUTTON_MIDDLE:
        return OSG::NavigatorEvent::MiddleButton;
    case GLFW_MOUSE_BUTTON_RIGHT:
        return OSG::NavigatorEvent::RightButton;
    default: // behind the codes of the wheel
        return static_cast<OSG::Int16>(OSG::NavigatorEvent::WheelDown + button);
    }
}
} // namespace

WindowListener::~WindowListener() = default;

/// The panels hear of each event first; they decide by themselves what is theirs.
struct ViewerWindow::Callbacks
{
    static ViewerWindow &self(GLFWwindow *window)
    {
        auto &viewer = *static_cast<ViewerWindow *>(glfwGetWindowUserPointer(window));
        viewer._hasEvent = true;
        return viewer;
    }
    template <class Tell>
    static void tell(GLFWwindow *window, Tell const &tell)
    {
        if(WindowListener *const listener = self(window)._listener)
            tell(*listener);
    }

    static void move(GLFWwindow *window, double x, double y)
    {
        self(window)._toldPointer = {x, y};
        tell(window, [=](WindowListener &listener) { listener.pointerMoved(x, y); });
    }
    static void button(GLFWwindow *window, int button, int action, int modifiers)
    {
        ImGui_ImplGlfw_MouseButtonCallback(window, button, action, modifiers);
        tell(window,
             [=](WindowListener &listener)
             {
                 if(action == GLFW_PRESS)
                     listener.buttonPressed(navigator_button(button), tool_modifiers(modifiers));
                 else
                     listener.buttonReleased(navigator_button(button), tool_modifiers(modifiers));
             });
    }
    static void scroll(GLFWwindow *window, double x, double y)
    {
        ImGui_ImplGlfw_ScrollCallback(window, x, y);
        tell(window, [=](WindowListener &listener) { listener.wheelTurned(y); });
    }
    static void key(GLFWwindow *window, int key, int scancode, int action, int modifiers)
    {
        self(window).tellPanels({key, scancode, action, modifiers});
        OSG::Int16 const code = virtual_key(key);
        tell(window,
             [=](WindowListener &listener)
             {
                 if(code != 0 && action == GLFW_RELEASE)
                     listener.keyReleased(code, tool_modifiers(modifiers));
                 else if(code != 0)
                     listener.keyPressed(code, tool_modifiers(modifiers));
             });
    }
    static void character(GLFWwindow *window, unsigned int code)
    {
        ImGui_ImplGlfw_CharCallback(window, code);
        tell(window, [=](WindowListener &listener) { listener.characterTyped(code); });
    }
    static void focus(GLFWwindow *window, int isFocused)
    {
        ImGui_ImplGlfw_WindowFocusCallback(window, isFocused);
        tell(window,
             [=](WindowListener &listener)
             {
                 if(isFocused == GLFW_FALSE)
                     listener.focusLost();
             });
    }
    static void enter(GLFWwindow *window, int isIn)
    {
        ImGui_ImplGlfw_CursorEnterCallback(window, isIn);
        self(window);
    }
    static void drop(GLFWwindow *window, int count, char const **paths)
    {
        std::vector<std::string> const files(paths, paths + count);
        tell(window, [&files](WindowListener &listener) { listener.filesDropped(files); });
    }
};

std::unique_ptr<ViewerWindow> ViewerWindow::open(Size size, int samples, std::string &missing)
{
    glfwSetErrorCallback([](int, char const *text) { complaint() = text; });
    GLFWwindow *window = nullptr;
    if(glfwInit() == GLFW_TRUE)
    {
        window = create(size, samples);
        if(window == nullptr && samples > 0)
            window = create(size, 0);
    }
    if(window != nullptr)
        return std::unique_ptr<ViewerWindow>(new ViewerWindow(window));
    missing = complaint();
    glfwTerminate();
    return nullptr;
}

ViewerWindow::ViewerWindow(GLFWwindow *window)
    : _window(window)
{
    glfwMakeContextCurrent(_window);
    glfwSwapInterval(1);
    glfwSetWindowUserPointer(_window, this);
    ImGui::CreateContext();
    ImGui_ImplGlfw_InitForOpenGL(_window, false);
    listen();
}

ViewerWindow::~ViewerWindow()
{
#ifdef VIEWER_WITH_X11
    if(auto const x11 = std::dynamic_pointer_cast<OSG::X11Desktop>(_desktop))
        x11->forgetConnection();
#endif
    ImGui_ImplGlfw_Shutdown();
    ImGui::DestroyContext();
    glfwDestroyWindow(_window);
    glfwTerminate();
}

void ViewerWindow::listen()
{
    glfwSetCursorPosCallback(_window, Callbacks::move);
    glfwSetMouseButtonCallback(_window, Callbacks::button);
    glfwSetScrollCallback(_window, Callbacks::scroll);
    glfwSetKeyCallback(_window, Callbacks::key);
    glfwSetCharCallback(_window, Callbacks::character);
    glfwSetWindowFocusCallback(_window, Callbacks::focus);
    glfwSetCursorEnterCallback(_window, Callbacks::enter);
    glfwSetDropCallback(_window, Callbacks::drop);
    glfwSetWindowRefreshCallback(_window, [](GLFWwindow *window) { Callbacks::self(window); });
    glfwSetFramebufferSizeCallback(_window,
                                   [](GLFWwindow *window, int, int) { Callbacks::self(window); });
    glfwSetMonitorCallback([](GLFWmonitor *monitor, int event)
                           { ImGui_ImplGlfw_MonitorCallback(monitor, event); });
}

ViewerWindow::Size ViewerWindow::getPixels() const
{
    Size size;
    glfwGetFramebufferSize(_window, &size.width, &size.height);
    return glfwGetWindowAttrib(_window, GLFW_ICONIFIED) == GLFW_TRUE ? Size() : size;
}

double ViewerWindow::getPixelScale() const
{
    int units = 0;
    glfwGetWindowSize(_window, &units, nullptr);
    int pixels = 0;
    glfwGetFramebufferSize(_window, &pixels, nullptr);
    return units > 0 && pixels > 0 ? double(pixels) / units : 1;
}

float ViewerWindow::getContentScale() const
{
    float scale = 1;
    glfwGetWindowContentScale(_window, &scale, nullptr);
    return scale > 0 ? scale : 1;
}

void ViewerWindow::getPointer(double &x, double &y) const { glfwGetCursorPos(_window, &x, &y); }

void ViewerWindow::getPointerOfEvent(double &x, double &y) const
{
    if(_toldPointer)
        std::tie(x, y) = *_toldPointer;
    else
        getPointer(x, y);
}

void ViewerWindow::setTitle(std::string const &title)
{
    glfwSetWindowTitle(_window, title.c_str());
}

bool ViewerWindow::isClosing() const { return glfwWindowShouldClose(_window) == GLFW_TRUE; }

void ViewerWindow::stay() { glfwSetWindowShouldClose(_window, GLFW_FALSE); }

void ViewerWindow::close() { glfwSetWindowShouldClose(_window, GLFW_TRUE); }

// Panels look at the state of the keys once a frame: a key that has gone down and up since then was
// never down. It goes up for them in the next frame.
void ViewerWindow::tellPanels(KeyEvent const &event)
{
    // Keys go up in their order, so that Control is still down for a quick Ctrl+A.
    bool const isLate = event.action == GLFW_RELEASE &&
                        (_pressedKeys.count(event.key) != 0 || !_lateReleases.empty());
    if(event.action == GLFW_PRESS)
        _pressedKeys.insert(event.key);
    if(isLate)
        _lateReleases.push_back(event);
    else
        ImGui_ImplGlfw_KeyCallback(_window, event.key, event.scancode, event.action,
                                   event.modifiers);
}

void ViewerWindow::tellLateReleases()
{
    for(KeyEvent const &event : _lateReleases)
        ImGui_ImplGlfw_KeyCallback(_window, event.key, event.scancode, event.action,
                                   event.modifiers);
    _lateReleases.clear();
    _pressedKeys.clear();
}

bool ViewerWindow::handleEvents(std::optional<double> seconds)
{
    _hasEvent = false;
    tellLateReleases();
    if(!seconds)
        glfwWaitEvents();
    else if(*seconds > 0)
        glfwWaitEventsTimeout(*seconds);
    else
        glfwPollEvents();
    return _hasEvent;
}

void ViewerWindow::wake() { glfwPostEmptyEvent(); }

void ViewerWindow::swap() { glfwSwapBuffers(_window); }

std::shared_ptr<OSG::Desktop> ViewerWindow::makeDesktop()
{
#ifdef VIEWER_WITH_X11
    if(Display *const display = glfwGetX11Display())
        _desktop = OSG::X11Desktop::create(XGetXCBConnection(display));
#endif
    return _desktop;
}

OSG::NativeWindow ViewerWindow::getHandle() const
{
#ifdef VIEWER_WITH_X11
    return reinterpret_cast<OSG::NativeWindow>(glfwGetX11Window(_window));
#else
    return nullptr;
#endif
}
} // namespace Viewer
