#pragma once

/// \file
/// Words of files, fit to be shown: in the log, in a table, on a terminal.

#include <string>
#include <string_view>

#include "OSGBaseApi.h"

namespace OSG
{
/// `text` with its control characters (below 0x20, 0x7F, U+0080 to U+009F) as \xNN, so that no
/// escape sequence of a file reaches a terminal. Everything else stays, UTF-8 or not; a byte from
/// 0x80 to 0x9F that belongs to no character of UTF-8 counts as a control character.
OSG_BASE_API std::string shown_text(std::string_view text);
} // namespace OSG
