#pragma once

#include <functional>
#include <memory>
#include <string>

#include <CLI/CLI.hpp>

#include "LogLines.h"
#include "Tool.h"

namespace Tool
{
/// The options that all commands have.
struct CommonOptions
{
    bool json = false;
    bool quiet = false;
    bool verbose = false;
};

/// Sets the level of the log: warnings and worse, or also progress with --verbose.
void apply_log_level(CommonOptions const &options);

void add_common_options(CLI::App &command, CommonOptions &options);

/// The command of the command line. The parser sets it; it runs after the parse.
using ChosenCommand = std::function<int(Streams)>;

/// Adds a command with the common options to the program. `options` derives from CommonOptions and
/// must live as long as the parser. `run` is called with the parsed options.
template <class Options>
CLI::App &add_command(CLI::App &program, char const *name, char const *purpose,
                      std::shared_ptr<Options> const &options, int (*run)(Options const &, Streams),
                      ChosenCommand &chosen)
{
    CLI::App &command = *program.add_subcommand(name, purpose);
    add_common_options(command, *options);
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

// One function per command, each in the source with its name.
void add_info_command(CLI::App &program, ChosenCommand &chosen);
void add_dump_command(CLI::App &program, ChosenCommand &chosen);
void add_select_command(CLI::App &program, ChosenCommand &chosen);
void add_ops_command(CLI::App &program, ChosenCommand &chosen);
void add_convert_command(CLI::App &program, ChosenCommand &chosen);
void add_replay_command(CLI::App &program, ChosenCommand &chosen);
void add_formats_command(CLI::App &program, ChosenCommand &chosen);
void add_types_command(CLI::App &program, ChosenCommand &chosen);
void add_walk_command(CLI::App &program, ChosenCommand &chosen);
void add_render_command(CLI::App &program, ChosenCommand &chosen);
void add_view_command(CLI::App &program, ChosenCommand &chosen);
} // namespace Tool
