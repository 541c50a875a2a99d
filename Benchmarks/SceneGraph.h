#pragma once

/// \file
/// Starts the scene graph for the run of a benchmark program.

#include "OSGSystem.h"

namespace OSG::Bench
{
inline void bring_up()
{
    static bool const up = startUp();
    static_cast<void>(up);
}
} // namespace OSG::Bench
