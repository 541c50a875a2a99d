#pragma once

#include "OSGGeoIntegralProperty.h"
#include "OSGGeoVectorProperty.h"
#include "OSGGeometryBase.h"
#include "OSGPrimitiveIndexSlot.h"

namespace OSG
{
class DrawShape;
class LineIterator;
class PrimitiveIterator;
class TriangleIterator;

/// Points, lines and polygons with a material.
///
/// A geometry is a list of primitives (`types` and `lengths`) over a sequence of vertices. Vertex i
/// of the sequence takes element i of each vertex array, or, where the array's slot has an index,
/// the element that entry i of the index names. Several geometries may share arrays. An index may
/// be out of range: the triangle, line or point that it belongs to is not delivered by the
/// iterators and does not count for the volume. The geometry then gives one warning.
///
/// Setting an array or an index marks the volumes of the nodes that show the geometry at the next
/// commit. Whoever writes into an array that is set already calls invalidateVolume() afterwards:
/// arrays do not know their geometries.
///
/// Queries may build an index of the primitives, see PrimitiveIndexUse. Any number of threads may
/// query a geometry at once while nobody edits it or its arrays.
class OSG_DRAWABLE_API Geometry : public GeometryBase
{
  public:
    static constexpr Replaced Replaces = Replaced::InitMethod;

    /// Slots of the vertex arrays and their indices.
    enum Slot : UInt16
    {
        PositionsSlot = 0,
        NormalsSlot = 2,
        ColorsSlot = 3,
        SecondaryColorsSlot = 4,
        TexCoordsSlot = 8, ///< 8 to 11: texture coordinates 0 to 3
        NumSlots = 16
    };

    // --- vertex arrays; null where a slot has none ---
    GeoVectorProperty *getProperty(UInt16 slot) const;
    void setProperty(GeoVectorProperty *property, UInt16 slot);
    GeoVectorProperty *getPositions() const { return getProperty(PositionsSlot); }
    GeoVectorProperty *getNormals() const { return getProperty(NormalsSlot); }
    GeoVectorProperty *getColors() const { return getProperty(ColorsSlot); }
    GeoVectorProperty *getSecondaryColors() const { return getProperty(SecondaryColorsSlot); }
    GeoVectorProperty *getTexCoords() const { return getProperty(TexCoordsSlot); }
    GeoVectorProperty *getTexCoords1() const { return getProperty(TexCoordsSlot + 1); }
    GeoVectorProperty *getTexCoords2() const { return getProperty(TexCoordsSlot + 2); }
    GeoVectorProperty *getTexCoords3() const { return getProperty(TexCoordsSlot + 3); }
    void setPositions(GeoVectorProperty *property) { setProperty(property, PositionsSlot); }
    void setNormals(GeoVectorProperty *property) { setProperty(property, NormalsSlot); }
    void setColors(GeoVectorProperty *property) { setProperty(property, ColorsSlot); }
    void setTexCoords(GeoVectorProperty *property) { setProperty(property, TexCoordsSlot); }

    // --- indices; null where a slot is not indexed ---
    GeoIntegralProperty *getIndex(UInt16 slot) const;
    void setIndex(GeoIntegralProperty *index, UInt16 slot);
    /// One index for the positions and every other slot that has an array.
    void setIndices(GeoIntegralProperty *index);

    // --- material ---
    virtual Material *getMaterial() const { return GeometryBase::getMaterial(); }
    virtual void setMaterial(Material *material) { GeometryBase::setMaterial(material); }

    // --- iterators ---
    TriangleIterator beginTriangles() const;
    TriangleIterator endTriangles() const;
    LineIterator beginLines() const;
    LineIterator endLines() const;
    PrimitiveIterator beginPrimitives() const;
    PrimitiveIterator endPrimitives() const;

    /// Warns that an index is out of range, the first time only. Whoever passes a primitive over
    /// for that reason calls it.
    void reportOutOfRange() const;
    /// For PrimitiveIndexUse, which keeps the indices of this geometry's primitives here. They are
    /// neither saved nor copied nor synchronised.
    PrimitiveIndexSlot &getIndexSlot() const { return _indexSlot; }

    /// The geometry as it is drawn; made when first asked for, lives as long as the geometry.
    DrawShape const *obtainShape() const;

    /// Extends `volume` by the positions of the triangles, lines and points that are delivered.
    void adjustVolume(Volume &volume) override;
    void changed(BitVector whichField, UInt32 origin, BitVector details) override;

  protected:
    Geometry() = default;
    Geometry(Geometry const &source)
        : GeometryBase(source)
    {
    }
    ~Geometry() override;

    /// Makes geometry known to rays.
    static void initMethod(TypeBase::InitPhase phase);

    friend Pattern;

  private:
    mutable PrimitiveIndexSlot _indexSlot;
};
} // namespace OSG
