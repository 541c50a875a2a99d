#pragma once

#include <functional>
#include <string>

#include "WorkFolder.h"

namespace Tool
{
inline bool nothing_stays(std::filesystem::path const &) { return false; }

/// Replaces a file as a whole or leaves it unchanged. `write` receives a path in a new folder
/// beside the target. The path ends with the target's name. `write` returns whether it could write
/// the file. It may make further files in the folder, which are also moved beside the target. All
/// files are moved only when all are complete.
///
/// A further file is not moved where a file that exists would be replaced and `stays` is true for
/// it.
///
/// Returns an empty text on success, otherwise the system's reason; the folder is removed in either
/// case. It is also removed if a signal (SIGHUP, SIGINT, SIGQUIT, SIGTERM) ends the program. If the
/// target is a link, the file that it leads to is replaced. The further files are moved beside the
/// link, where a reader that is given the link looks for them; the link and its file have to be on
/// one file system then.
std::string replace_file(std::string const &target,
                         std::function<bool(std::string const &path)> const &write,
                         WorkFolder::Stays const &stays = nothing_stays);
} // namespace Tool
