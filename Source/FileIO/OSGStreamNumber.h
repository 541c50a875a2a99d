#pragma once

/// \file
/// Reads floats as formatted stream extraction does in the classic locale, but without a stream.
///
/// The form alone decides which characters belong to a number: an optional sign, digits with at
/// most one point among them, and, after a digit, one "e" or "E" with an optional sign and digits.
/// Words ("nan", "inf") and hexadecimal digits do not belong to a number. All of these characters
/// are taken. They make a number only if there is a digit before the exponent, a digit in the
/// exponent if there is one, and a value that a float can hold: "1e", "." and "1e400" are taken
/// whole and fail. Values are rounded to nearest, ties to even. A value that is too small becomes
/// denormal or a zero with its sign, and does not fail.

#include <array>
#include <bit>

#include "OSGBaseTypes.h"
#include "OSGDigitScan.h"
#include "OSGFileIOApi.h"

namespace OSG
{
/// The white space of the classic locale.
constexpr bool is_stream_space(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

/// Reads the usual short forms: up to 19 digits and an exponent of up to 4 digits. Returns the
/// place behind the number. Null, with `value` unchanged, where Real32Accumulator has to decide:
/// there is no number, the number fails, it reaches `end` (so that its next character is unknown),
/// or it needs exact arithmetic. `*end` must not be a digit, a point or "e", and DigitScanReach
/// bytes from there must be readable.
OSG_FILEIO_API char const *scan_short_real32(char const *begin, char const *end, Real32 &value);

/// Rounds a double to a float where this is sure to give the same result as rounding the exact
/// value once. The double may be off by one and a half units in its last place. If it is farther
/// than that from every midpoint of two floats, it lies on the right side of all of them. False
/// where it may not.
inline bool round_safely(Real64 wide, Real32 &value)
{
    // A double has 29 more bits of mantissa than a float. Halfway between two floats only the
    // highest of these bits is set. The margin is above the error of one and a half units.
    constexpr UInt64 BelowFloat = (UInt64(1) << 29) - 1;
    constexpr UInt64 Midpoint = UInt64(1) << 28;
    constexpr UInt64 Margin = 2;
    if((std::bit_cast<UInt64>(wide) & BelowFloat) - (Midpoint - Margin) <= 2 * Margin)
        return false;
    value = static_cast<Real32>(wide);
    return true;
}

/// `mantissa` / 10^`digits`, rounded once, where round_safely() does not decide.
OSG_FILEIO_API Real32 round_exactly(UInt64 mantissa, UInt32 digits);

namespace StreamNumberTables
{
/// All integers up to this one are exact in a double.
inline constexpr UInt64 ExactIntegerLimit = UInt64(1) << 53;
inline constexpr UInt64 PowersOfTen[] = {1,      10,      100,      1000,     10000,
                                         100000, 1000000, 10000000, 100000000};
inline constexpr Real64 Fractions[] = {1, 1e-1, 1e-2, 1e-3, 1e-4, 1e-5, 1e-6, 1e-7, 1e-8};
} // namespace StreamNumberTables

/// Takes a number of any length, one character after the other. Memory does not grow with the
/// length.
class OSG_FILEIO_API Real32Accumulator
{
  public:
    /// Takes `c` and returns true if it belongs to the number.
    bool accept(char c);
    /// Computes the number. If the characters make no number, the result is false and `value` is 0.
    bool finish(Real32 &value) const;

  private:
    enum class Place
    {
        Start,
        Mantissa,
        ExponentStart,
        Exponent
    };
    /// A midpoint between two floats has at most 113 significant digits. Of the digits beyond this
    /// limit it only matters whether one is not zero.
    static constexpr std::size_t DigitLimit = 120;

    void takeDigit(char digit);

    Place _place = Place::Start;
    bool _negative = false;
    bool _exponentNegative = false;
    bool _hasDigit = false;
    bool _hasPoint = false;
    bool _hasExponentDigit = false;
    bool _restIsNotZero = false;
    std::size_t _digitCount = 0;
    Int64 _scale = 0;    ///< value = kept digits as an integer * 10^_scale
    Int64 _exponent = 0; ///< without its sign; stops growing far beyond any float
    std::array<char, DigitLimit> _digits;
};
} // namespace OSG
