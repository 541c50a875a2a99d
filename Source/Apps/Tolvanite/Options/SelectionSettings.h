#pragma once

#include <string>

#include <CLI/CLI.hpp>

#include "OSGPickSelector.h"

namespace Tool
{
using SelectionSettings = OSG::PickSettings;

/// Adds --kinds, --plane, --hits, --fast and --enclosed.
void add_selection_options(CLI::App &command, SelectionSettings &settings);

/// Each function sets one setting by the word of its option, and raises CLI::ParseError, with the
/// option's name, for a word that it does not know.
void set_kinds(SelectionSettings &settings, std::string const &names);
void set_plane(SelectionSettings &settings, std::string const &name);
void set_hits(SelectionSettings &settings, std::string const &name);
} // namespace Tool
