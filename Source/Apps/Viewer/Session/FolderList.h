#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace Viewer
{
/// What is in a folder, for a dialog that opens or saves a file.
struct FolderList
{
    struct Entry
    {
        std::string name; ///< bytes of the system, UTF-8 or not
        bool isFolder = false;
        bool isScene = false; ///< a scene file type reads its suffix
    };

    std::filesystem::path folder = {};
    /// Folders, then scenes, then other files, each by name. Names that begin with a dot are left
    /// out.
    std::vector<Entry> entries = {};
    std::string reason = {}; ///< why there are no entries, or not all of them; empty otherwise
};

/// Lists the folder. A folder that is not there, or may not be read, has no entries and a reason.
FolderList list_folder(std::filesystem::path const &folder);

/// The numbers of the entries whose names have the text in them, in their order. Letters from A to
/// Z are like those from a to z.
std::vector<std::size_t> filter_entries(FolderList const &list, std::string const &text);
} // namespace Viewer
