#pragma once

#include "OSGGeoIntegralPropertyBase.h"

namespace OSG
{
/// The elements of an integral property as they lie in memory, for loops without virtual calls.
/// Good until the property is resized or ends.
class IntegralArray
{
  public:
    IntegralArray() = default;
    IntegralArray(UInt32 const *values, UInt32 size)
        : _wide(values)
        , _size(size)
    {
    }
    IntegralArray(UInt8 const *values, UInt32 size)
        : _narrow(values)
        , _size(size)
    {
    }

    UInt32 size() const { return _size; }
    /// The elements where they have 32 bits; null where they have 8, or none are there.
    UInt32 const *wide() const { return _wide; }
    /// `i` is below size().
    // NOLINTNEXTLINE(clang-analyzer-core.NullDereference): without values size() is 0
    UInt32 operator[](UInt64 i) const { return _wide != nullptr ? _wide[i] : _narrow[i]; }

  private:
    UInt32 const *_wide = nullptr;
    UInt8 const *_narrow = nullptr;
    UInt32 _size = 0;
};

/// Whole numbers: primitive types, lengths, indices.
class OSG_DRAWABLE_API GeoIntegralProperty : public GeoIntegralPropertyBase
{
  public:
    virtual UInt32 size() const = 0;
    /// New elements are 0.
    virtual void resize(UInt32 size) = 0;
    /// `index` is below size().
    virtual UInt32 getValue(UInt32 index) const = 0;
    /// Keeps the low bits that the element type holds.
    virtual void setValue(UInt32 value, UInt32 index) = 0;
    virtual void push_back(UInt32 value) = 0;
    virtual IntegralArray getArray() const = 0;

  protected:
    GeoIntegralProperty() = default;
    GeoIntegralProperty(GeoIntegralProperty const &) = default;
    ~GeoIntegralProperty() override;

    friend Pattern;
};
} // namespace OSG
