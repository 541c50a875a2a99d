#pragma once

/// \file
/// Numbers as formatted stream extraction reads them in the classic locale, without a stream.
///
/// Which characters belong to a number is a matter of their form alone and is decided before the
/// value is: an optional sign, digits with at most one point among them, and, after a digit, one
/// "e" or "E" with an optional sign and digits. Words ("nan", "inf") and hexadecimal digits do not
/// belong. What was taken is then a number only if it has a digit before the exponent, a digit in
/// the exponent if there is one, and a value that a float can hold: "1e", "." and "1e400" are taken
/// whole and fail. Values are rounded to nearest, ties to even; too small ones become denormal or
/// zero of their sign and do not fail.

#include <array>

#include "OSGBaseTypes.h"
#include "OSGFileIOApi.h"

namespace OSG
{
/// The white space of the classic locale.
constexpr bool is_stream_space(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

/// Reads the usual short forms: up to 19 digits, an exponent of up to 4 digits. Returns the place
/// behind the number, or null where it does not decide: no number, a failing one, one that reaches
/// `end` (its next character is unknown), or one that wants exact arithmetic. `value` is set only
/// with a result that is not null. `*end` must hold neither digit, point nor "e", and
/// DigitScanReach bytes from there must be readable.
OSG_FILEIO_API char const *scan_short_real32(char const *begin, char const *end, Real32 &value);

/// Takes a number of any length character by character; memory does not grow with the length.
class OSG_FILEIO_API Real32Accumulator
{
  public:
    /// Whether `c` belongs to the number after what was taken so far; takes it if so.
    bool accept(char c);
    /// The number that the characters make. False if they make none, then `value` is 0.
    bool finish(Real32 &value) const;

  private:
    enum class Place
    {
        Start,
        Mantissa,
        ExponentStart,
        Exponent
    };
    /// No midpoint between two floats has more significant digits than this; of the digits behind
    /// them it only matters whether one is not zero.
    static constexpr std::size_t _digitLimit = 120;

    void takeDigit(char digit);

    Place _place = Place::Start;
    bool _negative = false;
    bool _exponentNegative = false;
    bool _hasDigit = false;
    bool _hasPoint = false;
    bool _hasExponentDigit = false;
    bool _restIsNotZero = false;
    std::size_t _digitCount = 0;
    Int64 _scale = 0;    ///< power of ten that the kept digits, read as an integer, stand at
    Int64 _exponent = 0; ///< as written, without its sign; stops growing far beyond any float
    std::array<char, _digitLimit> _digits;
};
} // namespace OSG
