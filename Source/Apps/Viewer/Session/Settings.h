#pragma once

#include <filesystem>
#include <span>
#include <string>
#include <vector>

#include "OSGDrawLook.h"
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
    OSG::DrawStyle style = OSG::DrawStyle::Shaded;
    bool showsEdges = false; ///< sharp ones, over the style
    bool clickCenters = false;
    bool zoomsToPointer = true;
    bool reloads = true;                       ///< reads a file again that has changed
    std::vector<std::string> recentFiles = {}; ///< the newest first

    friend bool operator==(Settings const &, Settings const &) = default;

    /// Puts a file first.
    void noteFile(std::string const &file);

    /// Reads the files of load_settings' folders. A file that is not there, or is broken, leaves
    /// what the settings have; the result tells of a broken one in a line.
    std::string load();
    /// Empty on success, otherwise the reason of the failure.
    std::string save() const;
};

/// The styles that a user chooses from.
struct StyleName
{
    OSG::DrawStyle style;
    char const *key;   ///< in the file of the settings
    char const *title; ///< for menus
};
std::span<StyleName const> style_names();

/// The folder of this program below $XDG_CONFIG_HOME or $XDG_STATE_HOME, or where these stand if
/// they are not set; empty where there is no home.
std::filesystem::path config_folder();
std::filesystem::path state_folder();
} // namespace Viewer
