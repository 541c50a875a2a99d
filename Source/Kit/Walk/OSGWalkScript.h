#pragma once

/// \file
/// Scripts of keys: which are down, and for how long.

#include <optional>
#include <string_view>
#include <vector>

#include "OSGBaseTypes.h"
#include "OSGTolvaniteKitApi.h"

namespace OSG
{
/// A line of a script: `W+Shift 1500`, or `none 200` for no key.
struct WalkScriptLine
{
    std::vector<Int16> keys; ///< virtual-key codes, as Desktop::isDown takes them
    UInt32 milliseconds = 0;

    bool holds(Int16 key) const;
};

/// Whether a line of a script stands for nothing: it is blank or begins with `#`.
OSG_TOLVANITEKIT_API bool is_walk_comment(std::string_view text);
/// A line of a script: `W A S D Q E X Y C Shift Ctrl Space` joined by `+`, or `none` alone, then
/// blanks and a whole number of milliseconds, at most 4294967295. Nothing for any other text.
OSG_TOLVANITEKIT_API std::optional<WalkScriptLine> parse_walk_line(std::string_view text);
} // namespace OSG
