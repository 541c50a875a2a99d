#include "ItemVertices.h"

#include <cmath>

#include "TriangleRaster.h"

namespace OSG::Test
{
namespace
{
bool is_finite(Pnt3f const &p)
{
    return std::isfinite(p[0]) && std::isfinite(p[1]) && std::isfinite(p[2]);
}

Vec4d wide(Pnt3f const &p) { return Vec4d(p[0], p[1], p[2], 1.0); }

// Makes the corners of one item.
class CornerReader
{
  public:
    CornerReader(DrawnItem const &item, SlowView const &view)
        : _item(item)
        , _view(view)
        , _colors(item.geometry->getColors(), item.geometry->getIndex(Geometry::ColorsSlot))
        , _texCoords(item.geometry->getTexCoords(),
                     item.geometry->getIndex(Geometry::TexCoordsSlot))
        , _isMirrored(item.toEye.determinant() < 0)
    {
    }

    DrawnTriangle triangle(TriangleIterator const &it) const
    {
        std::array<Vec4d, 3> corners;
        std::array<Vec4d, 3> inEye;
        for(int i = 0; i < 3; ++i)
        {
            inEye[i] = _item.toEye * wide(it.getPosition(i));
            corners[i] = _view.projection * inEye[i];
        }
        TriangleRaster const raster(corners, _view.width, _view.height);
        bool const isFront = raster.isCounterClockwise() != _isMirrored;
        DrawnTriangle result;
        for(int i = 0; i < 3; ++i)
            result.vertices[i] = {corners[i], inEye[i], color(it, i, isFront), coords(it, i)};
        return result;
    }

  private:
    Vec4d color(TriangleIterator const &it, int corner, bool isFront) const
    {
        Vec4d const eye = _item.toEye * wide(it.getPosition(corner));
        LitVertex vertex;
        vertex.eye = Pnt3d(eye[0], eye[1], eye[2]);
        if(_item.geometry->getNormals() != nullptr)
            vertex.normal = eyeNormal(it.getNormal(corner)) * (isFront ? 1.0 : -1.0);
        if(_colors.size() != 0)
            vertex.ownColor = ownColor(it.getVertex(corner));
        return vertex_color(_item.surface.colors, _item.lights, vertex);
    }

    // By the cofactors: the inverse transpose but for the determinant, whose sign counts alone.
    Vec3d eyeNormal(Vec3f const &normal) const
    {
        Vec3d const x = direction_of(_item.toEye[0]);
        Vec3d const y = direction_of(_item.toEye[1]);
        Vec3d const z = direction_of(_item.toEye[2]);
        Vec3d const carried =
            y.cross(z) * normal[0] + z.cross(x) * normal[1] + x.cross(y) * normal[2];
        return unit(carried * (_isMirrored ? -1.0 : 1.0));
    }

    Vec4d ownColor(UInt64 vertex) const
    {
        Vec3f const color = _colors.vector(_colors.elementOf(vertex));
        return Vec4d(color[0], color[1], color[2], 1.0);
    }

    std::array<Vec4d, MaxStages> coords(TriangleIterator const &it, int corner) const
    {
        Vec3f const given = _texCoords.vector(it.getTexCoordsIndex(corner));
        std::array<Vec4d, MaxStages> result{};
        for(std::size_t i = 0; i < _item.surface.stages.size() && i < MaxStages; ++i)
        {
            TextureStage const &stage = _item.surface.stages[i];
            Vec4d const start = stage.picture.sphereMap ? sphereCoords(it, corner)
                                                        : Vec4d(given[0], given[1], given[2], 1.0);
            result[i] = stage.matrix * start;
        }
        return result;
    }

    // The direction of the mirrored sight, by OpenGL's formula.
    Vec4d sphereCoords(TriangleIterator const &it, int corner) const
    {
        Vec3d const sight = unit(direction_of(_item.toEye * wide(it.getPosition(corner))));
        Vec3d const normal = eyeNormal(it.getNormal(corner));
        Vec3d const mirrored = sight - normal * (2 * normal.dot(sight));
        Real64 const m = 2 * (mirrored + Vec3d(0.0, 0.0, 1.0)).length();
        return Vec4d(mirrored[0] / m + 0.5, mirrored[1] / m + 0.5, 0.0, 1.0);
    }

    DrawnItem const &_item;
    SlowView const &_view;
    VertexChannel _colors;
    VertexChannel _texCoords;
    bool _isMirrored;
};

template <class Rule>
void add_strokes(DrawnItem const &item, SlowView const &view,
                 std::vector<std::array<Vec4d, 2>> &strokes)
{
    for(PartCursor<Rule> cursor(*item.geometry); !cursor.atEnd(); cursor.next())
    {
        Pnt3f const ends[2] = {cursor.getPosition(0), cursor.getPosition(Rule::Corners - 1)};
        if(is_finite(ends[0]) && is_finite(ends[1]))
            strokes.push_back({view.projection * (item.toEye * wide(ends[0])),
                               view.projection * (item.toEye * wide(ends[1]))});
    }
}
} // namespace

std::vector<DrawnTriangle> drawn_triangles(DrawnItem const &item, SlowView const &view)
{
    CornerReader const reader(item, view);
    std::vector<DrawnTriangle> result;
    TriangleIterator const end = item.geometry->endTriangles();
    for(TriangleIterator it = item.geometry->beginTriangles(); it != end; ++it)
    {
        if(is_finite(it.getPosition(0)) && is_finite(it.getPosition(1)) &&
           is_finite(it.getPosition(2)))
            result.push_back(reader.triangle(it));
    }
    return result;
}

std::vector<std::array<Vec4d, 2>> drawn_strokes(DrawnItem const &item, SlowView const &view)
{
    std::vector<std::array<Vec4d, 2>> result;
    add_strokes<LineRule>(item, view, result);
    add_strokes<PointRule>(item, view, result);
    return result;
}
} // namespace OSG::Test
