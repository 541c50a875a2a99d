#pragma once

#include <functional>
#include <string>

namespace Tool
{
/// Writes a file anew, or leaves it as it was. `write` gets a path of the target's name in a folder
/// of its own beside the target and returns whether it could write it; further files that it makes
/// there go beside the target too. They take their places when all are complete.
///
/// Empty on success, else the reason in words of the system; nothing is left behind then. Signals
/// that end the program (SIGHUP, SIGINT, SIGQUIT, SIGTERM) clear the folder away first. A link as
/// the target stays a link: what it leads to is replaced.
std::string replace_file(std::string const &target,
                         std::function<bool(std::string const &path)> const &write);
} // namespace Tool
