#include "OSGMeshMaker.h"

#include <algorithm>
#include <array>
#include <bit>
#include <utility>

#include "OSGFinite.h"
#include "OSGMemManager.h"
#include "OSGPartCursor.h"

namespace OSG
{
namespace
{
constexpr UInt32 None = 0xFFFFFFFF;

template <class T>
using HeapVector = std::vector<T, MemAllocator<T>>;

enum Channel : std::size_t
{
    Positions,
    Normals,
    Colors,
    TexCoords,
    NumChannels
};
constexpr std::array<UInt16, NumChannels> Slots = {Geometry::PositionsSlot, Geometry::NormalsSlot,
                                                   Geometry::ColorsSlot, Geometry::TexCoordsSlot};

/// The arrays that a vertex has elements of.
class Arrays
{
  public:
    explicit Arrays(Geometry const &geometry)
    {
        for(std::size_t i = 0; i < NumChannels; ++i)
        {
            _channels[i] =
                VertexChannel(geometry.getProperty(Slots[i]), geometry.getIndex(Slots[i]));
            _has[i] = geometry.getProperty(Slots[i]) != nullptr;
            _followsPositions =
                _followsPositions &&
                (!_has[i] || geometry.getIndex(Slots[i]) == geometry.getIndex(Slots[Positions]));
        }
    }

    bool has(Channel channel) const { return _has[channel]; }
    VertexChannel const &operator[](Channel channel) const { return _channels[channel]; }
    /// Whether the position element of a vertex decides the others.
    bool followsPositions() const { return _followsPositions; }
    std::array<UInt32, NumChannels> elementsOf(UInt64 vertex) const
    {
        std::array<UInt32, NumChannels> elements;
        for(std::size_t i = 0; i < NumChannels; ++i)
            elements[i] = _has[i] ? _channels[i].elementOf(vertex) : None;
        return elements;
    }

  private:
    std::array<VertexChannel, NumChannels> _channels;
    std::array<bool, NumChannels> _has = {};
    bool _followsPositions = true;
};

/// Numbers the combinations of elements in the order of first use.
class VertexTable
{
  public:
    using Elements = std::array<UInt32, NumChannels>;

    /// `vertices` is about the number of vertices that will be asked for.
    VertexTable(Arrays const &arrays, std::size_t vertices)
        : _direct(arrays.followsPositions() && arrays[Positions].size() / 4 <= vertices)
        , _slots(_direct ? arrays[Positions].size() : std::bit_ceil(2 * vertices + 2), None)
    {
    }

    UInt32 numberOf(Elements const &elements)
    {
        if(4 * _combinations.size() > 3 * _slots.size() && !_direct)
            grow();
        UInt32 &slot = slotOf(elements);
        if(slot == None)
        {
            slot = static_cast<UInt32>(_combinations.size());
            _combinations.push_back(elements);
        }
        return slot;
    }
    HeapVector<Elements> const &getCombinations() const { return _combinations; }

  private:
    // Where positions decide, their element is the place; else multiplicative hashing (Knuth) and
    // linear probing.
    UInt32 &slotOf(Elements const &elements)
    {
        if(_direct)
            return _slots[elements[Positions]];
        UInt64 hash = 0;
        for(UInt32 element : elements)
            hash = (hash + element) * 0x9E3779B97F4A7C15u;
        std::size_t const mask = _slots.size() - 1;
        std::size_t i = static_cast<std::size_t>(hash >> 32) & mask;
        while(_slots[i] != None && _combinations[_slots[i]] != elements)
            i = (i + 1) & mask;
        return _slots[i];
    }

    void grow()
    {
        _slots.assign(2 * _slots.size(), None);
        for(UInt32 number = 0; number < _combinations.size(); ++number)
            slotOf(_combinations[number]) = number;
    }

