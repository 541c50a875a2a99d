// Prints what lies under a pixel of a window that shows a model, the foremost first:
//   click FILE X Y
#include <cstdio>
#include <cstdlib>

#include "OSGPickResult.h"
#include "OSGSceneFileHandler.h"
#include "OSGSystem.h"

int main(int argc, char **argv)
{
    if(argc != 4)
    {
        std::fprintf(stderr, "usage: click FILE X Y\n");
        return 2;
    }
    OSG::startUp();
    if(OSG::UnrecordedRefPtr<OSG::Node> const scene{
           OSG::SceneFileHandlerBase::the()->read(argv[1])})
    {
        // The view of a window of 1280 by 720 pixels: eye, point looked at, up, angle.
        OSG::WindowView const view{{1, 1.7f, 12}, {0, 0.95f, 0}, {0, 1, 0}, 30, 1280, 720};
        auto const area =
            OSG::pixel_square(std::strtof(argv[2], nullptr), std::strtof(argv[3], nullptr), 2);
        OSG::PickSelector selector(scene);
        if(auto const region = OSG::PickRegion::ofRectangle(view, area, OSG::bounds_of(scene)))
        {
            for(OSG::PickResult const &hit : OSG::pick_results(selector, *region))
                std::printf("%s: triangle %d, %g from the eye\n", hit.name.c_str(), hit.primitive,
                            *hit.eyeDistance);
        }
    }
    OSG::shutDown();
}
