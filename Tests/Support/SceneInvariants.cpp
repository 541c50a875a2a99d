#include "SceneInvariants.h"

#include "OSGGeometryIterators.h"
#include "OSGTraverse.h"

namespace OSG::Test
{
namespace
{
// Reads the value, so that a sanitizer finds an index beyond the array.
void touch(Pnt3f const &point, Vec3f const &vector)
{
    [[maybe_unused]] static volatile Real32 sink;
    sink = point[0] + vector[0];
}

template <class Iterator>
std::string fault_of_parts(Iterator it, Iterator const &end, UInt32 positions, int corners)
{
    for(Int32 number = 0; it != end; ++it, ++number)
    {
        if(it.getIndex() != number)
            return "running number " + std::to_string(it.getIndex()) + " in place of " +
                   std::to_string(number);
        for(int corner = 0; corner < corners; ++corner)
        {
            if(it.getPositionIndex(corner) >= positions)
                return "position " + std::to_string(it.getPositionIndex(corner)) + " of " +
                       std::to_string(positions);
            touch(it.getPosition(corner), it.getNormal(corner));
        }
    }
    return "";
}

std::string fault_of_primitives(Geometry const &geometry)
{
    PrimitiveIterator const end = geometry.endPrimitives();
    for(PrimitiveIterator it = geometry.beginPrimitives(); it != end; ++it)
    {
        if(it.getAvailable() > it.getLength())
            return "more vertices than the primitive has";
        for(UInt32 i = 0; i < it.getAvailable(); ++i)
            touch(it.getPosition(static_cast<Int32>(i)), it.getNormal(static_cast<Int32>(i)));
    }
    return "";
}

std::string missing_part(Geometry const &geometry)
{
    if(geometry.getPositions() == nullptr)
        return "no positions";
    if(geometry.getMaterial() == nullptr)
        return "no material";
    return geometry.getNormals() == nullptr ? "no normals" : "";
}

std::string fault_of_geometry(Geometry const &geometry, Parts parts)
{
    std::string fault = parts == Parts::Any ? "" : missing_part(geometry);
    GeoVectorProperty const *const array = geometry.getPositions();
    UInt32 const positions = array != nullptr ? array->size() : 0;
    if(fault.empty())
        fault = fault_of_parts(geometry.beginTriangles(), geometry.endTriangles(), positions, 3);
    if(fault.empty())
        fault = fault_of_parts(geometry.beginLines(), geometry.endLines(), positions, 2);
    return !fault.empty() ? fault : fault_of_primitives(geometry);
}
} // namespace

std::string fault_of_scene(Node *root, Parts parts)
{
    if(root == nullptr)
        return "";
    root->updateVolume();
    std::string fault;
    traverse(root,
             [&fault, parts](Node *node)
             {
                 if(!node->getVolume().isValid())
                     fault = "a volume that is out of date";
                 auto const *const geometry = dynamic_cast<Geometry const *>(node->getCore());
                 if(fault.empty() && geometry != nullptr)
                     fault = fault_of_geometry(*geometry, parts);
                 return fault.empty() ? ActionBase::Continue : ActionBase::Skip;
             });
    return fault;
}
} // namespace OSG::Test
