// Writes a 3DS file, reads it by the loader and the lib3ds that it was built with, and prints how
// many triangles there are and where the first corner of the first one lies.

#include <cstdio>
#include <sstream>

#include "Chunks3DS.h"
#include "OSGGeometryIterators.h"
#include "OSGHelper3DS.h"
#include "OSGNodeWalker.h"
#include "OSGSystem.h"

using namespace OSG;
using namespace OSG::Test;

namespace
{
struct Triangles
{
    std::size_t count = 0;
    Pnt3f first;

    bool enter(Node *node)
    {
        auto const *const geometry = dynamic_cast<Geometry *>(node->getCore());
        if(geometry == nullptr)
            return true;
        if(count == 0)
            first = geometry->beginTriangles().getPosition(0);
        count += geometry->getLengths()->size();
        return true;
    }
    void leave(Node *) {}
};
} // namespace

int main()
{
    startUp();
    {
        std::string const mesh =
            mesh_3ds("m", points_3ds({5, 0, 0, 6, 0, 0, 5, 1, 0, 6, 1, 0}) +
                              faces_3ds({{{0, 1, 2}}, {{1, 3, 2}}},
                                        face_material_3ds("red", {0}) + smoothing_3ds({1, 2})));
        std::string const node = instance_3ds(
            0, "m", NoParent3DS, pivot_3ds({1, 0, 0}) + track_3ds(0xB020, {{0, {10, 20, 30}}}));
        std::istringstream in(file_3ds(material_3ds("red", color_3ds(0xA020, {1, 0, 0})) + mesh,
                                       node + camera_3ds(1, "c", 0)));
        Helper3DS helper(in);
        UnrecordedRefPtr<Node> const scene(helper());
        Triangles triangles;
        walk_children(scene, triangles);
        std::printf("%zu triangles from %g %g %g\n", triangles.count, triangles.first[0],
                    triangles.first[1], triangles.first[2]);
    }
    shutDown();
}