    bool _direct;
    HeapVector<UInt32> _slots;
    HeapVector<Elements> _combinations;
};

/// Indices that the parts of a primitive have added to the list of a kind.
struct Added
{
    UInt32 primitive;
    DrawMesh::Run run;
};

// Runs in the order of their primitives; none where the kinds already stand in that order.
std::vector<DrawMesh::Run> ordered_runs(std::vector<Added> added)
{
    std::stable_sort(added.begin(), added.end(),
                     [](Added const &a, Added const &b) { return a.primitive < b.primitive; });
    std::vector<DrawMesh::Run> runs;
    for(Added const &one : added)
    {
        if(!runs.empty() && runs.back().kind == one.run.kind)
            runs.back().count += one.run.count;
        else
            runs.push_back(one.run);
    }
    bool const isSorted = std::is_sorted(
        runs.begin(), runs.end(), [](auto const &a, auto const &b) { return a.kind < b.kind; });
    return isSorted ? std::vector<DrawMesh::Run>() : runs;
}

template <class Rule>
void add_parts(Geometry const &geometry, Arrays const &arrays, VertexTable &table,
               DrawMesh::Kind kind, std::vector<UInt32> &indices, std::vector<Added> &added)
{
    constexpr int Corners = PartCursor<Rule>::Corners;
    for(PartCursor<Rule> part(geometry); !part.atEnd(); part.next())
    {
        bool isFinite = true;
        for(int corner = 0; corner < Corners; ++corner)
            isFinite = isFinite && is_finite(part.getPosition(corner));
        if(!isFinite)
            continue;
        for(int corner = 0; corner < Corners; ++corner)
            indices.push_back(table.numberOf(arrays.elementsOf(part.getVertex(corner))));
        if(added.empty() || added.back().primitive != part.getPrimitive() ||
           added.back().run.kind != kind)
            added.push_back({part.getPrimitive(), {kind, 0}});
        added.back().run.count += Corners;
    }
}

// Numbers of an element; those that it does not have are `missing`.
template <std::size_t Count>
std::array<Real32, Count> numbers_of(VertexChannel const &channel, UInt32 element,
                                     std::array<Real32, Count> missing)
{
    VectorArray const &values = channel.values();
    if(element < values.size())
        std::copy_n(values[element], std::min<std::size_t>(values.dimension(), Count),
                    missing.begin());
    return missing;
}

Color4f color_of(VertexChannel const &channel, UInt32 element)
{
    auto const c = numbers_of<4>(channel, element, {0, 0, 0, 1});
    return Color4f(c[0], c[1], c[2], c[3]);
}

Vec4f tex_coord_of(VertexChannel const &channel, UInt32 element)
{
    auto const t = numbers_of<4>(channel, element, {0, 0, 0, 1});
    return Vec4f(t[0], t[1], t[2], t[3]);
}
} // namespace

void make_mesh(Geometry const &geometry, DrawMesh &mesh)
{
    mesh = DrawMesh();
    Arrays const arrays(geometry);
    VertexTable table(arrays, PrimitiveView(geometry).usedVertexCount());
    std::vector<Added> added;
    add_parts<TriangleRule>(geometry, arrays, table, DrawMesh::Kind::Triangles, mesh.triangles,
                            added);
    add_parts<LineRule>(geometry, arrays, table, DrawMesh::Kind::Lines, mesh.lines, added);
    add_parts<PointRule>(geometry, arrays, table, DrawMesh::Kind::Points, mesh.points, added);
    mesh.runs = ordered_runs(std::move(added));

    auto const &vertices = table.getCombinations();
    mesh.positions.reserve(vertices.size());
    for(auto const &elements : vertices)
        mesh.positions.push_back(arrays[Positions].point(elements[Positions]));
    if(arrays.has(Normals))
    {
        mesh.normals.reserve(vertices.size());
        for(auto const &elements : vertices)
            mesh.normals.push_back(arrays[Normals].vector(elements[Normals]));
    }
    if(arrays.has(Colors))
    {
        mesh.colors.reserve(vertices.size());
        for(auto const &elements : vertices)
            mesh.colors.push_back(color_of(arrays[Colors], elements[Colors]));
    }
    if(arrays.has(TexCoords))
    {
        mesh.texCoords.reserve(vertices.size());
        for(auto const &elements : vertices)
            mesh.texCoords.push_back(tex_coord_of(arrays[TexCoords], elements[TexCoords]));
    }
}
} // namespace OSG
