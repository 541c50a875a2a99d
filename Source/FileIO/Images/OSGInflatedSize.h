#pragma once

/// \file
/// Measures the size of the data in a deflate stream without allocating memory for the data.
///
/// The formats are those of RFC 1950 and 1951. The data is not produced. Only the length of a match
/// counts, so there is no window, and distances are not checked.

#include "OSGFileIOApi.h"
#include "OSGPictureBytes.h"

namespace OSG
{
/// True where the zlib stream in `bytes` holds at least `wanted` bytes before its end or its first
/// error.
OSG_FILEIO_API bool inflates_to(PictureBytes const &bytes, UInt64 wanted);
} // namespace OSG
