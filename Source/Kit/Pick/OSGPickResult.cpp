#include "OSGPickResult.h"

#include <algorithm>
#include <cmath>
#include <unordered_map>

#include "OSGGeoToEntityAttachment.h"
#include "OSGGeometry.h"
#include "OSGName.h"
#include "OSGPartCursor.h"
#include "OSGRootPlaces.h"

namespace OSG
{
namespace
{
using HitT = SelectionFunctor::HitT;

std::string name_of(Node const &node)
{
    char const *const name = getName(&node);
    char const *const found = name != nullptr ? name : getName(node.getCore());
    return found != nullptr ? found : "";
}

UInt64 entity_in(AttachmentContainer const *container, Int32 primitive)
{
    if(container == nullptr)
        return 0;
    // Attachments of its group are told apart by their classes.
    for(Attachment *attachment : *container->getMFAttachments())
        if(auto const *const entities = dynamic_cast<GeoToEntityAttachment const *>(attachment))
            return entities->getEntFromIndex(static_cast<UInt32>(primitive));
    return 0;
}

UInt64 entity_of(Node const &node, Int32 primitive)
{
    UInt64 const entity = entity_in(&node, primitive);
    return entity != 0 ? entity : entity_in(node.getCore(), primitive);
}

// Normals go by the inverse transpose.
Vec3f normal_in_root(HitT const &hit)
{
    Matrix inverse;
    if(!inverse.invertFrom(hit.matrix))
        return {};
    Vec3d normal;
    for(UInt32 axis = 0; axis < 3; ++axis)
        for(UInt32 row = 0; row < 3; ++row)
            normal[axis] += Real64(inverse[axis][row]) * hit.normal[row];
    Real64 const length = normal.length();
    if(!(length > 0) || !std::isfinite(length))
        return {};
    normal /= length;
    return Vec3f(static_cast<Real32>(normal[0]), static_cast<Real32>(normal[1]),
                 static_cast<Real32>(normal[2]));
}

/// Measures from the near side of a region.
class Depths
{
  public:
    explicit Depths(Frustum const &solid)
        : _near(half_space_through(solid.nlb(), solid.nlt(), solid.nrb()))
        , _length(_near.normal.length())
    {
    }

    Real64 of(Pnt3d const &point) const { return _length > 0 ? _near.at(point) / _length : 0; }

    // The foremost corner of the triangle that is hit.
    Pnt3f foremostCorner(HitT const &hit) const
    {
        auto const &geometry = static_cast<Geometry const &>(*hit.node->getCore());
        PartCursor<TriangleRule> it(geometry);
        while(!it.atEnd() && static_cast<Int32>(it.getIndex()) != hit.index)
            it.next();
        if(it.atEnd())
            return hit.point;
        RootPlaces const places(hit.matrix);
        Pnt3d foremost = places.of(it.getPosition(0));
        for(int corner = 1; corner < 3; ++corner)
        {
            Pnt3d const point = places.of(it.getPosition(corner));
            foremost = of(point) < of(foremost) ? point : foremost;
        }
        return Pnt3f(static_cast<Real32>(foremost[0]), static_cast<Real32>(foremost[1]),
                     static_cast<Real32>(foremost[2]));
    }

  private:
    HalfSpace _near;
    Real64 _length;
};

PickResult result_of(HitT const &hit, SelectionFunctor::SelectionType kind, Depths const &depths,
                     PickRegion const &region)
{
    PickResult result;
    result.path = NodePath(hit.node, hit.visitSubTreeNodes);
    result.primitive = hit.index;
    result.kind = kind;
    result.point = hit.hasPoint ? hit.point : depths.foremostCorner(hit);
    result.depth = depths.of(wide(result.point));
    if(region.getEye())
        result.eyeDistance = static_cast<Real32>((wide(result.point) - wide(*region.getEye())).length());
    result.name = name_of(*hit.node);
    result.entity = entity_of(*hit.node, hit.index);
    result.normal = normal_in_root(hit);
    return result;
}

/// Keeps the foremost result of each path.
class Foremost
{
  public:
    void take(PickResult &&result)
    {
        auto const [place, isNew] = _places.try_emplace(result.path, _results.size());
        if(isNew)
            _results.push_back(std::move(result));
        else if(result.depth < _results[place->second].depth)
            _results[place->second] = std::move(result);
    }

    std::vector<PickResult> sorted()
    {
        std::stable_sort(_results.begin(), _results.end(), [](PickResult const &a, PickResult const &b)
                         { return a.depth < b.depth; });
        return std::move(_results);
    }

  private:
    std::unordered_map<NodePath, std::size_t, NodePathHash> _places;
    std::vector<PickResult> _results;
};
} // namespace

// A hit does not say its kind, so each kind is asked for by itself.
std::vector<PickResult> pick_results(PickSelector &selector, PickRegion const &region,
                                     PickSettings const &settings)
{
    Depths const depths(region.getSolid());
    Foremost foremost;
    PickSettings one = settings;
    one.plane = SelectionFunctor::NearPlane;
    one.hits = SelectionFunctor::AllHits;
    one.fast = false;
    for(auto const kind : {SelectionFunctor::SelectTriangles, SelectionFunctor::SelectLines,
                           SelectionFunctor::SelectPoints})
    {
        if((settings.kinds & kind) == 0)
            continue;
        one.kinds = kind;
        for(HitT const &hit : selector.select(region, one))
            foremost.take(result_of(hit, kind, depths, region));
    }
    return foremost.sorted();
}
} // namespace OSG
