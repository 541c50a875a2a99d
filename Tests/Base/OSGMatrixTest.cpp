#include "OSGMatrix.h"

#include <limits>

#include <gmock/gmock.h>

#include "LogCapture.h"
#include "MathPrinters.h"
#include "RandomNumbers.h"

namespace
{
using namespace OSG;
using OSG::Test::LogCapture;
using OSG::Test::RandomNumbers;
using testing::ElementsAre;
using testing::IsEmpty;

char const *const ZeroW = "TransformationMatrix<>::multFull(Pnt3, Pnt3): w == 0.0\n";
char const *const Singular = "TransformationMatrix<>::calcInverse: Singular matrix, no inverse!\n";

Matrix random_matrix(RandomNumbers &random)
{
    Matrix m;
    for(UInt32 c = 0; c < 4; ++c)
    {
        for(UInt32 r = 0; r < 4; ++r)
            m[c][r] = random.real(-1.f, 1.f);
    }
    return m;
}

/// Slow obvious inverse: Gauss-Jordan with pivots, in double precision.
bool reference_inverse(Matrix const &m, double out[4][4])
{
    double rows[4][8] = {};
    for(int r = 0; r < 4; ++r)
    {
        for(int c = 0; c < 4; ++c)
            rows[r][c] = m[c][r];
        rows[r][4 + r] = 1.0;
    }
    for(int c = 0; c < 4; ++c)
    {
        int pivot = c;
        for(int r = c + 1; r < 4; ++r)
        {
            if(std::abs(rows[r][c]) > std::abs(rows[pivot][c]))
                pivot = r;
        }
        if(rows[pivot][c] == 0.0)
            return false;
        std::swap(rows[c], rows[pivot]);
        double const scale = 1.0 / rows[c][c];
        for(double &x : rows[c])
            x *= scale;
        for(int r = 0; r < 4; ++r)
        {
            double const factor = rows[r][c];
            for(int k = 0; r != c && k < 8; ++k)
                rows[r][k] -= factor * rows[c][k];
        }
    }
    for(int c = 0; c < 4; ++c)
    {
        for(int r = 0; r < 4; ++r)
            out[c][r] = rows[r][4 + c];
    }
    return true;
}

TEST(Matrix, StartsAsTheIdentityAndIsContiguousByColumns)
{
    Matrix const m;
    for(int i = 0; i < 16; ++i)
        EXPECT_EQ(m.values()[i], i % 5 == 0 ? 1.f : 0.f);
}

TEST(Matrix, ElementIsColumnThenRowAndTranslationIsColumnThree)
{
    Matrix m;
    m.setTranslate(4, 5, 6);
    EXPECT_EQ(m[3], Vec4f(4, 5, 6, 1));
    EXPECT_EQ(m * Pnt3f(1, 2, 3), Pnt3f(5, 7, 9));
    EXPECT_EQ(m * Vec3f(1, 2, 3), Vec3f(1, 2, 3));
}

TEST(Matrix, ReadsSixteenNumbersByColumns)
{
    Real32 numbers[16];
    for(int i = 0; i < 16; ++i)
        numbers[i] = Real32(i);
    Matrix const m(numbers);
    EXPECT_EQ(m[1], Vec4f(4, 5, 6, 7));
}

TEST(Matrix, ScaleStandsOnTheDiagonal)
{
    Matrix m;
    m.setScale(2, 3, 4);
    EXPECT_EQ(m * Pnt3f(1, 1, 1), Pnt3f(2, 3, 4));
    m.setScale(5);
    EXPECT_EQ(m * Vec3f(1, 1, 1), Vec3f(5, 5, 5));
}

TEST(Matrix, MultIsAffineWhateverTheFourthRow)
{
    Matrix m;
    m[0][3] = 7;
    m[3][3] = 2;
    Pnt3f out;
    m.mult(Pnt3f(1, 2, 3), out);
    EXPECT_EQ(out, Pnt3f(1, 2, 3));
}

TEST(Matrix, MultFullMultipliesByTheReciprocalOfW)
{
    Matrix m;
    m[2][3] = -1; // w = -z
    m[3][3] = 0;
    Pnt3f out;
    m.multFull(Pnt3f(1, 2, -3), out);
    Real32 const scale = 1.f / 3.f;
    EXPECT_EQ(out, Pnt3f(1 * scale, 2 * scale, -3 * scale));
}

TEST(Matrix, PointWithZeroWStaysUndividedAndIsLogged)
{
    LogCapture log;
    Matrix m;
    m[0][3] = 1; // w = x + 1
    m[3] = Vec4f(10, 20, 30, 1);
    Pnt3f out;
    m.multFull(Pnt3f(-1, 0, 0), out);
    EXPECT_EQ(out, Pnt3f(9, 20, 30));
    EXPECT_THAT(log.texts(LOG_WARNING), ElementsAre(ZeroW));
}

TEST(Matrix, VectorIsDividedByItsOwnWAndZeroIsNotLogged)
{
    LogCapture log;
    Matrix m;
    m.setTranslate(10, 20, 30);
    Vec3f out;
    m.multFull(Vec3f(1, 2, 4), out);
    EXPECT_EQ(out, Vec3f(1, 2, 4));
    m[0][3] = 2; // w = 2x, without m[3][3]
    m.multFull(Vec3f(2, 4, 8), out);
    EXPECT_EQ(out, Vec3f(0.5f, 1, 2));
    EXPECT_THAT(log.texts(), IsEmpty());
}

TEST(Matrix, InAndOutMayBeOneObject)
{
    Matrix m;
    m[0] = Vec4f(0, 1, 0, 0);
    m[1] = Vec4f(1, 0, 0, 0);
    Pnt3f p(1, 2, 3);
    m.multFull(p, p);
    EXPECT_EQ(p, Pnt3f(2, 1, 3));
    m.mult(p, p);
    EXPECT_EQ(p, Pnt3f(1, 2, 3));
}

TEST(Matrix, MultIsFromTheRightAndMultLeftFromTheLeft)
{
    Matrix translate, scale;
    translate.setTranslate(1, 0, 0);
    scale.setScale(2);
    Matrix m = translate;
    m.mult(scale);
    EXPECT_EQ(m * Pnt3f(1, 1, 1), Pnt3f(3, 2, 2));
    m = translate;
    m.multLeft(scale);
    EXPECT_EQ(m * Pnt3f(1, 1, 1), Pnt3f(4, 2, 2));
    m.mult(m);
    EXPECT_EQ(m * Pnt3f(0, 0, 0), Pnt3f(6, 0, 0));
}

TEST(Matrix, TransposeSwapsColumnsAndRows)
{
    RandomNumbers random(4);
    Matrix const m = random_matrix(random);
    Matrix t = m;
    t.transpose();
    for(int c = 0; c < 4; ++c)
    {
        for(int r = 0; r < 4; ++r)
            EXPECT_EQ(t[c][r], m[r][c]);
    }
}

TEST(Matrix, InverseAgreesWithEliminationToTheLastDigits)
{
    RandomNumbers random(5);
    for(int i = 0; i < 2000; ++i)
    {
        Matrix const m = random_matrix(random);
        Matrix inverse;
        ASSERT_TRUE(inverse.invertFrom(m));
        double expected[4][4];
        ASSERT_TRUE(reference_inverse(m, expected));
        for(int c = 0; c < 4; ++c)
        {
            for(int r = 0; r < 4; ++r)
                ASSERT_NEAR(inverse[c][r], expected[c][r], 1e-6 * (1 + std::abs(expected[c][r])))
                    << "case " << i;
        }
        ASSERT_TRUE(inverse.invert());
        ASSERT_NEAR(m.determinant() * inverse.determinant(), m.determinant() * m.determinant(),
                    1e-3);
    }
}

TEST(Matrix, InverseOfFarTranslationAndSmallScaleKeepsItsDigits)
{
    Matrix m;
    m.setScale(1e-3f);
    m[3] = Vec4f(1e6f, -2e6f, 3e6f, 1);
    Matrix inverse;
    ASSERT_TRUE(inverse.invertFrom(m));
    EXPECT_NEAR(inverse[0][0], 1e3f, 1e-3f);
    EXPECT_NEAR(inverse[3][0], -1e9f, 1e2f);
}

TEST(Matrix, SingularMatrixGivesTheIdentityAWarningAndFalse)
{
    LogCapture log;
    Matrix flat;
    flat.setScale(1, 1, 0);
    Matrix result;
    result.setScale(7);
    EXPECT_FALSE(result.invertFrom(flat));
    EXPECT_EQ(result, Matrix());
    EXPECT_THAT(log.texts(LOG_WARNING), ElementsAre(Singular));
}

TEST(Matrix, DeterminantBelowTheLimitIsSingularAndAboveItIsNot)
{
    LogCapture log;
    Matrix m, result;
    m.setScale(0.99e-10f); // determinant about 0.97e-30
    EXPECT_FALSE(result.invertFrom(m));
    m.setScale(1.01e-10f);
    EXPECT_TRUE(result.invertFrom(m));
    EXPECT_EQ(log.texts().size(), 1u);
}

TEST(Matrix, AMatrixWithANumberThatIsNoneHasNoInverse)
{
    LogCapture log;
    Matrix m, result;
    m[1][2] = std::numeric_limits<Real32>::quiet_NaN();
    EXPECT_FALSE(result.invertFrom(m));
    EXPECT_EQ(result, Matrix());
    EXPECT_THAT(log.texts(LOG_WARNING), ElementsAre(Singular));
}

TEST(Matrix, EqualsTakesTheToleranceInForAllElements)
{
    Matrix a, b;
    b[2][1] = 0.25f;
    EXPECT_TRUE(a.equals(b, 0.25f));
    EXPECT_TRUE(b.equals(a, 0.25f));
    EXPECT_FALSE(a.equals(b, 0.2f));
    b[2][1] = std::numeric_limits<Real32>::quiet_NaN();
    EXPECT_FALSE(a.equals(b, 1e30f));
}
} // namespace
