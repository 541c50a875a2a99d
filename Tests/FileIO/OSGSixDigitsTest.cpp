#include "OSGSixDigits.h"

#include <bit>
#include <cmath>
#include <limits>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "RandomNumbers.h"

using namespace OSG;
using namespace OSG::Test;

namespace
{
std::string six_digits(Real32 value)
{
    char text[SixDigitsRoom];
    return {text, write_six_digits(text, value)};
}

/// Writes numbers by a fresh stream.
class FreshStream
{
  public:
    FreshStream() { _stream.imbue(std::locale::classic()); }
    std::string operator()(Real32 value)
    {
        _stream.str({});
        _stream << value;
        return _stream.str();
    }

  private:
    std::ostringstream _stream;
};

TEST(SixDigits, AreThoseOfAFreshStreamForValuesAtTheBorders)
{
    using Limits = std::numeric_limits<Real32>;
    FreshStream fresh;
    std::vector<Real32> values = {0.f,
                                  1.f,
                                  0.1f,
                                  0.5f,
                                  100.f,
                                  123456.f,
                                  1234567.f,
                                  0.0001f,
                                  1e-4f,
                                  Limits::max(),
                                  Limits::min(),
                                  Limits::denorm_min(),
                                  Limits::infinity(),
                                  Limits::quiet_NaN(),
                                  0.000122070312f};
    for(Real32 power = 1e-7f; power < 1e8f; power *= 10)
    {
        for(Real32 const factor : {1.f, 0.999999f, 0.9999995f, 0.99999949f, 1.000005f, 9.999995f})
            values.push_back(power * factor);
    }
    for(Real32 const value : std::vector<Real32>(values))
    {
        values.push_back(std::nextafter(value, Limits::infinity()));
        values.push_back(std::nextafter(value, 0.f));
    }
    for(Real32 const value : values)
    {
        EXPECT_EQ(six_digits(value), fresh(value));
        EXPECT_EQ(six_digits(-value), fresh(-value));
    }
}

TEST(SixDigits, RoundTiesToTheEvenDigit)
{
    EXPECT_EQ(six_digits(100000.5f), "100000");
    EXPECT_EQ(six_digits(100001.5f), "100002");
    EXPECT_EQ(six_digits(12345.25f), "12345.2");
    EXPECT_EQ(six_digits(12345.75f), "12345.8");
    EXPECT_EQ(six_digits(999999.5f), "1e+06");
    EXPECT_EQ(six_digits(999999.4375f), "999999");
}

TEST(SixDigits, AreThoseOfAFreshStreamForAnyBits)
{
    RandomNumbers random(11);
    FreshStream fresh;
    for(int i = 0; i < 300000; ++i)
    {
        Real32 const value = std::bit_cast<Real32>(static_cast<UInt32>(random.next()));
        ASSERT_EQ(six_digits(value), fresh(value)) << std::bit_cast<UInt32>(value);
    }
}

TEST(SixDigits, AreThoseOfAFreshStreamForCoordinates)
{
    RandomNumbers random(12);
    FreshStream fresh;
    for(int i = 0; i < 600000; ++i)
    {
        Real32 const size = std::exp2(random.real(-15.f, 22.f));
        Real32 const value = random.below(4) == 0 ? std::round(size * 64.f) / 64.f : size;
        ASSERT_EQ(six_digits(value), fresh(value)) << std::bit_cast<UInt32>(value);
    }
}
} // namespace
