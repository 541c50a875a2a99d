#pragma once

/// \file
/// Goes through the triangles, lines or points of a geometry by their positions alone.

#include "OSGGeometryView.h"

namespace OSG
{
/// Walks the parts that `Rule` breaks primitives into. A part is delivered only if all its position
/// indices are in range; the running number counts those that are delivered, from 0. The geometry
/// logs once that others were passed over. Good until the geometry or one of its arrays is edited.
template <class Rule>
class PartCursor
{
  public:
    static constexpr int Corners = Rule::Corners;

    /// Where a part lies. With its running number a cursor can begin there again.
    struct Place
    {
        UInt64 start;     ///< first vertex of the primitive
        UInt32 primitive; ///< number of the primitive
        UInt32 part;      ///< number of the part within it
    };

    PartCursor() = default;
    /// Stands on the first part.
    explicit PartCursor(Geometry const &geometry)
        : _view(geometry)
        , _geometry(&geometry)
    {
        if(atEnd())
            return;
        enterPrimitive();
        seek();
    }

    bool atEnd() const { return _place.primitive >= _view.primitiveCount(); }
    void next()
    {
        ++_place.part;
        ++_index;
        seek();
    }

    Place const &getPlace() const { return _place; }
    /// Stands on the part with the running number `index`, whose place is `place`.
    void moveTo(Place const &place, UInt32 index)
    {
        _place = place;
        _index = index;
        enterPrimitive();
        seek();
    }
    /// The cursor behind the last part.
    static PartCursor endOf(Geometry const &geometry)
    {
        PartCursor cursor;
        cursor._view = PrimitiveView(geometry);
        cursor.finish();
        return cursor;
    }

    UInt32 getIndex() const { return _index; }
    UInt32 getPrimitive() const { return _place.primitive; }
    UInt32 getPart() const { return _place.part; }

    // --- corners, counted from 0 ---
    Pnt3f getPosition(int corner) const { return _view.positions.point(_element[corner]); }
    /// Element of the position array; always in range.
    UInt32 getElement(int corner) const { return _element[corner]; }
    /// Running number of the corner's vertex in the geometry's sequence.
    UInt64 getVertex(int corner) const { return _place.start + _vertex[corner]; }
    /// The same for any vertex of the primitive.
    UInt64 getFirstVertex() const { return _place.start; }

    PrimitiveView const &getView() const { return _view; }

  private:
    void enterPrimitive()
    {
        _type = _view.type(_place.primitive);
        _length = _view.length(_place.primitive);
        UInt32 const available = _view.available(_place.start, _length);
        _parts = Rule::count(_type, _length, available);
        if(available < _length && Rule::count(_type, _length, _length) != _parts)
            _geometry->reportOutOfRange();
    }

    // Goes on to the next part whose corners exist, the current one included.
    void seek()
    {
        for(;;)
        {
            for(; _place.part < _parts; ++_place.part)
            {
                Rule::corners(_type, _length, _place.part, _vertex);
                if(_view.positions.findElements(_place.start, _vertex, _element))
                    return;
                _geometry->reportOutOfRange();
            }
            _place = {_place.start + _length, _place.primitive + 1, 0};
            if(atEnd())
                break;
            enterPrimitive();
        }
        finish();
    }

    void finish()
    {
        _place = {0, _view.primitiveCount(), 0};
        _parts = 0;
    }

    PrimitiveView _view;
    Geometry const *_geometry = nullptr;
    Place _place = {0, 0, 0};
    UInt32 _type = 0;
    UInt32 _length = 0;
    UInt32 _parts = 0;
    UInt32 _index = 0;
    UInt32 _vertex[Corners] = {};  // in the primitive
    UInt32 _element[Corners] = {}; // in the position array
};
} // namespace OSG
