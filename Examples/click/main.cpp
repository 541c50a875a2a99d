// Prints what a click at a pixel hits in a window that shows a scene:
//   click FILE X Y
#include <cstdio>
#include <cstdlib>

#include "OSGName.h"
#include "OSGNode.h"
#include "OSGPickVolume.h"
#include "OSGSceneFileHandler.h"
#include "OSGSelectionAction.h"
#include "OSGSimpleSelectionFunctor.h"
#include "OSGSystem.h"

namespace
{
// The view of the window: an eye in front of the model's middle, 1280 by 720 pixels.
OSG::WindowView const View = {.from = {1.f, 1.7f, 12.f},
                              .at = {0.f, 0.95f, 0.f},
                              .up = {0.f, 1.f, 0.f},
                              .fieldOfView = 30.f,
                              .width = 1280,
                              .height = 720};

void print_hits(OSG::Node *scene, float x, float y)
{
    // The walk culls by the volumes, and the near and far planes are computed from the scene's
    // volume.
    scene->updateVolume();
    auto const volume = OSG::pick_volume(View, OSG::pixel_square(x, y, 2.f), scene->getVolume());
    if(!volume)
        return; // no part of the scene is in front of the eye

    // The action walks the scene. The functor decides what is hit and keeps the hits. It must
    // outlive the walk.
    OSG::UnrecordedRefPtr<OSG::SelectionAction> const action(OSG::SelectionAction::create());
    OSG::SimpleSelectionFunctor functor(action, OSG::SelectionFunctor::SelectTriangles,
                                        OSG::SelectionFunctor::NearPlane);
    action->pushFrustum(*volume);
    action->apply(scene);
    for(auto const &hit : functor.hits(OSG::SelectionFunctor::FrontHits))
    {
        char const *const name = OSG::getName(hit.node);
        std::printf("%s: triangle %d, %g from the eye\n", name != nullptr ? name : "a node",
                    hit.index, (hit.point - View.from).length());
    }
}
} // namespace

int main(int argc, char **argv)
{
    if(argc != 4)
    {
        std::fprintf(stderr, "usage: click FILE X Y\n");
        return 2;
    }
    OSG::startUp();
    int status = EXIT_FAILURE;
    {
        // Scene objects are reference-counted. This scope drops the scene before shutDown().
        OSG::UnrecordedRefPtr<OSG::Node> const scene(
            OSG::SceneFileHandlerBase::the()->read(argv[1]));
        if(scene != nullptr)
        {
            print_hits(scene, std::strtof(argv[2], nullptr), std::strtof(argv[3], nullptr));
            status = EXIT_SUCCESS;
        }
    }
    OSG::shutDown();
    return status;
}
