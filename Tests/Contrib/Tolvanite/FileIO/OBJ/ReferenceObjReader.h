#pragma once

/// \file
/// Obvious readers: extraction from real streams, `strtol`, lists with the newest element in front.
/// They are slow and can be checked by reading them. The library's readers are compared with them.

#include "ObjOutcome.h"

namespace OSG::Test
{
ObjOutcome read_obj_slowly(std::string const &text, PieceBuffer::Habits const &habits = {});
ObjOutcome read_mtl_slowly(std::string const &text, PieceBuffer::Habits const &habits = {});
} // namespace OSG::Test
