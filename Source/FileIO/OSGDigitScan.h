#pragma once

/// \file
/// Parses decimal digits, eight at a time.
///
/// The end of a loop over digits costs one mispredicted branch per number. Taking eight characters
/// as one 64-bit number finds the end without a branch. The method is called SWAR parsing (D.
/// Lemire, "Quickly parsing eight digits", 2018).

#include <bit>
#include <cstring>

#include "OSGBaseTypes.h"

namespace OSG
{
/// This number of bytes from the beginning of a scan must be readable. Their content does not
/// matter.
constexpr std::size_t DigitScanReach = 8;

constexpr bool is_decimal_digit(char c) { return static_cast<unsigned char>(c - '0') < 10; }

/// The number that the digits at a place make, and their count, 0 to 8.
struct DigitScan
{
    UInt32 number;
    UInt32 count;
};

inline DigitScan scan_eight_digits(char const *p)
{
    if constexpr(std::endian::native == std::endian::little)
    {
        UInt64 text;
        std::memcpy(&text, p, sizeof text);
        // A byte is a digit if its upper half is 3, and still is 3 after 6 is added. A carry of the
        // addition can only reach bytes behind the first byte that is no digit, which do not
        // matter.
        UInt64 const upper = 0xf0f0f0f0f0f0f0f0;
        UInt64 const three = 0x3030303030303030;
        UInt64 const carried = text + 0x0606060606060606;
        UInt64 const other = ((text & upper) ^ three) | ((carried & upper) ^ three);
        UInt32 const count = static_cast<UInt32>(std::countr_zero(other)) / 8;
        if(count == 0)
            return {0, 0};
        // Leading zeros pad the number to eight digits.
        UInt64 digits = (text & ~upper) << (64 - 8 * count);
        digits = digits * 10 + (digits >> 8);
        digits = (digits & 0x00ff00ff00ff00ff) * 100 + (digits >> 16 & 0x00ff00ff00ff00ff);
        digits = (digits & 0x0000ffff0000ffff) * 10000 + (digits >> 32 & 0x0000ffff0000ffff);
        return {static_cast<UInt32>(digits), count};
    }
    DigitScan scan = {0, 0};
    for(; scan.count < 8 && is_decimal_digit(p[scan.count]); ++scan.count)
        scan.number = scan.number * 10 + static_cast<UInt32>(p[scan.count] - '0');
    return scan;
}
} // namespace OSG
