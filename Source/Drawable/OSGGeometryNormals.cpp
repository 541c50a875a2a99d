#include "OSGGeometryNormals.h"

#include "OSGGeometryIterators.h"
#include "OSGTypedGeoProperties.h"

namespace OSG
{
namespace
{
constexpr UInt32 NotUsed = VertexChannel::NoElement;

using IndexVector = std::vector<UInt32, MemAllocator<UInt32>>;

/// The elements of a position array that a geometry's vertices name, numbered in ascending order.
class UsedElements
{
  public:
    UsedElements(VertexChannel const &positions, UInt32 vertices)
    {
        // A table over the whole array is the quickest. Where a file has ten thousand geometries of
        // a few vertices each, a table for each of them would take quadratic time.
        _asTable = positions.size() / 8 <= vertices;
        if(_asTable)
            fillTable(positions, vertices);
        else
            fillSorted(positions, vertices);
    }

    UInt32 count() const { return _count; }
    /// `element` is one of the used ones.
    UInt32 numberOf(UInt32 element) const
    {
        if(_asTable)
            return _numbers[element];
        return static_cast<UInt32>(std::lower_bound(_numbers.begin(), _numbers.end(), element) -
                                   _numbers.begin());
    }

  private:
    void fillTable(VertexChannel const &positions, UInt32 vertices)
    {
        _numbers.assign(positions.size(), NotUsed);
        for(UInt32 vertex = 0; vertex < vertices; ++vertex)
        {
            UInt32 const element = positions.elementOf(vertex);
            if(element < positions.size())
                _numbers[element] = 0;
        }
        for(UInt32 &number : _numbers)
        {
            if(number != NotUsed)
                number = _count++;
        }
    }

    void fillSorted(VertexChannel const &positions, UInt32 vertices)
    {
        for(UInt32 vertex = 0; vertex < vertices; ++vertex)
        {
            UInt32 const element = positions.elementOf(vertex);
            if(element < positions.size())
                _numbers.push_back(element);
        }
        std::sort(_numbers.begin(), _numbers.end());
        _numbers.erase(std::unique(_numbers.begin(), _numbers.end()), _numbers.end());
        _count = static_cast<UInt32>(_numbers.size());
    }

    bool _asTable = false;
    UInt32 _count = 0;
    IndexVector _numbers; // by element, or the elements in ascending order
};

Vec3f unit(Vec3f vector)
{
    vector.normalize();
    return vector;
}

// Adds each triangle's unit normal at its corners; `numberOf` gives a corner's place in `normals`.
template <class NumberOf>
void sum_normals(Geometry const &geometry, MField<Vec3f> &normals, NumberOf numberOf)
{
    TriangleIterator const end = geometry.endTriangles();
    for(TriangleIterator it = geometry.beginTriangles(); it != end; ++it)
    {
        Pnt3f const origin = it.getPosition(0);
        Vec3f const normal = (it.getPosition(1) - origin).cross(it.getPosition(2) - origin);
        if(normal == Vec3f())
            continue;
        for(int corner = 0; corner < 3; ++corner)
            normals[numberOf(it.getPositionIndex(corner))] += unit(normal);
    }
    for(Vec3f &normal : normals)
        normal.normalize();
}

// For a part of a larger array: the geometry's own index into its own normals.
MField<UInt32> own_index(VertexChannel const &positions, UsedElements const &used, UInt32 vertices)
{
    MField<UInt32> entries(positions.vertexCount(), NotUsed);
    for(UInt32 vertex = 0; vertex < vertices; ++vertex)
    {
        UInt32 const element = positions.elementOf(vertex);
        if(element < positions.size())
            entries[vertex] = used.numberOf(element);
    }
    return entries;
}
} // namespace

void calcVertexNormals(Geometry *geometry) { calcVertexNormals(geometry, &make_index); }

void calcVertexNormals(Geometry *geometry, IndexMaker const &makeIndex)
{
    if(geometry == nullptr || geometry->getPositions() == nullptr)
        return;
    GeometryView const view(*geometry);
    UsedElements const used(view.positions, view.usedVertexCount());
    UnrecordedRefPtr<GeoVec3fProperty> const normals(GeoVec3fProperty::create());
    MField<Vec3f> &values = normals->editValues();
    bool const isPart =
        used.count() < view.positions.size() && geometry->getPositions()->getRefCount() > 1;

    if(!isPart)
    {
        values.resize(view.positions.size());
        sum_normals(*geometry, values, [](UInt32 element) { return element; });
        geometry->setIndex(geometry->getIndex(Geometry::PositionsSlot), Geometry::NormalsSlot);
    }
    else
    {
        values.resize(used.count());
        sum_normals(*geometry, values, [&used](UInt32 element) { return used.numberOf(element); });
        geometry->setIndex(makeIndex(own_index(view.positions, used, view.usedVertexCount())),
                           Geometry::NormalsSlot);
    }
    geometry->setNormals(normals);
}
} // namespace OSG
