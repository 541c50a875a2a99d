#pragma once

#include <string_view>

#include "SelectionSettings.h"
#include "VolumeOptions.h"

namespace Tool
{
/// One line of a file of queries.
struct SelectQuery
{
    VolumeValues volume;
    SelectionSettings settings;
};

/// Reads a JSON object whose keys are the options of `select`. What it does not say is taken from
/// `defaults`. Each number is rounded once to 32 bits. Raises CLI::ParseError for anything else: no
/// object, an unknown key, a key that stands twice, a value of another type, a number beyond 32
/// bits. Whether the options go together is not checked.
SelectQuery parse_query(std::string_view line, SelectionSettings const &defaults);
} // namespace Tool
