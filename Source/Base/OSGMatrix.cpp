#include "OSGMatrix.h"

#include <cmath>
#include <utility>

#include "OSGLog.h"

namespace OSG
{
void warn_zero_w() { OSG_LOG_WARNING("TransformationMatrix<>::multFull(Pnt3, Pnt3): w == 0.0\n"); }

namespace
{
constexpr double SingularDeterminant = 1e-30;

/// The 2 by 2 minors of the upper two rows of m and those of the lower two rows. With them the
/// determinant is a sum of six products and each cofactor one of three (Laplace expansion along two
/// rows). Pair i stands for the columns (0,1) (0,2) (0,3) (1,2) (1,3) (2,3).
struct RowPairMinors
{
    template <class T>
    explicit RowPairMinors(TransformationMatrix<T> const &m)
    {
        int pair = 0;
        for(int a = 0; a < 3; ++a)
        {
            for(int b = a + 1; b < 4; ++b, ++pair)
            {
                upper[pair] = double(m[a][0]) * m[b][1] - double(m[b][0]) * m[a][1];
                lower[pair] = double(m[a][2]) * m[b][3] - double(m[b][2]) * m[a][3];
            }
        }
    }

    double determinant() const
    {
        return upper[0] * lower[5] - upper[1] * lower[4] + upper[2] * lower[3] +
               upper[3] * lower[2] - upper[4] * lower[1] + upper[5] * lower[0];
    }

    double upper[6];
    double lower[6];
};

// The cofactor of the element in column a, row r takes one product for each of the other three
// columns: the element of that column in the other row of r's pair of rows (its partner), times the
// minor of the opposite pair of rows for the two columns that remain. Others[a] lists these
// columns, Pairs[a] their minors.
constexpr int Others[4][3] = {{1, 2, 3}, {0, 2, 3}, {0, 1, 3}, {0, 1, 2}};
constexpr int Pairs[4][3] = {{5, 4, 3}, {5, 2, 1}, {4, 2, 0}, {3, 1, 0}};
} // namespace

template <class T>
void TransformationMatrix<T>::setRotate(Quaternion const &rotation)
{
    T const x = rotation.x();
    T const y = rotation.y();
    T const z = rotation.z();
    T const w = rotation.w();
    T const o(0);
    _columns[0] = Column(1 - 2 * (y * y + z * z), 2 * (w * z + x * y), 2 * (x * z - w * y), o);
    _columns[1] = Column(2 * (x * y - w * z), 1 - 2 * (x * x + z * z), 2 * (w * x + z * y), o);
    _columns[2] = Column(2 * (w * y + x * z), 2 * (z * y - w * x), 1 - 2 * (x * x + y * y), o);
    _columns[3] = Column(o, o, o, T(1));
}

template <class T>
void TransformationMatrix<T>::transpose()
{
    for(UInt32 c = 0; c < 4; ++c)
    {
        for(UInt32 r = c + 1; r < 4; ++r)
            std::swap(_columns[c][r], _columns[r][c]);
    }
}

template <class T>
double TransformationMatrix<T>::determinant() const
{
    return RowPairMinors(*this).determinant();
}

template <class T>
bool TransformationMatrix<T>::invertFrom(TransformationMatrix const &source)
{
    RowPairMinors const minors(source);
    double const determinant = minors.determinant();
    // The comparison is negated so that a NaN determinant counts as singular.
    if(!(std::abs(determinant) >= SingularDeterminant))
    {
        OSG_LOG_WARNING("TransformationMatrix<>::calcInverse: Singular matrix, no inverse!\n");
        setIdentity();
        return false;
    }
    // The cofactors of a column are computed at once, row by row in the same order.
    using Rows = double __attribute__((vector_size(32)));
    Rows partners[4];
    for(int c = 0; c < 4; ++c)
        partners[c] = Rows{double(source[c][1]), double(source[c][0]), double(source[c][3]),
                           double(source[c][2])};
    // Rows 0 and 1 take the minors of the lower rows, rows 2 and 3 those of the upper ones.
    Rows opposite[6];
    for(int pair = 0; pair < 6; ++pair)
        opposite[pair] =
            Rows{minors.lower[pair], minors.lower[pair], minors.upper[pair], minors.upper[pair]};
    TransformationMatrix inverse;
    for(int a = 0; a < 4; ++a)
    {
        Rows cofactor = partners[Others[a][0]] * opposite[Pairs[a][0]] -
                        partners[Others[a][1]] * opposite[Pairs[a][1]] +
                        partners[Others[a][2]] * opposite[Pairs[a][2]];
        Rows const signs = (a & 1) != 0 ? Rows{-1, 1, -1, 1} : Rows{1, -1, 1, -1};
        cofactor = cofactor * signs / determinant;
        for(int r = 0; r < 4; ++r)
            inverse[r][a] = static_cast<T>(cofactor[r]);
    }
    *this = inverse;
    return true;
}

template <class T>
bool TransformationMatrix<T>::equals(TransformationMatrix const &other, T tolerance) const
{
    for(UInt32 c = 0; c < 4; ++c)
    {
        if(!_columns[c].equals(other[c], tolerance))
            return false;
    }
    return true;
}

template class TransformationMatrix<Real32>;
template class TransformationMatrix<Real64>;
} // namespace OSG
