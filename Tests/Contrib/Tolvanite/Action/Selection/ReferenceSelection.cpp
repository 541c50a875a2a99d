#include "ReferenceSelection.h"

#include "OSGConstantSizeTransform.h"

namespace OSG::Test
{
namespace
{
// --- one geometry ---

bool out_of_one_plane(std::vector<Pnt3f> const &points, PlaneArray const &planes)
{
    for(Plane const &plane : planes)
    {
        int inside = 0;
        for(Pnt3f const &point : points)
            inside += plane.isInHalfSpace(point) ? 1 : 0;
        if(inside == 0)
            return true;
    }
    return false;
}

bool all_inside(std::vector<Pnt3f> const &points, PlaneArray const &planes)
{
    for(Pnt3f const &point : points)
    {
        for(Plane const &plane : planes)
        {
            if(!plane.isInHalfSpace(point))
                return false;
        }
    }
    return true;
}

std::vector<Pnt3f> corners_of(GeometryParts const &parts, std::array<UInt32, 3> const &triangle)
{
    return {position_of(parts, triangle[0]), position_of(parts, triangle[1]),
            position_of(parts, triangle[2])};
}

SelectionClipping::SegmentList clipped(std::vector<Pnt3f> const &corners, PlaneArray const &planes)
{
    SelectionClipping::SegmentList polygon = loop(corners.data(), 3);
    SelectionClipping::clip_polygon_at_polytop(polygon, planes.data(), 6);
    return polygon;
}

void offer(ReferenceExtremes &r, Real32 d, Int32 index, Vec3f const &normal, Pnt3f const &point)
{
    if(r.nearDistance >= d)
    {
        r.nearDistance = d;
        r.nearIndex = index;
        r.nearNormal = normal;
        r.nearPoint = point;
    }
    if(d >= r.farDistance)
    {
        r.farDistance = d;
        r.farIndex = index;
        r.farNormal = normal;
        r.farPoint = point;
    }
}

void complete_normal(Vec3f &normal, std::vector<Pnt3f> const &triangle)
{
    for(int i = 0; i < 3; ++i)
    {
        if(!(std::abs(normal[static_cast<std::size_t>(i)]) <= 1e-6f))
            return;
    }
    Vec3f const n = (triangle[1] - triangle[0]).cross(triangle[2] - triangle[0]);
    Real32 const length = std::sqrt(n[0] * n[0] + n[1] * n[1] + n[2] * n[2]);
    normal = length < 1e-6f ? n : n * (1.f / length);
    if(std::isnan(normal[0]) || std::isnan(normal[1]) || std::isnan(normal[2]))
        normal = Vec3f();
}
} // namespace

ReferenceExtremes reference_triangles(GeometryParts const &parts, PlaneArray const &planes,
                                      Plane const &plane)
{
    ReferenceExtremes r;
    std::vector<Pnt3f> nearTriangle(3), farTriangle(3);
    Int32 index = -1;
    for(std::array<UInt32, 3> const &triangle : expand_parts(parts, triangles_of))
    {
        ++index;
        std::vector<Pnt3f> const corners = corners_of(parts, triangle);
        if(out_of_one_plane(corners, planes))
            continue;
        if(all_inside(corners, planes))
        {
            for(std::size_t v = 0; v < 3; ++v)
            {
                Real32 const d = plane.distance(corners[v]);
                Pnt3f const nearPoint = r.nearPoint;
                nearTriangle = r.nearDistance >= d ? corners : nearTriangle;
                farTriangle = d >= r.farDistance ? corners : farTriangle;
                offer(r, d, index, normal_of(parts, triangle[v]), corners[v]);
                r.nearPoint = nearPoint; // only crossing triangles set it
            }
            continue;
        }
        for(SelectionClipping::Segment const &segment : clipped(corners, planes))
        {
            Real32 const d = plane.distance(segment.first);
            nearTriangle = r.nearDistance >= d ? corners : nearTriangle;
            farTriangle = d >= r.farDistance ? corners : farTriangle;
            offer(r, d, index, Vec3f(), segment.first);
        }
    }
    complete_normal(r.nearNormal, nearTriangle);
    complete_normal(r.farNormal, farTriangle);
    return r;
}

ReferenceExtremes reference_lines(GeometryParts const &parts, PlaneArray const &planes,
                                  Plane const &plane)
{
    ReferenceExtremes r;
    Int32 index = -1;
    for(std::array<UInt32, 2> const &line : expand_parts(parts, lines_of))
    {
        ++index;
        std::vector<Pnt3f> ends = {position_of(parts, line[0]), position_of(parts, line[1])};
        if(out_of_one_plane(ends, planes) ||
           !SelectionClipping::line_intersect(ends.data(), planes.data(), 6))
            continue;
        for(std::size_t i = 0; i < 2; ++i)
            offer(r, plane.distance(ends[i]), index, normal_of(parts, line[i]), ends[i]);
    }
    return r;
}

ReferenceExtremes reference_points(GeometryParts const &parts, PlaneArray const &planes,
                                   Plane const &plane)
{
    ReferenceExtremes r;
    UInt32 start = 0;
    for(std::size_t i = 0; i < std::min(parts.types.size(), parts.lengths.size()); ++i)
    {
        for(UInt32 k = 0; k < parts.lengths[i] && parts.types[i] == PointsPrimitive; ++k)
        {
            if(!has_position(parts, start + k) ||
               !all_inside({position_of(parts, start + k)}, planes))
                continue;
            Pnt3f const point = position_of(parts, start + k);
            offer(r, plane.distance(point), static_cast<Int32>(i), normal_of(parts, start), point);
        }
        start += parts.lengths[i];
    }
    return r;
}

bool reference_has_triangle(GeometryParts const &parts, PlaneArray const &planes)
{
    for(std::array<UInt32, 3> const &triangle : expand_parts(parts, triangles_of))
    {
        std::vector<Pnt3f> const corners = corners_of(parts, triangle);
        if(!out_of_one_plane(corners, planes) &&
           (all_inside(corners, planes) || !clipped(corners, planes).empty()))
            return true;
    }
    return false;
}

// --- a scene ---

namespace
{
struct Walk
{
    SceneRecords const &scene;
    BuiltScene const &built;
    ReferenceSettings const &settings;
    Hits hits = {};
    std::vector<Node *> path = {};

