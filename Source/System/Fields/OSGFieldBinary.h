#pragma once

/// \file
/// Binary form of field values over an ExceptionBinaryDataHandler, and its size in bytes.
///
/// Little-endian numbers; a string is counted as its length plus 5 (32-bit length, characters, zero
/// byte); a list is a 32-bit count and its values; composite values are their numbers in order, a
/// box a byte of flags before them.

#include <string>

#include "OSGBinaryDataHandler.h"
#include "OSGValueFieldTypes.h"

namespace OSG
{
template <class T>
UInt64 value_bin_size(T const &value)
{
    if constexpr(std::is_same_v<T, std::string>)
        return value.size() + 5;
    else if constexpr(std::is_same_v<T, BoxVolume>)
        return 1 + 6 * sizeof(Real32);
    else if constexpr(std::is_same_v<T, bool>)
        return 1;
    else
        return sizeof(T);
}

/// Number of floats that a composite value is made of; 0 for plain values.
template <class T>
inline constexpr UInt32 FloatCount = 0;
template <>
inline constexpr UInt32 FloatCount<Real32> = 1;
template <>
inline constexpr UInt32 FloatCount<Vec2f> = 2;
template <>
inline constexpr UInt32 FloatCount<Pnt3f> = 3;
template <>
inline constexpr UInt32 FloatCount<Vec3f> = 3;
template <>
inline constexpr UInt32 FloatCount<Color3f> = 3;
template <>
inline constexpr UInt32 FloatCount<Color4f> = 4;
template <>
inline constexpr UInt32 FloatCount<Matrix> = 16;

// The arrays below go out and in as the floats that they are made of.
static_assert(sizeof(Vec2f) == 2 * sizeof(Real32) && sizeof(Pnt3f) == 3 * sizeof(Real32));
static_assert(sizeof(Color3f) == 3 * sizeof(Real32) && sizeof(Color4f) == 4 * sizeof(Real32));
static_assert(sizeof(Matrix) == 16 * sizeof(Real32));

// A box is a byte of flags and its two corners.
enum BoxFlag : UInt8
{
    EmptyBox = 1,
    InfiniteBox = 2,
    ValidBox = 4,
    StaticBox = 8
};

inline void value_to_bin(ExceptionBinaryDataHandler &handler, BoxVolume const &value)
{
    handler.putValue(UInt8((value.isEmpty() ? EmptyBox : 0) |
                           (value.isInfinite() ? InfiniteBox : 0) |
                           (value.isValid() ? ValidBox : 0) | (value.isStatic() ? StaticBox : 0)));
    handler.putValues(value.getMin().values(), 3);
    handler.putValues(value.getMax().values(), 3);
}

inline void value_from_bin(ExceptionBinaryDataHandler &handler, BoxVolume &value)
{
    UInt8 flags = 0;
    Real32 bounds[6];
    handler.getValue(flags);
    handler.getValues(bounds, 6);
    value.setBounds(Pnt3f(bounds[0], bounds[1], bounds[2]), Pnt3f(bounds[3], bounds[4], bounds[5]));
    value.setInfinite((flags & InfiniteBox) != 0);
    if((flags & EmptyBox) != 0)
        value.setEmpty();
    value.setValid((flags & ValidBox) != 0);
    value.setStatic((flags & StaticBox) != 0);
}

template <class T>
void value_to_bin(ExceptionBinaryDataHandler &handler, T const &value)
{
    if constexpr(FloatCount < T >> 1)
        handler.putValues(reinterpret_cast<Real32 const *>(&value), FloatCount<T>);
    else
        handler.putValue(value);
}

template <class T>
void value_from_bin(ExceptionBinaryDataHandler &handler, T &value)
{
    if constexpr(FloatCount < T >> 1)
        handler.getValues(reinterpret_cast<Real32 *>(&value), FloatCount<T>);
    else
        handler.getValue(value);
}
} // namespace OSG
