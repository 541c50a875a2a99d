#pragma once

#include <ostream>
#include <string>

namespace Tool
{
/// Exit statuses of the program.
enum Status : int
{
    Success = 0,
    Failed = 1, ///< the work could not be done: no scene in the file, no memory
    Misused = 2 ///< the command line is wrong: one line has said why
};

class LogLines;

/// Where a command writes: results, and everything else.
struct Streams
{
    std::ostream &out;
    std::ostream &err;
    LogLines *log = nullptr; ///< what the log has to say, while a command runs
};

/// Writes `text` behind the program's name as one line of standard error, behind what the log had
/// to say before. Control characters, as a file's name may have them, stand as \xNN.
void complain(Streams streams, std::string const &text);

/// Runs one command line, the program's name first. The scene graph has to be up.
int run_tool(int argc, char const *const *argv, Streams streams);
} // namespace Tool
