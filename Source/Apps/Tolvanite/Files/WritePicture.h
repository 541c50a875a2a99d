#pragma once

#include <string>
#include <vector>

#include "OSGBaseTypes.h"

namespace Tool
{
/// Empty where a picture of this size can be written, otherwise the reason, so that nobody draws
/// for nothing.
std::string refusal_of_size(OSG::UInt32 width, OSG::UInt32 height);

/// Writes pixels as OSG::Picture has them, in the format of the target's suffix; see replace_file.
/// Empty on success, otherwise what is wrong.
std::string write_picture(std::string const &target, std::vector<OSG::UInt8> const &pixels,
                          OSG::UInt32 width, OSG::UInt32 height);
} // namespace Tool
