#pragma once

#include <ostream>

namespace Tool
{
/// Exit statuses of the program.
enum Status : int
{
    Success = 0,
    Failed = 1, ///< the work could not be done: no scene in the file, no memory
    Misused = 2 ///< the command line is wrong: one line has said why
};

/// Where a command writes: results, and everything else.
struct Streams
{
    std::ostream &out;
    std::ostream &err;
};

/// Runs one command line, the program's name first. The scene graph has to be up.
int runTool(int argc, char const *const *argv, Streams streams);
} // namespace Tool
