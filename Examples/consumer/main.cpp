// Reads a scene and prints the nearest hit of each node that a box around the origin meets.
#include <cstdio>

#include "OSGFrustum.h"
#include "OSGNode.h"
#include "OSGSceneFileHandler.h"
#include "OSGSelectionAction.h"
#include "OSGSimpleSelectionFunctor.h"
#include "OSGSystem.h"

namespace
{
// Near side first, each side counter-clockwise from the left bottom; the near side looks towards
// +z.
OSG::Frustum box_around_origin(float half)
{
    OSG::Pnt3f const corners[8] = {
        {-half, -half, half},  {half, -half, half},  {half, half, half},  {-half, half, half},
        {-half, -half, -half}, {half, -half, -half}, {half, half, -half}, {-half, half, -half}};
    return OSG::Frustum(corners);
}

void print_hits(OSG::Node *scene)
{
    // The action walks the scene. The functor decides what is hit and keeps the hits. It must
    // outlive the walk.
    OSG::UnrecordedRefPtr<OSG::SelectionAction> const action(OSG::SelectionAction::create());
    OSG::SimpleSelectionFunctor functor(action, OSG::SelectionFunctor::SelectTriangles,
                                        OSG::SelectionFunctor::NearPlane);
    scene->updateVolume(); // the walk culls by the volumes and does not update them
    action->pushFrustum(box_around_origin(1.0f));
    action->apply(scene);
    for(auto const &hit : functor.hits(OSG::SelectionFunctor::FrontHits))
        std::printf("%g: triangle %d at %g %g %g\n", hit.distance, hit.index, hit.point[0],
                    hit.point[1], hit.point[2]);
}
} // namespace

int main(int argc, char **argv)
{
    OSG::startUp();
    int status = 1;
    {
        // Scene objects are reference-counted. This scope drops the scene before shutDown().
        OSG::UnrecordedRefPtr<OSG::Node> const scene(
            OSG::SceneFileHandlerBase::the()->read(argc > 1 ? argv[1] : "Models/pavilion.obj"));
        if(scene != nullptr)
        {
            print_hits(scene);
            status = 0;
        }
    }
    OSG::shutDown();
    return status;
}