    void record(int node, ReferenceExtremes const &r, Matrix const &toRoot)
    {
        HitT hit;
        hit.selectionType = settings.types;
        hit.node = built.nodes[static_cast<std::size_t>(node)];
        hit.matrix = toRoot;
        hit.visitSubTreeNodes = path;
        bool samePlace = true;
        for(std::size_t i = 0; i < 3; ++i)
            samePlace = samePlace && std::abs(r.nearPoint[i] - r.farPoint[i]) <= 1e-6f;
        if(r.nearIndex >= 0)
        {
            toRoot.multFull(r.nearPoint, hit.point);
            hit.normal = r.nearNormal;
            hit.index = r.nearIndex;
            hit.distance = r.nearDistance;
            hits.push_front(hit);
        }
        if(r.farIndex >= 0 && !samePlace)
        {
            toRoot.multFull(r.farPoint, hit.point);
            hit.normal = r.farNormal;
            hit.index = r.farIndex;
            hit.distance = r.farDistance;
            hits.push_back(hit);
        }
    }

    void shape(int node, Frustum const &frustum, Matrix const &toRoot)
    {
        SceneRecord const &entry = scene.nodes[static_cast<std::size_t>(node)];
        GeometryParts const &parts = scene.geometries[static_cast<std::size_t>(entry.geometry)];
        PlaneArray const planes = frustum.Volume().getPlanes();
        Plane const &plane = planes[settings.plane];
        if((settings.types & SelectionFunctor::SelectTriangles) != 0)
            record(node, reference_triangles(parts, planes, plane), toRoot);
        if((settings.types & SelectionFunctor::SelectLines) != 0)
            record(node, reference_lines(parts, planes, plane), toRoot);
        if((settings.types & SelectionFunctor::SelectPoints) != 0)
            record(node, reference_points(parts, planes, plane), toRoot);
    }

    /// Below two mirrors the box decides: between them all planes look outwards.
    bool box_is_outside(int node, Frustum const &frustum) const
    {
        BoxVolume const &box = built.nodes[static_cast<std::size_t>(node)]->getVolume();
        if(box.isInfinite())
            return false;
        std::vector<Pnt3f> corners;
        for(int i = 0; i < 8; ++i)
        {
            Pnt3f const &min = box.getMin();
            Pnt3f const &max = box.getMax();
            corners.emplace_back((i & 1 ? max : min)[0], (i & 2 ? max : min)[1],
                                 (i & 4 ? max : min)[2]);
        }
        return box.isEmpty() || out_of_one_plane(corners, frustum.Volume().getPlanes());
    }

