// A model in a window of GLFW. The left button orbits, the right one zooms, the middle one pans. A
// click prints what is under the pointer:
//   glfw-view FILE
#include <cstdio>
#include <memory>

#define GLFW_INCLUDE_NONE
#include <GLFW/glfw3.h>

#include "OSGCadTrackballEngine.h"
#include "OSGEventAdapter.h"
#include "OSGFrameDemand.h"
#include "OSGGLObjectStore.h"
#include "OSGPickSelector.h"
#include "OSGPickTool.h"
#include "OSGSceneFileHandler.h"
#include "OSGSceneView.h"
#include "OSGSystem.h"

namespace
{
struct Host
{
    OSG::SceneView view;
    OSG::EventAdapter events{view.getNavigator()};
    OSG::FrameDemand demand;
};
Host &host(GLFWwindow *window) { return *static_cast<Host *>(glfwGetWindowUserPointer(window)); }

void print_hits(OSG::SceneView &view, OSG::Pnt2f const &pixel)
{
    auto const region = OSG::PickRegion::ofRectangle(
        view.getView(), OSG::pixel_square(pixel[0], pixel[1], 2), view.getBounds());
    if(!region)
        return;
    OSG::PickSelector selector(view.getScene());
    for(auto const &hit : selector.select(*region, {}))
        std::printf("%s, triangle %d\n",
                    OSG::NodePath(hit.node, hit.visitSubTreeNodes).text(view.getScene()).c_str(),
                    hit.index);
    std::fflush(stdout);
}

void take_events(GLFWwindow *window)
{
    glfwSetCursorPosCallback(window, [](GLFWwindow *w, double x, double y)
                             { host(w).events.pointerMove(x, y); });
    glfwSetMouseButtonCallback(
        window,
        [](GLFWwindow *w, int glfwButton, int action, int)
        {
            double x = 0;
            double y = 0;
            glfwGetCursorPos(w, &x, &y);
            // GLFW has the right button before the middle one.
            OSG::Int16 const buttons[] = {OSG::NavigatorEvent::LeftButton,
                                          OSG::NavigatorEvent::RightButton,
                                          OSG::NavigatorEvent::MiddleButton};
            if(glfwButton > 2)
                return;
            if(action == GLFW_PRESS)
                host(w).events.buttonPress(buttons[glfwButton], x, y);
            else
                host(w).events.buttonRelease(buttons[glfwButton], x, y);
        });
    glfwSetScrollCallback(window,
                          [](GLFWwindow *w, double, double steps)
                          {
                              double x = 0;
                              double y = 0;
                              glfwGetCursorPos(w, &x, &y);
                              host(w).events.wheel(steps, x, y);
                          });
    glfwSetWindowRefreshCallback(window, [](GLFWwindow *w) { host(w).demand.request(); });
}

void run(GLFWwindow *window, OSG::Node *scene)
{
    Host all;
    OSG::UnrecordedRefPtr<OSG::NavigatorEngine> const engine(OSG::CadTrackballEngine::create(0.8f));
    glfwSetWindowUserPointer(window, &all);
    take_events(window);
    all.view.setScene(scene);
    all.view.setEngine(engine);
    all.events.setTool(std::make_shared<OSG::NavigateTool>(
        [&](OSG::PointerTool::Event const &click) { print_hits(all.view, click.pixel); }));
    for(bool isFirst = true; !glfwWindowShouldClose(window); isFirst = false)
    {
        int width = 0;
        int height = 0;
        int units = 1; // of the toolkit, which are pixels on some systems
        glfwGetFramebufferSize(window, &width, &height);
        glfwGetWindowSize(window, &units, nullptr);
        if(units > 0)
            all.events.setContentScale(double(width) / units);
        all.view.setSize(width, height);
        if(isFirst)
            all.view.fit();
        all.events.frame();
        if(all.demand.take(*all.view.getViewport()))
        {
            all.view.draw();
            glfwSwapBuffers(window);
        }
        glfwWaitEventsTimeout(all.events.isDragging() ? 0.01 : 1);
    }
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
    int status = 1;
    {
        OSG::UnrecordedRefPtr<OSG::Node> const scene(
            OSG::SceneFileHandlerBase::the()->read(argv[1]));
        GLFWwindow *window = nullptr;
        if(scene != nullptr && glfwInit() == GLFW_TRUE)
            window = glfwCreateWindow(800, 600, argv[1], nullptr, nullptr);
        if(window != nullptr)
        {
            glfwMakeContextCurrent(window);
            run(window, scene);
            status = 0;
        }
        glfwTerminate();
    }
    OSG::shutDown();
    return status;
}
