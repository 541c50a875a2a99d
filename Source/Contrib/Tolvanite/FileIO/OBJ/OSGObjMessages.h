#pragma once

/// \file
/// Formats of messages that a host may want to recognise, see Log::getMessageFormat().

namespace OSG::ObjMessages
{
/// A material library was not found. The argument is its name.
inline constexpr char LibraryMissing[] = "Couldn't open '%s'!\n";
/// No library has a material. The argument is its name. Where a library is missing, each use of its
/// materials logs this.
inline constexpr char MaterialUnknown[] = "Unkown mtl %s\n";
} // namespace OSG::ObjMessages
