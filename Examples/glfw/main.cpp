// A model in a window of GLFW. The left button orbits, the right one zooms, the middle one pans. A
// click prints what is under the pointer:
//   glfw-view FILE
#include <cstdio>
#include <memory>

#define GLFW_INCLUDE_NONE
#include <GLFW/glfw3.h>

#include "OSGCadTrackballEngine.h"
#include "OSGChangeList.h"
#include "OSGEventAdapter.h"
#include "OSGFrameDemand.h"
#include "OSGGLObjectStore.h"
#include "OSGPickResult.h"
#include "OSGPickTool.h"
#include "OSGSceneFileHandler.h"
#include "OSGSceneView.h"
#include "OSGSystem.h"
#include "OSGThread.h"

namespace
{
struct Host
{
    OSG::SceneView view;
    OSG::EventAdapter events{view.getNavigator()};
    OSG::FrameDemand demand;
};
Host &host(GLFWwindow *window) { return *static_cast<Host *>(glfwGetWindowUserPointer(window)); }

void print_hits(OSG::SceneView &view, OSG::PointerTool::Event const &click)
{
    auto const area = OSG::pixel_square(click.pixel[0], click.pixel[1], 2 * click.scale);
    auto const region = OSG::PickRegion::ofRectangle(view.getView(), area, view.getBounds());
    if(!region)
        return;
    OSG::PickSelector selector(view.getScene());
    for(OSG::PickResult const &hit : OSG::pick_results(selector, *region))
        std::printf("%s, triangle %d\n", hit.path.text(view.getScene()).c_str(), hit.primitive);
    std::fflush(stdout);
}

void on_button(GLFWwindow *window, int button, int action, int)
{
    OSG::Int16 const buttons[] = {0, 2, 1}; // GLFW has the right button before the middle one
    if(button > 2)
        return;
    double x = 0;
    double y = 0;
    glfwGetCursorPos(window, &x, &y);
    if(action == GLFW_PRESS)
        host(window).events.buttonPress(buttons[button], x, y);
    else
        host(window).events.buttonRelease(buttons[button], x, y);
}

void draw_when_needed(GLFWwindow *window)
{
    auto &[view, events, demand] = host(window);
    int width = 0;
    int height = 0;
    glfwGetFramebufferSize(window, &width, &height);
    int units = 1; // of the toolkit across the window: pixels on some systems
    glfwGetWindowSize(window, &units, nullptr);
    if(units > 0)
        events.setContentScale(double(width) / units);
    view.setSize(width, height);
    events.frame();
    view.update();
    OSG::Thread::getCurrentChangeList()->commitChanges();
    if(demand.take(*view.getViewport()))
    {
        view.getViewport()->activateSize();
        view.draw();
        glfwSwapBuffers(window);
    }
}

void run(GLFWwindow *window, OSG::Node *scene)
{
    Host all;
    OSG::UnrecordedRefPtr<OSG::NavigatorEngine> const engine(OSG::CadTrackballEngine::create(0.8f));
    all.view.setScene(scene);
    all.view.setEngine(engine);
    all.events.setTool(std::make_shared<OSG::NavigateTool>([&](auto const &click)
                                                           { print_hits(all.view, click); }));
    glfwMakeContextCurrent(window);
    glfwSetWindowUserPointer(window, &all);
    glfwSetMouseButtonCallback(window, on_button);
    glfwSetCursorPosCallback(window, [](GLFWwindow *w, double x, double y)
                             { host(w).events.pointerMove(x, y); });
    glfwSetWindowRefreshCallback(window, [](GLFWwindow *w) { host(w).demand.request(); });
    draw_when_needed(window);
    for(all.view.fit(); !glfwWindowShouldClose(window); glfwWaitEvents())
        draw_when_needed(window);
    OSG::GLObjectStore::releaseCurrent();
}
} // namespace

int main(int argc, char **argv)
{
    if(argc != 2)
    {
        std::fprintf(stderr, "usage: glfw-view FILE\n");
        return 2;
    }
    OSG::startUp();
    {
        OSG::UnrecordedRefPtr<OSG::Node> const scene(
            OSG::SceneFileHandlerBase::the()->read(argv[1]));
        GLFWwindow *window = nullptr;
        if(scene != nullptr && glfwInit() == GLFW_TRUE)
            window = glfwCreateWindow(800, 600, argv[1], nullptr, nullptr);
        if(window != nullptr)
            run(window, scene);
        glfwTerminate();
    }
    OSG::shutDown();
}
