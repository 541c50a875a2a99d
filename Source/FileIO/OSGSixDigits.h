#pragma once

/// \file
/// Floats as text, as a fresh output stream writes them: six significant digits.

#include "OSGBaseTypes.h"
#include "OSGFileIOApi.h"

namespace OSG
{
/// Bytes that write_six_digits needs, as in "-1.17549e-38".
constexpr std::size_t SixDigitsRoom = 16;

/// Writes `value` as a stream in the classic locale does whose format nobody has changed: like "%g"
/// of printf, so that 0.1f is "0.1", 1000000 is "1e+06" and NaN is "nan" or "-nan". The decimal
/// value is rounded to nearest, ties to even. Returns the place behind the text, which has no zero
/// at its end.
OSG_FILEIO_API char *write_six_digits(char *to, Real32 value);
} // namespace OSG
