#pragma once

#include <ostream>
#include <string>

namespace Tool
{
/// Exit statuses of the program.
enum Status : int
{
    Success = 0,
    Failed = 1, ///< the command failed: no scene in the file, no memory
    Misused = 2 ///< the command line is wrong; a line has said why
};

class LogLines;

/// Where a command writes its results and its messages.
struct Streams
{
    std::ostream &out;
    std::ostream &err;
    LogLines *log = nullptr; ///< shows the log while a command runs
};

/// Writes the program's name and `text` as one line to standard error, after the lines of the log.
/// Control characters, which a file's name may have, are shown as \xNN.
void complain(Streams streams, std::string const &text);

/// Shows `text` as a warning, which --quiet silences.
void warn(Streams streams, std::string const &text);

/// Runs one command line, which begins with the program's name. startUp() must have been called.
int run_tool(int argc, char const *const *argv, Streams streams);
} // namespace Tool