    std::vector<int> chosen(SceneRecord const &entry) const
    {
        if(entry.mode == -2)
            return {};
        if(entry.mode != -1)
            return entry.children;
        if(entry.choices.empty())
            return settings.continueOnEmptyChoices ? entry.children : std::vector<int>();
        std::vector<int> result;
        for(UInt32 choice : entry.choices) // ascending, in these scenes
        {
            if(choice < entry.children.size())
                result.push_back(entry.children[choice]);
        }
        return result.empty() ? entry.children : result;
    }

    void visit(int node, Frustum frustum, Matrix toRoot)
    {
        SceneRecord const &entry = scene.nodes[static_cast<std::size_t>(node)];
        bool const gated =
            entry.kind != SceneRecord::Grouping && entry.kind != SceneRecord::Choosing;
        if((entry.mask & settings.mask) == 0 || (gated && box_is_outside(node, frustum)))
            return;
        if(entry.kind == SceneRecord::Moved || entry.kind == SceneRecord::Rendered)
        {
            Matrix inverse;
            inverse.invertFrom(entry.matrix);
            frustum.multFull(inverse);
            toRoot.mult(entry.matrix);
        }
        if(entry.kind == SceneRecord::Shape)
            shape(node, frustum, toRoot);
        if(entry.kind == SceneRecord::Visiting)
        {
            path.push_back(built.nodes[static_cast<std::size_t>(node)]);
            if(entry.target >= 0)
                visit(entry.target, frustum, toRoot);
            path.pop_back();
            return;
        }
        for(int child : entry.kind == SceneRecord::Choosing ? chosen(entry) : entry.children)
            visit(child, frustum, toRoot);
    }
};

UnrecordedRefPtr<NodeCore> core_of(SceneRecord const &entry,
                                   std::vector<GeometryPtr> const &geometries)
{
    switch(entry.kind)
    {
    case SceneRecord::Moved:
        return make_transform(entry.matrix)->getCore();
    case SceneRecord::Rendered:
    {
        UnrecordedRefPtr<ConstantSizeTransform> const core(ConstantSizeTransform::create());
        core->setRenderedMatrix(entry.matrix);
        return core.get();
    }
    case SceneRecord::Shape:
        return geometries[static_cast<std::size_t>(entry.geometry)].get();
    case SceneRecord::Choosing:
        return make_multi_switch(entry.mode, entry.choices)->getCore();
    case SceneRecord::Visiting:
        return make_visit(nullptr)->getCore();
    default:
        return make_group()->getCore();
    }
}
} // namespace

BuiltScene build(SceneRecords const &scene)
{
    std::vector<GeometryPtr> geometries;
    for(GeometryParts const &parts : scene.geometries)
        geometries.push_back(make_geometry(parts));
    BuiltScene built;
    for(SceneRecord const &entry : scene.nodes)
    {
        built.nodes.push_back(make_node(core_of(entry, geometries)));
        built.nodes.back()->setTravMask(entry.mask);
    }
    for(std::size_t i = 0; i < scene.nodes.size(); ++i)
    {
        for(int child : scene.nodes[i].children)
            built.nodes[i]->addChild(built.nodes[static_cast<std::size_t>(child)]);
        if(scene.nodes[i].kind == SceneRecord::Visiting && scene.nodes[i].target >= 0)
            static_cast<VisitSubTree *>(built.nodes[i]->getCore())
                ->setSubTreeRoot(built.nodes[static_cast<std::size_t>(scene.nodes[i].target)]);
    }
    return built;
}

Hits reference_selection(SceneRecords const &scene, BuiltScene const &built, Frustum const &frustum,
                         ReferenceSettings const &settings)
{
    Walk walk{scene, built, settings};
    walk.visit(0, frustum, Matrix());
    // Sorting by insertion keeps equal distances in order.
    Hits sorted;
    for(HitT const &hit : walk.hits)
    {
        auto place = sorted.end();
        while(place != sorted.begin() && (place - 1)->distance > hit.distance)
            --place;
        sorted.insert(place, hit);
    }
    return sorted;
}
} // namespace OSG::Test
