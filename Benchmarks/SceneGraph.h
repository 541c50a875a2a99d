#pragma once

/// \file
/// The scene graph, up for as long as a benchmark program runs.

#include "OSGSystem.h"

namespace OSG::Bench
{
inline void bring_up()
{
    static bool const up = startUp();
    static_cast<void>(up);
}
} // namespace OSG::Bench
