#include "OSGStreamNumber.h"

#include <charconv>
#include <cmath>
#include <cstdio>
#include <limits>

namespace OSG
{
namespace
{
// 10^22 is the largest power of ten that a double holds exactly: 5^22 has less than 53 bits.
constexpr int ExactPowerLimit = 22;
/// From 1e-22 to 1e22. The positive powers are exact, the negative ones are rounded.
constexpr Real64 PowerOfTen[] = {1e-22, 1e-21, 1e-20, 1e-19, 1e-18, 1e-17, 1e-16, 1e-15, 1e-14,
                                 1e-13, 1e-12, 1e-11, 1e-10, 1e-9,  1e-8,  1e-7,  1e-6,  1e-5,
                                 1e-4,  1e-3,  1e-2,  1e-1,  1e0,   1e1,   1e2,   1e3,   1e4,
                                 1e5,   1e6,   1e7,   1e8,   1e9,   1e10,  1e11,  1e12,  1e13,
                                 1e14,  1e15,  1e16,  1e17,  1e18,  1e19,  1e20,  1e21,  1e22};
// The mantissa of a short number fits into 64 bits. Its exponent is far from overflowing an int.
constexpr std::ptrdiff_t ShortDigitLimit = 19;
constexpr std::ptrdiff_t ShortExponentLimit = 4;

char const *scan_more_digits(char const *p, UInt64 &number)
{
    for(; is_decimal_digit(*p); ++p)
        number = number * 10 + static_cast<UInt64>(*p - '0');
    return p;
}

/// Appends the digits at `p` to the number. The number wraps around where it has too many digits;
/// the caller counts them.
inline char const *scan_digits(char const *p, UInt64 &number)
{
    DigitScan const scan = scan_eight_digits(p);
    number = number * StreamNumberTables::PowersOfTen[scan.count] + scan.number;
    p += scan.count;
    return scan.count < 8 ? p : scan_more_digits(p, number);
}

/// Reads an exponent; `p` stands behind the "e". Null where it has no digit or too many.
char const *scan_exponent(char const *p, int &exponent)
{
    bool const negative = *p == '-';
    if(negative || *p == '+')
        ++p;
    UInt64 magnitude = 0;
    char const *const first = p;
    p = scan_digits(p, magnitude);
    if(p == first || p - first > ShortExponentLimit)
        return nullptr;
    exponent += negative ? -static_cast<int>(magnitude) : static_cast<int>(magnitude);
    return p;
}

/// The fast path of Clinger (How to Read Floating Point Numbers Accurately, 1990), adapted to
/// floats. Computes `mantissa` * 10^`exponent` in double precision. The integer is exact. A
/// positive power is exact too; a negative one is a rounded reciprocal, which saves the slow
/// division. So the double is off by at most one and a half units in its last place. False where
/// that is not enough, or where the fast path does not apply.
bool scale_safely(UInt64 mantissa, int exponent, Real32 &value)
{
    if(mantissa == 0)
    {
        value = 0;
        return true;
    }
    if(mantissa > StreamNumberTables::ExactIntegerLimit || exponent < -ExactPowerLimit ||
       exponent > ExactPowerLimit)
        return false;
    return round_safely(static_cast<Real64>(mantissa) * PowerOfTen[exponent + ExactPowerLimit],
                        value);
}
} // namespace

char const *scan_short_real32(char const *begin, char const *end, Real32 &value)
{
    char const *p = begin;
    bool const negative = *p == '-';
    if(negative || *p == '+')
        ++p;
    UInt64 mantissa = 0;
    int exponent = 0;
    char const *const first = p;
    p = scan_digits(p, mantissa);
    std::ptrdiff_t digits = p - first;
    if(*p == '.')
    {
        char const *const fraction = ++p;
        p = scan_digits(p, mantissa);
        exponent = -static_cast<int>(p - fraction < 32 ? p - fraction : 32);
        digits += p - fraction;
    }
    if(digits == 0 || digits > ShortDigitLimit)
        return nullptr;
    if(*p == 'e' || *p == 'E')
    {
        p = scan_exponent(p + 1, exponent);
        if(p == nullptr)
            return nullptr;
    }
    Real32 magnitude;
    if(p >= end || !scale_safely(mantissa, exponent, magnitude))
        return nullptr;
    value = negative ? -magnitude : magnitude;
    return p;
}

Real32 round_exactly(UInt64 mantissa, UInt32 digits)
{
    char text[40];
    int const length = std::snprintf(text, sizeof text, "%llue-%u",
                                     static_cast<unsigned long long>(mantissa), digits);
    Real32 value = 0;
    std::from_chars(text, text + length, value);
    return value;
}

bool Real32Accumulator::accept(char c)
{
    switch(_place)
    {
    case Place::Start:
        _place = Place::Mantissa;
        if(c == '+' || c == '-')
        {
            _negative = c == '-';
            return true;
        }
        [[fallthrough]];
    case Place::Mantissa:
        if(is_decimal_digit(c))
            takeDigit(c);
        else if(c == '.' && !_hasPoint)
            _hasPoint = true;
        else if((c == 'e' || c == 'E') && _hasDigit)
            _place = Place::ExponentStart;
        else
            return false;
        return true;
    case Place::ExponentStart:
        _place = Place::Exponent;
        if(c == '+' || c == '-')
        {
            _exponentNegative = c == '-';
            return true;
        }
        [[fallthrough]];
    case Place::Exponent:
        if(!is_decimal_digit(c))
            return false;
        _hasExponentDigit = true;
        if(_exponent < std::numeric_limits<Int64>::max() / 100)
            _exponent = _exponent * 10 + (c - '0');
        return true;
    }
    return false;
}

void Real32Accumulator::takeDigit(char digit)
{
    _hasDigit = true;
    bool const keep = _digitCount < DigitLimit && (_digitCount > 0 || digit != '0');
    if(keep)
        _digits[_digitCount++] = digit;
    else if(digit != '0')
        _restIsNotZero = true;
    bool const dropped = !keep && _digitCount > 0;
    if(_hasPoint && !dropped)
        --_scale;
    else if(!_hasPoint && dropped)
        ++_scale;
}

bool Real32Accumulator::finish(Real32 &value) const
{
    value = 0;
    bool const hasExponent = _place == Place::ExponentStart || _place == Place::Exponent;
    if(!_hasDigit || (hasExponent && !_hasExponentDigit))
        return false;
    Real32 const sign = _negative ? -1.0f : 1.0f;
    value = std::copysign(0.0f, sign);
    if(_digitCount == 0)
        return true;

    // The value is 0.DIGITS times 10^power. A power far outside the range of a float is decided
    // here, so that the text below stays short. Floats end at about 1e-45 and 3e38.
    Int64 const power =
        _scale + (_exponentNegative ? -_exponent : _exponent) + static_cast<Int64>(_digitCount);
    if(power < -100)
        return true;
    bool fits = power < 100;
    Real32 magnitude = 0;
    if(fits)
    {
        std::array<char, DigitLimit + 16> text;
        char *p = text.data();
        *p++ = '.';
        for(std::size_t i = 0; i < _digitCount; ++i)
            *p++ = _digits[i];
        if(_restIsNotZero)
            *p++ = '1';
        *p++ = 'e';
        p = std::to_chars(p, text.data() + text.size(), power).ptr;
        std::errc const error = std::from_chars(text.data(), p, magnitude).ec;
        // A magnitude that is too small gives zero and does not fail.
        fits = (error == std::errc() && std::isfinite(magnitude)) ||
               (error == std::errc::result_out_of_range && power < 0);
        if(error != std::errc())
            magnitude = 0;
    }
    value = fits ? std::copysign(magnitude, sign) : 0.0f;
    return fits;
}
} // namespace OSG
