#include "OSGSixDigits.h"

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstring>

namespace OSG
{
namespace
{
constexpr int Digits = 6;
constexpr Real64 Powers[] = {1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9, 1e10};

/// The decimals that a value of 2^-14 to 2^19 has in a text of six digits. Where the value is at
/// the upper end of its power of two, one decimal less may do.
constexpr int LowestExponent = -14;
constexpr auto Decimals = []
{
    std::array<UInt8, 34> decimals{};
    for(int e = 0; e < int(decimals.size()); ++e)
    {
        Real64 power = 1;
        for(int i = 0; i < e + LowestExponent; ++i)
            power *= 2;
        for(int i = 0; i > e + LowestExponent; --i)
            power /= 2;
        while(power * Powers[decimals[e]] < Powers[Digits - 1])
            ++decimals[e];
    }
    return decimals;
}();

constexpr auto Pairs = []
{
    std::array<char, 200> pairs{};
    for(int i = 0; i < 100; ++i)
    {
        pairs[2 * i] = static_cast<char>('0' + i / 10);
        pairs[2 * i + 1] = static_cast<char>('0' + i % 10);
    }
    return pairs;
}();

/// A decimal number: `digits`, which has six of them, divided by 10 to the power `decimals`.
struct Decimal
{
    UInt32 digits;
    int decimals;
};

// The product of a float's 24 bits and of a power of five below 2^21 is exact in a double, so this
// rounds once.
Decimal round_to_six_digits(Real64 value, int exponent)
{
    int decimals = Decimals[exponent - LowestExponent];
    Real64 scaled = value * Powers[decimals];
    if(scaled >= Powers[Digits])
        scaled = value * Powers[--decimals];
    UInt32 digits = static_cast<UInt32>(scaled);
    Real64 const rest = scaled - digits;
    if(rest > 0.5 || (rest == 0.5 && digits % 2 != 0))
        ++digits;
    if(digits == 1000000)
        return {100000, decimals - 1};
    return {digits, decimals};
}

char *write_decimal(char *to, Decimal const &decimal)
{
    char digits[Digits];
    std::memcpy(digits, &Pairs[2 * (decimal.digits / 10000)], 2);
    std::memcpy(digits + 2, &Pairs[2 * (decimal.digits / 100 % 100)], 2);
    std::memcpy(digits + 4, &Pairs[2 * (decimal.digits % 100)], 2);
    int const whole =
        Digits - decimal.decimals; // digits before the point; below 1 for small values
    int last = Digits;
    while(last > whole && last > 1 && digits[last - 1] == '0')
        --last;
    if(whole <= 0)
    {
        std::copy_n("0.0000", 6, to);
        std::memcpy(to + 2 - whole, digits, Digits);
        return to + 2 - whole + last;
    }
    std::memcpy(to, digits, Digits);
    if(last == whole)
        return to + whole;
    to[whole] = '.';
    std::memcpy(to + whole + 1, digits + whole, static_cast<std::size_t>(last - whole));
    return to + last + 1;
}
} // namespace

char *write_six_digits(char *to, Real32 value)
{
    Real32 const size = std::abs(value);
    // Beyond these limits the text has an exponent.
    if(!(size >= 1e-4f && size < 999999.5f))
        return std::to_chars(to, to + SixDigitsRoom, value, std::chars_format::general, Digits).ptr;
    if(value < 0.f)
        *to++ = '-';
    int const exponent = static_cast<int>(std::bit_cast<UInt32>(size) >> 23) - 127;
    return write_decimal(to, round_to_six_digits(size, exponent));
}
} // namespace OSG
