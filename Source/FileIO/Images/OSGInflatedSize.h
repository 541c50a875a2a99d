#pragma once

/// \file
/// How much a deflate stream holds, told without taking memory for it.
///
/// After RFC 1950 and 1951. The bytes themselves are not made: a match counts by its length alone,
/// so no window is kept and distances are passed over unread as to where they point.

#include "OSGFileIOApi.h"
#include "OSGPictureBytes.h"

namespace OSG
{
/// True where the zlib stream in `bytes` gives at least `wanted` bytes before it ends or breaks.
OSG_FILEIO_API bool inflates_to(PictureBytes const &bytes, UInt64 wanted);
} // namespace OSG
