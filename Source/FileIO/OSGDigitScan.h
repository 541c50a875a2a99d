#pragma once

/// \file
/// Parses decimal digits, many at a time.
///
/// The end of a loop over digits costs one mispredicted branch per number, and each number waits
/// for the end of the one before. Comparing many characters at once finds the ends of all numbers
/// among them without a branch (G. Langdale and D. Lemire, "Parsing Gigabytes of JSON per Second",
/// 2019). Eight digits are converted as one 64-bit number, which is called SWAR parsing
/// (D. Lemire, "Quickly parsing eight digits", 2018).

#include <bit>
#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

#include "OSGBaseTypes.h"

namespace OSG
{
/// This number of bytes from the beginning of a scan must be readable. Their content does not
/// matter.
constexpr std::size_t DigitScanReach = 80;
/// The most digits that are converted at once.
constexpr UInt32 DigitsAtOnce = 8;

constexpr bool is_decimal_digit(char c) { return static_cast<unsigned char>(c - '0') < 10; }

/// Bit i is set where the byte at `p` + i is no digit, for 16 bytes.
inline UInt32 other_than_digits_16(char const *p)
{
#if defined(__SSE2__)
    __m128i text;
    std::memcpy(&text, p, sizeof text);
    __m128i const digits = _mm_sub_epi8(text, _mm_set1_epi8('0'));
    __m128i const atLeastTen = _mm_cmpeq_epi8(_mm_max_epu8(digits, _mm_set1_epi8(10)), digits);
    return static_cast<UInt32>(_mm_movemask_epi8(atLeastTen));
#else
    UInt32 others = 0;
    for(UInt32 i = 0; i < 16; ++i)
        others |= static_cast<UInt32>(!is_decimal_digit(p[i])) << i;
    return others;
#endif
}

namespace DigitTables
{
/// The highest bytes of a word, by their number.
inline constexpr UInt64 HighestBytes[] = {0,
                                          0xff00000000000000,
                                          0xffff000000000000,
                                          0xffffff0000000000,
                                          0xffffffff00000000,
                                          0xffffffffff000000,
                                          0xffffffffffff0000,
                                          0xffffffffffffff00,
                                          0xffffffffffffffff};
} // namespace DigitTables

/// The digits before a place, at most DigitsAtOnce, as one number of eight bytes: the last digit in
/// the highest byte, zero bytes before the first one. The bytes of the digits are characters.
/// Without digits it is 0. Eight bytes before the place must be readable.
inline UInt64 digit_word(char const *end, UInt32 count)
{
    UInt64 text = 0;
    if constexpr(std::endian::native == std::endian::little)
    {
        std::memcpy(&text, end - sizeof text, sizeof text);
    }
    else
    {
        for(UInt32 i = 0; i < DigitsAtOnce; ++i)
            text |= UInt64(static_cast<unsigned char>(end[i - DigitsAtOnce])) << 8 * i;
    }
    return text & DigitTables::HighestBytes[count];
}

/// The number that the digits of a word make.
inline UInt32 number_of_word(UInt64 word)
{
    UInt64 digits = word & 0x0f0f0f0f0f0f0f0f;
    digits = (digits * (1 + (UInt64(10) << 8))) >> 8;
    digits = ((digits & 0x00ff00ff00ff00ff) * (1 + (UInt64(100) << 16))) >> 16;
    digits = ((digits & 0x0000ffff0000ffff) * (1 + (UInt64(10000) << 32))) >> 32;
    return static_cast<UInt32>(digits);
}

/// The number that `count` digits make, at most DigitsAtOnce.
inline UInt32 number_of_digits(char const *p, UInt32 count)
{
    if constexpr(std::endian::native == std::endian::little)
    {
        if(count == 0)
            return 0;
        UInt64 text;
        std::memcpy(&text, p, sizeof text);
        // Leading zeros pad the number to eight digits.
        return number_of_word(text << (64 - 8 * count));
    }
    UInt32 number = 0;
    for(UInt32 i = 0; i < count; ++i)
        number = number * 10 + static_cast<UInt32>(p[i] - '0');
    return number;
}

/// The number that the digits at a place make, and their count, 0 to DigitsAtOnce.
struct DigitScan
{
    UInt32 number;
    UInt32 count;
};

inline DigitScan scan_eight_digits(char const *p)
{
    UInt32 const others = other_than_digits_16(p) | 1u << DigitsAtOnce;
    UInt32 const count = static_cast<UInt32>(std::countr_zero(others));
    return {number_of_digits(p, count), count};
}

/// The ends of the numbers among 64 characters. They are passed one after the other, and finding
/// the next one takes two instructions.
///
///     DigitWindow window(text, other_than_digits);   // "12/345 6"
///     UInt32 const first = window.other();           // 2
///     window.pass();
///     UInt32 const second = window.other();          // 6
class DigitWindow
{
  public:
    static constexpr UInt32 Size = 64;
    /// The last character ends a number in any case. What it is decides whether the number really
    /// ends there.
    static constexpr UInt32 Last = Size - 1;

    /// Bit i of `others` is set where the byte at `text` + i is no digit.
    DigitWindow(char const *text, UInt64 others)
        : _text(text)
        , _others(others | UInt64(1) << Last)
    {
    }

    /// The place of the first character that is no digit, of those that were not passed.
    UInt32 other() const { return static_cast<UInt32>(std::countr_zero(_others)); }
    void pass() { _others &= _others - 1; }

    char operator[](UInt32 at) const { return _text[at]; }
    char const *at(UInt32 place) const { return _text + place; }

  private:
    char const *_text;
    UInt64 _others;
};
} // namespace OSG
