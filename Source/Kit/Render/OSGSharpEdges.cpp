#include "OSGSharpEdges.h"

#include <array>
#include <optional>
#include <unordered_map>
#include <utility>

#include "OSGDrawEpochs.h"
#include "OSGPartCursor.h"
#include "OSGPlainShape.h"
#include "OSGSharpEdgeFinder.h"

namespace OSG
{
namespace
{
/// What the edges of a geometry follow from.
class EdgeInputs
{
  public:
    EdgeInputs() = default;
    explicit EdgeInputs(Geometry const &geometry)
    {
        add(geometry.getTypes());
        add(geometry.getLengths());
        add(geometry.getPositions());
        add(geometry.getIndex(Geometry::PositionsSlot));
    }

    /// Whether equal inputs mean equal values.
    bool areCommitted() const { return _areCommitted; }
    bool operator==(EdgeInputs const &other) const { return _arrays == other._arrays; }

  private:
    struct Array
    {
        GeoProperty const *property = nullptr; // a key
        UInt32 stamp = 0;

        bool operator==(Array const &) const = default;
    };

    void add(GeoProperty const *property)
    {
        bool const isKnown =
            property == nullptr || (property->getChangeMask() == 0 && property->getStamp() != 0);
        _areCommitted = _areCommitted && isKnown;
        _arrays[_count++] = {property, property != nullptr ? property->getStamp() : 0};
    }

    std::array<Array, 4> _arrays;
    std::size_t _count = 0;
    bool _areCommitted = true;
};

void put_lines(Geometry &lines, std::vector<SharpEdgeFinder::Edge> const &edges)
{
    std::vector<Pnt3f> points;
    points.reserve(2 * edges.size());
    for(SharpEdgeFinder::Edge const &edge : edges)
    {
        points.push_back(edge.a);
        points.push_back(edge.b);
    }
    set_primitives(lines, LinesPrimitive, {static_cast<UInt32>(points.size())}, points);
}

/// A search that goes on from step to step, while its geometry stays as it was.
struct EdgeSearch
{
    EdgeSearch(Geometry const &ofGeometry, EdgeInputs const &ofInputs, Real64 angle)
        : geometry(&ofGeometry)
        , inputs(ofInputs)
        , cursor(ofGeometry)
        , finder(angle)
    {
    }

    /// Takes the triangles that it looks at from `left`. True at the end.
    bool step(UInt64 &left)
    {
        for(; !cursor.atEnd() && left > 0; cursor.next(), --left)
            finder.add(cursor.getPosition(0), cursor.getPosition(1), cursor.getPosition(2));
        return cursor.atEnd();
    }

    Geometry const *geometry; // a key
    EdgeInputs inputs;
    PartCursor<TriangleRule> cursor;
    SharpEdgeFinder finder;
};
} // namespace

class SharpEdges::Table
{
  public:
    explicit Table(Real32 angle)
        : _angle(angle)
    {
    }

    /// Of a geometry that is drawn.
    Geometry &linesOf(Geometry &geometry)
    {
        auto const known = _entries.find(&geometry);
        if(known != _entries.end())
            return *known->second.lines;
        Entry entry;
        entry.geometry = WeakRefPtr<Geometry>(&geometry);
        entry.lines = UnrecordedRefPtr<Geometry>(Geometry::create());
        _hasNew = true;
        return *_entries.emplace(&geometry, std::move(entry)).first->second.lines;
    }

    bool build(UInt64 triangles)
    {
        UInt64 const epoch = DrawEpochs::getMeshes();
        if(!_hasNew && !_search && _epoch == epoch)
            return true;
        UInt64 left = triangles;
        if(!continueSearch(left))
            return false;
        for(auto at = _entries.begin(); at != _entries.end();)
        {
            if(at->second.geometry.get() == nullptr)
                at = _entries.erase(at);
            else if(advance(at->second, left))
                ++at;
            else
                return false;
        }
        _hasNew = false;
        _epoch = epoch;
        return left == triangles;
    }

    Geometry const *find(Geometry const &geometry) const
    {
        auto const at = _entries.find(&geometry);
        return at != _entries.end() ? at->second.lines.get() : nullptr;
    }

  private:
    struct Entry
    {
        WeakRefPtr<Geometry> geometry; // keeps the address from being used again
        UnrecordedRefPtr<Geometry> lines;
        std::optional<EdgeInputs> inputs; // of the lines
    };

    // What was begun is ended first, so that it is not begun again and again where the scene grows.
    bool continueSearch(UInt64 &left)
    {
        if(!_search)
            return true;
        auto const at = _entries.find(_search->geometry);
        if(at != _entries.end() && at->second.geometry.get() != nullptr)
            return advance(at->second, left);
        _search.reset();
        return true;
    }

    /// Takes what is looked at from `left`. True where the lines are those of the geometry.
    bool advance(Entry &entry, UInt64 &left)
    {
        Geometry const &geometry = *entry.geometry;
        EdgeInputs const inputs(geometry);
        if(!inputs.areCommitted() || entry.inputs == inputs)
            return true;
        if(left == 0)
            return false;
        --left; // geometries without triangles take time as well
        if(!_search || _search->geometry != &geometry || !(_search->inputs == inputs))
            _search.emplace(geometry, inputs, _angle);
        if(!_search->step(left))
            return false;
        put_lines(*entry.lines, _search->finder.find());
        entry.inputs = inputs;
        _search.reset();
        return true;
    }

    Real32 _angle;
    std::unordered_map<Geometry const *, Entry> _entries;
    std::optional<EdgeSearch> _search;
    bool _hasNew = false;
    UInt64 _epoch = 0; // of the meshes, when all edges were known
};

SharpEdges::SharpEdges(Real32 angle)
    : _table(std::make_shared<Table>(angle))
{
}

SharpEdges::~SharpEdges() = default;

void SharpEdges::drawBy(RenderAction &action)
{
    action.registerEnterFunction(
        Geometry::getClassType(),
        [table = _table](NodeCore *core, Action *drawing)
        {
            Geometry const &lines = table->linesOf(static_cast<Geometry &>(*core));
            static_cast<RenderAction &>(*drawing).addShape(lines.obtainShape(), nullptr);
            return ActionBase::Continue;
        },
        Action::HandlerPromise::Repeats);
}

bool SharpEdges::build(UInt64 triangles) { return _table->build(triangles); }

Geometry const *SharpEdges::getLines(Geometry const &geometry) const
{
    return _table->find(geometry);
}
} // namespace OSG
