#pragma once

/// \file
/// The 4 by 4 matrix that carries points and vectors from one space to another.
///
/// The matrix has four columns of four numbers: `m[c][r]` is column c, row r. The translation is
/// column 3. Points are column vectors and stand to the right of the matrix. The 16 numbers are
/// contiguous, column by column, as OpenGL takes them.
///
///     | m[0][0]  m[1][0]  m[2][0]  m[3][0] |   x, y, z axes of the inner space and its origin,
///     | m[0][1]  m[1][1]  m[2][1]  m[3][1] |   each as seen from the outer space
///     | m[0][2]  m[1][2]  m[2][2]  m[3][2] |
///     | m[0][3]  m[1][3]  m[2][3]  m[3][3] |   0 0 0 1 unless the matrix projects
///
/// Products add their terms from the first column to the last. Input and output may be the same
/// object.

#include "OSGBaseApi.h"
#include "OSGQuaternion.h"
#include "OSGVector.h"

namespace OSG
{
/// Logs a warning that a point has w == 0.
OSG_BASE_API void warn_zero_w();

template <class T>
class TransformationMatrix
{
  public:
    using ValueType = T;
    using Column = Vector<T, 4>;
    using PointType = Point<T, 3>;
    using VectorType = Vector<T, 3>;

    // --- creation ---
    TransformationMatrix() { setIdentity(); }
    TransformationMatrix(Column const &c0, Column const &c1, Column const &c2, Column const &c3)
        : _columns{c0, c1, c2, c3}
    {
    }
    /// Reads 16 numbers, column by column.
    explicit TransformationMatrix(T const *values)
        : _columns{Column(values), Column(values + 4), Column(values + 8), Column(values + 12)}
    {
    }

    /// Converts each number.
    template <class U>
    explicit TransformationMatrix(TransformationMatrix<U> const &source)
    {
        for(UInt32 c = 0; c < 4; ++c)
        {
            for(UInt32 r = 0; r < 4; ++r)
                _columns[c][r] = static_cast<T>(source[c][r]);
        }
    }

    void setIdentity();
    /// Replace the whole matrix.
    void setTranslate(T x, T y, T z);
    void setTranslate(VectorType const &by) { setTranslate(by[0], by[1], by[2]); }
    void setScale(T x, T y, T z);
    void setScale(T factor) { setScale(factor, factor, factor); }
    /// The rotation of a unit quaternion.
    void setRotate(Quaternion const &rotation);

    // --- elements ---
    Column &operator[](std::size_t c) { return _columns[c]; }
    Column const &operator[](std::size_t c) const { return _columns[c]; }
    T const *values() const { return _columns[0].values(); }

    // --- points and vectors ---
    /// Affine image: the fourth row is ignored.
    void mult(PointType const &in, PointType &out) const { out = *this * in; }
    PointType operator*(PointType const &p) const
    {
        return PointType(row(0, p) + _columns[3][0], row(1, p) + _columns[3][1],
                         row(2, p) + _columns[3][2]);
    }
    /// The image under the linear part alone.
    void mult(VectorType const &in, VectorType &out) const { out = *this * in; }
    VectorType operator*(VectorType const &v) const
    {
        return VectorType(row(0, v), row(1, v), row(2, v));
    }
    /// Projective image: each coordinate is multiplied by 1 / w. If w is exactly 0, the point is
    /// not divided and one warning is logged.
    void multFull(PointType const &in, PointType &out) const
    {
        T const w = row(3, in) + _columns[3][3];
        PointType const undivided = *this * in;
        if(w == T(0))
            warn_zero_w();
        out = w == T(0) ? undivided : undivided * (T(1) / w);
    }
    /// The image under the linear part, divided by the vector's own w, which leaves m[3][3] out. If
    /// w is 0, nothing is divided and nothing is logged.
    void multFull(VectorType const &in, VectorType &out) const
    {
        T const w = row(3, in);
        VectorType const undivided = *this * in;
        out = w == T(0) ? undivided : undivided * (T(1) / w);
    }

    // --- matrices ---
    /// This becomes this times `right`.
    void mult(TransformationMatrix const &right) { *this = *this * right; }
    /// This becomes `left` times this.
    void multLeft(TransformationMatrix const &left) { *this = left * *this; }
    TransformationMatrix operator*(TransformationMatrix const &right) const;
    void transpose();

    /// Sets this to the inverse of `source`. Where the absolute determinant is below 1e-30 or NaN,
    /// this becomes the identity, one warning is logged and the result is false. The cofactors are
    /// computed in double precision and rounded once, so that distant translations and large scales
    /// keep their digits.
    bool invertFrom(TransformationMatrix const &source);
    bool invert() { return invertFrom(TransformationMatrix(*this)); }
    /// The determinant, computed in double precision.
    double determinant() const;

    // --- comparison ---
    /// Whether each pair of elements differs by at most `tolerance`.
    bool equals(TransformationMatrix const &other, T tolerance) const;
    /// Compares all elements exactly.
    friend bool operator==(TransformationMatrix const &a, TransformationMatrix const &b)
    {
        return a[0] == b[0] && a[1] == b[1] && a[2] == b[2] && a[3] == b[3];
    }

  private:
    /// The first three terms of the product of row r and a point or vector.
    template <class Tuple>
    T row(UInt32 r, Tuple const &in) const
    {
        return _columns[0][r] * in[0] + _columns[1][r] * in[1] + _columns[2][r] * in[2];
    }

    Column _columns[4];
};

using Matrix = TransformationMatrix<Real32>;
/// For products and inverses that need more digits than single precision has, as projections do.
using Matrix4d = TransformationMatrix<Real64>;

template <class T>
void TransformationMatrix<T>::setIdentity()
{
    setScale(T(1), T(1), T(1));
}

template <class T>
void TransformationMatrix<T>::setTranslate(T x, T y, T z)
{
    setIdentity();
    _columns[3] = Column(x, y, z, T(1));
}

template <class T>
void TransformationMatrix<T>::setScale(T x, T y, T z)
{
    T const o(0);
    _columns[0] = Column(x, o, o, o);
    _columns[1] = Column(o, y, o, o);
    _columns[2] = Column(o, o, z, o);
    _columns[3] = Column(o, o, o, T(1));
}

template <class T>
TransformationMatrix<T> TransformationMatrix<T>::operator*(TransformationMatrix const &right) const
{
    TransformationMatrix product;
    for(UInt32 c = 0; c < 4; ++c)
    {
        for(UInt32 r = 0; r < 4; ++r)
        {
            product[c][r] = _columns[0][r] * right[c][0] + _columns[1][r] * right[c][1] +
                            _columns[2][r] * right[c][2] + _columns[3][r] * right[c][3];
        }
    }
    return product;
}

extern template class OSG_BASE_API TransformationMatrix<Real32>;
extern template class OSG_BASE_API TransformationMatrix<Real64>;
} // namespace OSG
