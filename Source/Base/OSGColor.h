#pragma once

/// \file
/// Colours of three or four numbers. Values from 0 to 1 can be displayed. Nothing is clamped, so
/// the values of a file are kept. Both classes start with zeros, so the alpha of a new Color4 is 0.
/// Comparison is exact.

#include <cstddef>

#include "OSGBaseTypes.h"

namespace OSG
{
template <class T>
class Color3
{
  public:
    using ValueType = T;
    static constexpr UInt32 Dimension = 3;

    constexpr Color3() = default;
    constexpr Color3(T red, T green, T blue)
        : _values{red, green, blue}
    {
    }

    constexpr T red() const { return _values[0]; }
    constexpr T green() const { return _values[1]; }
    constexpr T blue() const { return _values[2]; }
    constexpr T &operator[](std::size_t i) { return _values[i]; }
    constexpr T const &operator[](std::size_t i) const { return _values[i]; }
    constexpr T *values() { return _values; }
    constexpr T const *values() const { return _values; }
    constexpr void setValuesRGB(T red, T green, T blue) { *this = Color3(red, green, blue); }

    friend constexpr bool operator==(Color3 const &a, Color3 const &b)
    {
        return a[0] == b[0] && a[1] == b[1] && a[2] == b[2];
    }

  private:
    T _values[3] = {};
};

template <class T>
class Color4
{
  public:
    using ValueType = T;
    static constexpr UInt32 Dimension = 4;

    constexpr Color4() = default;
    constexpr Color4(T red, T green, T blue, T alpha)
        : _values{red, green, blue, alpha}
    {
    }
    constexpr Color4(Color3<T> const &color, T alpha)
        : _values{color[0], color[1], color[2], alpha}
    {
    }

    constexpr T red() const { return _values[0]; }
    constexpr T green() const { return _values[1]; }
    constexpr T blue() const { return _values[2]; }
    constexpr T alpha() const { return _values[3]; }
    constexpr T &operator[](std::size_t i) { return _values[i]; }
    constexpr T const &operator[](std::size_t i) const { return _values[i]; }
    constexpr T *values() { return _values; }
    constexpr T const *values() const { return _values; }
    constexpr void setValuesRGBA(T red, T green, T blue, T alpha)
    {
        *this = Color4(red, green, blue, alpha);
    }
    /// The colour without its alpha.
    constexpr Color3<T> rgb() const { return Color3<T>(_values[0], _values[1], _values[2]); }

    friend constexpr bool operator==(Color4 const &a, Color4 const &b)
    {
        return a[0] == b[0] && a[1] == b[1] && a[2] == b[2] && a[3] == b[3];
    }

  private:
    T _values[4] = {};
};

using Color3f = Color3<Real32>;
using Color4f = Color4<Real32>;
} // namespace OSG
