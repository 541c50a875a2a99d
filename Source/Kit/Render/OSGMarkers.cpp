#include "OSGMarkers.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "OSGConstantSizeTransform.h"
#include "OSGFinite.h"
#include "OSGGeometryView.h"
#include "OSGGroup.h"
#include "OSGLog.h"
#include "OSGMakeNode.h"
#include "OSGPlainShape.h"
#include "OSGTransform.h"

namespace OSG
{
namespace
{
using GeometryPtr = UnrecordedRefPtr<Geometry>;

GeometryPtr make_shape(UInt8 type, std::vector<UInt32> const &lengths,
                       std::vector<Pnt3f> const &points, Material *material)
{
    GeometryPtr geometry(Geometry::create());
    set_primitives(*geometry, type, lengths, points);
    geometry->setMaterial(material);
    return geometry;
}

// A ball is a disc from whatever side it is seen.
GeometryPtr make_ball(Real32 radius, Material *material)
{
    constexpr UInt32 Around = 16;
    constexpr UInt32 Over = 8;
    auto const point = [radius](UInt32 i, UInt32 j)
    {
        Real64 const turn = 2 * std::numbers::pi * (i % Around) / Around;
        Real64 const height = std::numbers::pi * j / Over;
        Real64 const ring = radius * std::sin(height);
        return Pnt3f(static_cast<Real32>(ring * std::cos(turn)),
                     static_cast<Real32>(radius * std::cos(height)),
                     static_cast<Real32>(ring * std::sin(turn)));
    };
    std::vector<Pnt3f> points;
    for(UInt32 j = 0; j < Over; ++j)
    {
        for(UInt32 i = 0; i <= Around; ++i)
        {
            points.push_back(point(i, j));
            points.push_back(point(i, j + 1));
        }
    }
    return make_shape(QuadStripPrimitive, std::vector<UInt32>(Over, 2 * (Around + 1)), points,
                      material);
}
} // namespace

Markers::Markers()
    : _root(make_node(UnrecordedRefPtr<Group>(Group::create())))
{
}

Markers::~Markers() = default;

Material *Markers::materialOf(Color3f const &color)
{
    auto const known = std::find_if(_materials.begin(), _materials.end(),
                                    [&color](auto const &entry) { return entry.first == color; });
    if(known != _materials.end())
        return known->second;
    UnrecordedRefPtr<SimpleMaterial> const material(SimpleMaterial::create());
    material->setLit(false);
    material->setDiffuse(color);
    _materials.emplace_back(color, material);
    return material;
}

Geometry *Markers::ballOf(Real32 pixels, Color3f const &color)
{
    auto const known = std::find_if(_balls.begin(), _balls.end(),
                                    [&](Ball const &ball)
                                    { return ball.pixels == pixels && ball.color == color; });
    if(known != _balls.end())
        return known->geometry;
    _balls.push_back({pixels, color, make_ball(pixels / 2, materialOf(color))});
    return _balls.back().geometry;
}

// The place stands in a transform of its own, so that no large coordinate is rounded on the way to
// the eye.
void Markers::add(Pnt3f const &place, Node *node)
{
    Matrix toPlace;
    toPlace.setTranslate(place[0], place[1], place[2]);
    UnrecordedRefPtr<Transform> const transform(Transform::create());
    transform->setMatrix(toPlace);
    UnrecordedRefPtr<Node> const placed(make_node(transform));
    placed->addChild(node);
    _root->addChild(placed);
}

void Markers::addPoint(Pnt3f const &point, Color3f const &color, Real32 pixels)
{
    if(!is_finite(point) || !(pixels > 0) || !is_finite(pixels))
    {
        OSG_LOG_WARNING("Markers: a point or a size that cannot be shown is left out\n");
        return;
    }
    UnrecordedRefPtr<ConstantSizeTransform> const size(ConstantSizeTransform::create());
    UnrecordedRefPtr<Node> const sized(make_node(size));
    sized->addChild(UnrecordedRefPtr<Node>(make_node(ballOf(pixels, color))));
    add(point, sized);
}

void Markers::addLine(Pnt3f const &from, Pnt3f const &to, Color3f const &color)
{
    Vec3f const way = to - from;
    if(!is_finite(from) || !is_finite(way))
    {
        OSG_LOG_WARNING("Markers: a line that cannot be shown is left out\n");
        return;
    }
    GeometryPtr const line = make_shape(
        LinesPrimitive, {2}, {Pnt3f(0, 0, 0), Pnt3f(way[0], way[1], way[2])}, materialOf(color));
    add(from, UnrecordedRefPtr<Node>(make_node(line)));
}

void Markers::clear()
{
    while(_root->getNChildren() > 0)
        _root->subChild(_root->getNChildren() - 1);
    _materials.clear();
    _balls.clear();
}
} // namespace OSG
