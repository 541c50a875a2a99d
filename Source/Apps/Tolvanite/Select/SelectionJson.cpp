#include "SelectionJson.h"

#include <cmath>

#include "OSGNodePath.h"
#include "ValueJson.h"

namespace Tool
{
namespace
{
using OSG::SelectionFunctor;

// Computed in double precision and rounded once, because far from the origin the distance is small
// compared with the coordinates.
float distance_between(OSG::Pnt3f const &a, OSG::Pnt3f const &b)
{
    return static_cast<float>(
        std::hypot(double(a[0]) - b[0], double(a[1]) - b[1], double(a[2]) - b[2]));
}

// Writes the members "eyeDistance" and "point" of a hit.
void write_place(JsonWriter &json, SelectionFunctor::HitT const &hit,
                 std::optional<OSG::Pnt3f> const &eye)
{
    if(eye)
        json.key("eyeDistance");
    if(eye && hit.hasPoint)
        json.value(distance_between(hit.point, *eye));
    else if(eye)
        json.null();
    if(hit.hasPoint)
        write_tuple(json, "point", hit.point, 3);
    else
        json.key("point").null();
}

void write_hit(JsonWriter &json, SelectionFunctor::HitT const &hit,
               std::optional<OSG::Pnt3f> const &eye, OSG::Node const *root)
{
    json.beginObject()
        .member("node", OSG::node_path(root, hit.visitSubTreeNodes, hit.node))
        .key("name");
    write_name(json, hit.node);
    json.member("index", hit.index).member("distance", hit.distance);
    write_place(json, hit, eye);
    write_tuple(json, "normal", hit.normal, 3);
    json.key("matrix");
    write_matrix(json, hit.matrix);
    json.key("visitSubTree").beginArray();
    for(std::string const &path : OSG::visiting_paths(root, hit.visitSubTreeNodes))
        json.value(path);
    json.endArray().endObject();
}
} // namespace

void write_hits(JsonWriter &json, Selection const &selection, OSG::Node const *root)
{
    json.key("hits").beginArray();
    std::size_t count = 0;
    if(selection.hits != nullptr)
    {
        count = selection.hits->size();
        for(SelectionFunctor::HitT const &hit : *selection.hits)
            write_hit(json, hit, selection.eye, root);
    }
    json.endArray().member("count", count).member("seconds", selection.seconds);
}
} // namespace Tool
