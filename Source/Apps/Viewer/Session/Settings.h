#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "OSGStandardView.h"

namespace Viewer
{
/// What the viewer remembers from one start to the next.
struct Settings
{
    static constexpr std::size_t MostRecentFiles = 10;

    bool isDark = true;
    int samples = 4; ///< of a pixel; from the next start on
    std::string engine = "cad";
    OSG::SceneUp sceneUp = OSG::SceneUp::Y;
    bool clickCenters = false;
    bool zoomsToPointer = true;
    bool reloads = true;                       ///< reads a file again that has changed
    std::vector<std::string> recentFiles = {}; ///< the newest first

    /// Puts a file first.
    void noteFile(std::string const &file);

    /// Reads the files of load_settings' folders. A file that is not there, or is broken, leaves
    /// what the settings have; the result tells of a broken one in a line.
    std::string load();
    /// Empty on success, otherwise the reason of the failure.
    std::string save() const;
};

/// The folder of this program below $XDG_CONFIG_HOME or $XDG_STATE_HOME, or where these stand if
/// they are not set; empty where there is no home.
std::filesystem::path config_folder();
std::filesystem::path state_folder();
} // namespace Viewer
