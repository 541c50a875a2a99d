#pragma once

#include <functional>
#include <string>
#include <vector>

#include "OSGBaseTypes.h"

namespace Viewer
{
/// A key with modifiers (bits of OSG::PointerTool::Modifier).
struct Chord
{
    OSG::Int16 code = 0; ///< a virtual-key code; 0 for none
    OSG::UInt16 modifiers = 0;

    friend bool operator==(Chord const &, Chord const &) = default;
};

/// As menus show it: Ctrl+O, F1, Home. Empty for no key.
std::string text_of(Chord const &chord);
/// Whether engines that are steered by letters need the key: a letter or digit without Control.
bool is_plain(Chord const &chord);

/// Something that the user can have done, by a menu or a key. The table of commands makes the
/// menus, the keys and their help.
struct Command
{
    char const *menu;
    char const *name; ///< unique
    Chord key = {};
    std::function<void()> run = {};
    std::function<bool()> isOn = {};   ///< whether it has a tick; empty for a command without one
    std::function<bool()> canRun = {}; ///< empty for always
    bool beginsGroup = false;          ///< a line stands above it in the menu
    /// Texts to choose from in a menu of its own; empty for a command without choices.
    std::function<std::vector<std::string>()> choices = {};
    std::function<void(std::string const &)> choose = {};

    bool isReady() const { return !canRun || canRun(); }
};
using Commands = std::vector<Command>;

/// Who needs keys for something else than commands.
enum class KeyOwner : OSG::UInt8
{
    Nobody,
    Engine, ///< plain keys steer
    Text    ///< somebody types: Home, Delete, arrows and the like are no commands as well
};

/// Runs the command of the key, if there is one and it can run. Whether the key is that of a
/// command, and its owner leaves it to commands.
bool run_key(Commands const &commands, Chord const &key, KeyOwner owner);
} // namespace Viewer
