#pragma once

/// \file
/// The obvious readers: real extraction from real streams, `strtol`, lists with the newest in
/// front. Slow, and right by inspection; the readers of the library are held to them.

#include "ObjOutcome.h"

namespace OSG::Test
{
ObjOutcome read_obj_slowly(std::string const &text, PieceBuffer::Habits const &habits = {});
ObjOutcome read_mtl_slowly(std::string const &text, PieceBuffer::Habits const &habits = {});
} // namespace OSG::Test
