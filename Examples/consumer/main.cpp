// Reads a scene and prints what a box around its origin meets, the nearest hit of each node.
#include "OSGFrustum.h"
#include "OSGInit.h"
#include "OSGNode.h"
#include "OSGSceneFileHandler.h"
#include "OSGSelectionAction.h"
#include "OSGSimpleSelectionFunctor.h"

#include <cstdio>

namespace
{

// Corners from near to far, each face counter-clockwise; the near side looks towards +z.
OSG::Frustum box_around_origin(float half)
{
    OSG::Pnt3f const corners[8] = {
        {-half, -half, half},  {half, -half, half},  {half, half, half},  {-half, half, half},
        {-half, -half, -half}, {half, -half, -half}, {half, half, -half}, {-half, half, -half}};
    return OSG::Frustum(corners);
}

void print_hits(OSG::Node *scene)
{
    auto action = OSG::SelectionAction::create();
    OSG::SimpleSelectionFunctor functor(action.get(), OSG::SelectionFunctor::SelectTriangles,
                                        OSG::SelectionFunctor::NearPlane);
    action->pushFrustum(box_around_origin(1.0f));
    action->apply(scene);
    for(auto const &hit : functor.hits(OSG::SelectionFunctor::FrontHits))
        std::printf("triangle %d at %g %g %g\n", hit.index, hit.point[0], hit.point[1],
                    hit.point[2]);
}

} // namespace

int main(int argc, char **argv)
{
    OSG::startUp();
    {
        OSG::NodeUnrecPtr scene =
            OSG::SceneFileHandler::the()->read(argc > 1 ? argv[1] : "Models/pavilion.obj");
        if(scene != nullptr)
            print_hits(scene);
    }
    OSG::shutDown();
}
