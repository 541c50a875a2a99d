#pragma once

/// \file
/// Formats of messages that a host may want to tell from others: see Log::getMessageFormat().

namespace OSG::ObjMessages
{
/// A material library was not found; takes its name.
inline constexpr char LibraryMissing[] = "Couldn't open '%s'!\n";
/// No library has a material; takes its name. Where a library is missing each use of it says so.
inline constexpr char MaterialUnknown[] = "Unkown mtl %s\n";
} // namespace OSG::ObjMessages
