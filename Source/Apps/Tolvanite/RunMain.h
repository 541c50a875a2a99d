#pragma once

#include "Tool.h"

namespace Tool
{
/// What the programs' main functions have in common: the scene graph is up while `run` runs, with
/// the standard streams, and memory that runs out, also before, is one line. The result is `run`'s,
/// or Failed where the results could not be written.
int run_main(int argc, char **argv, int (*run)(int, char const *const *, Streams));
} // namespace Tool
