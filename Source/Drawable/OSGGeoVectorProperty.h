#pragma once

#include "OSGGeoVectorPropertyBase.h"

namespace OSG
{
/// The elements of a vector property as they lie in memory: size() times dimension() floats without
/// gaps. Good until the property is resized or ends.
class VectorArray
{
  public:
    VectorArray() = default;
    VectorArray(Real32 const *values, UInt32 dimension, UInt32 size)
        : _values(values)
        , _dimension(dimension)
        , _size(size)
    {
    }

    UInt32 size() const { return _size; }
    UInt32 dimension() const { return _dimension; }
    /// Numbers of element `i`, which is below size().
    Real32 const *operator[](UInt64 i) const { return _values + i * _dimension; }

  private:
    Real32 const *_values = nullptr;
    UInt32 _dimension = 0;
    UInt32 _size = 0;
};

/// Points, vectors or colours of 32-bit floats.
class OSG_DRAWABLE_API GeoVectorProperty : public GeoVectorPropertyBase
{
  public:
    virtual UInt32 size() const = 0;
    /// New elements are zero.
    virtual void resize(UInt32 size) = 0;
    /// How many numbers an element has.
    virtual UInt32 getDimension() const = 0;
    /// `index` is below size(); `numbers` holds getDimension() floats.
    virtual void getValue(Real32 *numbers, UInt32 index) const = 0;
    virtual void setValue(Real32 const *numbers, UInt32 index) = 0;
    virtual VectorArray getArray() const = 0;
    /// The same for writing. The pointer may be written to until the edit is committed; a later
    /// write needs another call, or nobody learns of it. It may be read until the property is
    /// resized or ends.
    virtual Real32 *editArray() = 0;

  protected:
    GeoVectorProperty() = default;
    GeoVectorProperty(GeoVectorProperty const &) = default;
    ~GeoVectorProperty() override;

    friend Pattern;
};
} // namespace OSG
