#pragma once

#include <functional>
#include <memory>
#include <string>

#include <CLI/CLI.hpp>

#include "LogLines.h"
#include "Tool.h"

namespace Tool
{
/// What every command understands.
struct CommonOptions
{
    bool json = false;
    bool quiet = false;
    bool verbose = false;
};

/// Sets the level of the log: warnings and worse, or progress where --verbose asks for it.
void apply_log_level(CommonOptions const &options);

/// The command that the command line asks for, set by the parse, run after it.
using ChosenCommand = std::function<int(Streams)>;

/// Adds a command of that name to the program with the common options. `options`, which derives
/// from CommonOptions, lives as long as the program's parser; `run` is called with what the parse
/// has left in it.
template <class Options>
CLI::App &add_command(CLI::App &program, char const *name, char const *purpose,
                      std::shared_ptr<Options> const &options, int (*run)(Options const &, Streams),
                      ChosenCommand &chosen)
{
    CLI::App &command = *program.add_subcommand(name, purpose);
    command.add_flag("--json", options->json, "Print JSON instead of a table");
    command.add_flag("--quiet", options->quiet, "No progress bar and no warnings");
    command.add_flag("--verbose", options->verbose, "Log progress messages too");
    command.callback(
        [options, run, &chosen]
        {
            chosen = [options, run](Streams streams)
            {
                apply_log_level(*options);
                LogLines log(streams.err,
                             options->quiet ? LogLines::Show::Nothing : LogLines::Show::Lines);
                return run(*options, {streams.out, streams.err, &log});
            };
        });
    return command;
}

// One function per command, each in the source of its name.
void add_info_command(CLI::App &program, ChosenCommand &chosen);
void add_dump_command(CLI::App &program, ChosenCommand &chosen);
void add_select_command(CLI::App &program, ChosenCommand &chosen);
void add_ops_command(CLI::App &program, ChosenCommand &chosen);
void add_convert_command(CLI::App &program, ChosenCommand &chosen);
void add_replay_command(CLI::App &program, ChosenCommand &chosen);
void add_formats_command(CLI::App &program, ChosenCommand &chosen);
void add_types_command(CLI::App &program, ChosenCommand &chosen);
} // namespace Tool
