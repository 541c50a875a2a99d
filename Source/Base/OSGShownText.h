#pragma once

/// \file
/// Makes words of files safe to show in the log, in a table or on a terminal.

#include <string>
#include <string_view>

#include "OSGBaseApi.h"

namespace OSG
{
/// Returns `text` with each byte of a control character (below 0x20, 0x7F, U+0080 to U+009F)
/// written as \xNN, so that no escape sequence of a file reaches a terminal. A byte from 0x80 to
/// 0x9F that belongs to no UTF-8 character counts as a control character. Everything else is kept,
/// UTF-8 or not.
OSG_BASE_API std::string shown_text(std::string_view text);
} // namespace OSG
