#pragma once

/// \file
/// The concrete arrays of geometry. Each keeps its elements in the multi field `values`, which may
/// be filled directly through editValues().
///
///   TypedGeoVectorProperty<GeoPnt3fPropertyDesc>      GeoPnt3fProperty     positions
///   TypedGeoVectorProperty<GeoVec3fPropertyDesc>      GeoVec3fProperty     normals
///   TypedGeoVectorProperty<GeoVec2fPropertyDesc>      GeoVec2fProperty     texture coordinates
///   TypedGeoVectorProperty<GeoColor3fPropertyDesc>    GeoColor3fProperty   colours
///   TypedGeoIntegralProperty<GeoUInt32PropertyDesc>   GeoUInt32Property    lengths, indices
///   TypedGeoIntegralProperty<GeoUInt8PropertyDesc>    GeoUInt8Property     primitive types

#include <cstring>

#include "OSGGeoColor3fPropertyBase.h"
#include "OSGGeoPnt3fPropertyBase.h"
#include "OSGGeoUInt32PropertyBase.h"
#include "OSGGeoUInt8PropertyBase.h"
#include "OSGGeoVec2fPropertyBase.h"
#include "OSGGeoVec3fPropertyBase.h"

namespace OSG
{
/// The virtual operations of a vector property over the field of `Base`.
template <class Base>
class VectorPropertyOver : public Base
{
  public:
    using Element =
        typename std::remove_cvref_t<decltype(std::declval<Base>().getValues())>::value_type;
    static constexpr UInt32 Dimension = sizeof(Element) / sizeof(Real32);

    UInt32 size() const override { return static_cast<UInt32>(this->_mfValues.size()); }
    void resize(UInt32 size) override { this->editValues().resize(size); }
    UInt32 getDimension() const override { return Dimension; }
    void getValue(Real32 *numbers, UInt32 index) const override
    {
        std::memcpy(numbers, &this->_mfValues[index], sizeof(Element));
    }
    void setValue(Real32 const *numbers, UInt32 index) override
    {
        for(UInt32 i = 0; i < Dimension; ++i)
            this->editValues()[index][i] = numbers[i];
    }
    Real32 *editArray() override { return reinterpret_cast<Real32 *>(this->editValues().data()); }
    VectorArray getArray() const override
    {
        return VectorArray(reinterpret_cast<Real32 const *>(this->_mfValues.data()), Dimension,
                           size());
    }
};

/// The virtual operations of an integral property over the field of `Base`.
template <class Base>
class IntegralPropertyOver : public Base
{
  public:
    using Element =
        typename std::remove_cvref_t<decltype(std::declval<Base>().getValues())>::value_type;

    UInt32 size() const override { return static_cast<UInt32>(this->_mfValues.size()); }
    void resize(UInt32 size) override { this->editValues().resize(size); }
    UInt32 getValue(UInt32 index) const override { return this->_mfValues[index]; }
    void setValue(UInt32 value, UInt32 index) override
    {
        this->editValues()[index] = static_cast<Element>(value);
    }
    void push_back(UInt32 value) override
    {
        this->editValues().push_back(static_cast<Element>(value));
    }
    IntegralArray getArray() const override
    {
        return IntegralArray(this->_mfValues.data(), size());
    }
};

// NOLINTBEGIN(bugprone-macro-parentheses): `Over` is the name of a template
#define OSG_TYPED_GEO_PROPERTY(Name, Over)                                                         \
    class OSG_DRAWABLE_API Name : public Over<Name##Base>                                          \
    {                                                                                              \
      protected:                                                                                   \
        Name() = default;                                                                          \
        Name(Name const &) = default;                                                              \
        ~Name() override;                                                                          \
                                                                                                   \
        friend Pattern;                                                                            \
    };                                                                                             \
    struct Name##Desc                                                                              \
    {                                                                                              \
        using Property = Name;                                                                     \
    };
// NOLINTEND(bugprone-macro-parentheses)

OSG_TYPED_GEO_PROPERTY(GeoPnt3fProperty, VectorPropertyOver)
OSG_TYPED_GEO_PROPERTY(GeoVec3fProperty, VectorPropertyOver)
OSG_TYPED_GEO_PROPERTY(GeoVec2fProperty, VectorPropertyOver)
OSG_TYPED_GEO_PROPERTY(GeoColor3fProperty, VectorPropertyOver)
OSG_TYPED_GEO_PROPERTY(GeoUInt32Property, IntegralPropertyOver)
OSG_TYPED_GEO_PROPERTY(GeoUInt8Property, IntegralPropertyOver)
#undef OSG_TYPED_GEO_PROPERTY

template <class Desc>
using TypedGeoVectorProperty = typename Desc::Property;
template <class Desc>
using TypedGeoIntegralProperty = typename Desc::Property;
} // namespace OSG
