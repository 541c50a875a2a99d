#pragma once

/// \file
/// Points and vectors of N numbers of type T.
///
/// A point is a place, a vector is a displacement: point - point = vector, point + vector = point.
/// The translation of a matrix moves points but not vectors. Both classes start at zero, are
/// trivially copyable, and hold N contiguous numbers. Comparison is exact. Nothing here logs, fails
/// or allocates memory. NaN in gives NaN out.
///
/// Sums of products are added from the first coordinate to the last, without contraction.
/// Vectorised code elsewhere relies on this order to give the same bits.

#include <cmath>
#include <concepts>
#include <cstddef>
#include <type_traits>
#include <utility>

#include "OSGBaseTypes.h"

namespace OSG
{
/// Vectors shorter than this keep their length when they are normalised.
inline constexpr Real32 UnitLengthEpsilon = 1e-6f;

/// What points and vectors have in common: N numbers. `Self` is the class derived from it.
template <class Self, class T, UInt32 N>
class NumberTuple
{
  public:
    using ValueType = T;
    static constexpr UInt32 Dimension = N;

    constexpr NumberTuple() = default;
    template <class... Numbers>
    requires(sizeof...(Numbers) == N &&
             (std::is_arithmetic_v<Numbers> && ...)) constexpr NumberTuple(Numbers... numbers)
        : _values{static_cast<T>(numbers)...}
    {
    }
    /// Reads N numbers; the array is not kept.
    constexpr explicit NumberTuple(T const *values)
    {
        for(UInt32 i = 0; i < N; ++i)
            _values[i] = values[i];
    }

    constexpr T &operator[](std::size_t i) { return _values[i]; }
    constexpr T const &operator[](std::size_t i) const { return _values[i]; }
    constexpr T *values() { return _values; }
    constexpr T const *values() const { return _values; }

    constexpr T x() const { return _values[0]; }
    constexpr T y() const { return _values[1]; }
    constexpr T z() const requires(N > 2) { return _values[2]; }
    constexpr T w() const requires(N > 3) { return _values[3]; }

    template <class... Numbers>
    requires(sizeof...(Numbers) == N) constexpr void setValues(Numbers... numbers)
    {
        *this = NumberTuple(numbers...);
    }
    constexpr void setNull() { *this = NumberTuple(); }

    /// Compares exactly. A tuple with NaN equals nothing, not even itself.
    friend constexpr bool operator==(NumberTuple const &a, NumberTuple const &b)
    {
        for(UInt32 i = 0; i < N; ++i)
        {
            if(!(a._values[i] == b._values[i]))
                return false;
        }
        return true;
    }
    /// Whether each pair of numbers differs by at most `tolerance`.
    constexpr bool equals(Self const &other, T tolerance) const
    {
        for(UInt32 i = 0; i < N; ++i)
        {
            if(!(_values[i] - other[i] <= tolerance && other[i] - _values[i] <= tolerance))
                return false;
        }
        return true;
    }

  protected:
    /// Makes a `Result` whose i-th number is `number(i)`.
    template <class Result, class Number>
    static constexpr Result each(Number const &number)
    {
        return [&number]<std::size_t... I>(std::index_sequence<I...>)
        {
            return Result(number(I)...);
        }
        (std::make_index_sequence<N>());
    }

    T _values[N] = {};
};

template <class T, UInt32 N>
class Vector : public NumberTuple<Vector<T, N>, T, N>
{
    using Base = NumberTuple<Vector<T, N>, T, N>;

  public:
    using Base::Base;

    // --- lengths ---
    constexpr T squareLength() const { return dot(*this); }
    T length() const { return std::sqrt(squareLength()); }
    /// Multiplies by 1 / length, unless the length is below `UnitLengthEpsilon`.
    void normalize()
    {
        T const size = length();
        if(std::abs(size) < UnitLengthEpsilon)
            return;
        *this *= T(1) / size;
    }

    // --- products ---
    constexpr T dot(Vector const &other) const
    {
        T sum = (*this)[0] * other[0];
        for(UInt32 i = 1; i < N; ++i)
            sum += (*this)[i] * other[i];
        return sum;
    }
    constexpr Vector cross(Vector const &other) const requires(N == 3)
    {
        Vector const &a = *this;
        return Vector(a[1] * other[2] - a[2] * other[1], a[2] * other[0] - a[0] * other[2],
                      a[0] * other[1] - a[1] * other[0]);
    }
    friend constexpr T operator*(Vector const &a, Vector const &b) { return a.dot(b); }

    // --- sums and scales, number by number ---
    friend constexpr Vector operator+(Vector const &a, Vector const &b)
    {
        return Base::template each<Vector>([&](std::size_t i) { return a[i] + b[i]; });
    }
    friend constexpr Vector operator-(Vector const &a, Vector const &b)
    {
        return Base::template each<Vector>([&](std::size_t i) { return a[i] - b[i]; });
    }
    friend constexpr Vector operator-(Vector const &a)
    {
        return Base::template each<Vector>([&](std::size_t i) { return -a[i]; });
    }
    friend constexpr Vector operator*(Vector const &a, T factor)
    {
        return Base::template each<Vector>([&](std::size_t i) { return a[i] * factor; });
    }
    friend constexpr Vector operator*(T factor, Vector const &a) { return a * factor; }
    friend constexpr Vector operator/(Vector const &a, T divisor)
    {
        return Base::template each<Vector>([&](std::size_t i) { return a[i] / divisor; });
    }
    constexpr Vector &operator+=(Vector const &other) { return *this = *this + other; }
    constexpr Vector &operator-=(Vector const &other) { return *this = *this - other; }
    constexpr Vector &operator*=(T factor) { return *this = *this * factor; }
    constexpr Vector &operator/=(T divisor) { return *this = *this / divisor; }
};

template <class T, UInt32 N>
class Point : public NumberTuple<Point<T, N>, T, N>
{
    using Base = NumberTuple<Point<T, N>, T, N>;
    using VectorType = Vector<T, N>;

  public:
    using Base::Base;

    /// The vector from the origin to this point.
    constexpr VectorType subZero() const { return VectorType(Base::values()); }
    /// Distance to another point.
    T dist(Point const &other) const { return (*this - other).length(); }

    friend constexpr VectorType operator-(Point const &a, Point const &b)
    {
        return Base::template each<VectorType>([&](std::size_t i) { return a[i] - b[i]; });
    }
    friend constexpr Point operator+(Point const &a, VectorType const &b)
    {
        return Base::template each<Point>([&](std::size_t i) { return a[i] + b[i]; });
    }
    friend constexpr Point operator-(Point const &a, VectorType const &b)
    {
        return Base::template each<Point>([&](std::size_t i) { return a[i] - b[i]; });
    }
    friend constexpr Point operator*(Point const &a, T factor)
    {
        return Base::template each<Point>([&](std::size_t i) { return a[i] * factor; });
    }
    constexpr Point &operator+=(VectorType const &b) { return *this = *this + b; }
    constexpr Point &operator-=(VectorType const &b) { return *this = *this - b; }
};

using Pnt2f = Point<Real32, 2>;
using Pnt3f = Point<Real32, 3>;
using Pnt4f = Point<Real32, 4>;
using Pnt3d = Point<Real64, 3>;
using Vec2f = Vector<Real32, 2>;
using Vec3f = Vector<Real32, 3>;
using Vec4f = Vector<Real32, 4>;
using Vec3d = Vector<Real64, 3>;
} // namespace OSG
