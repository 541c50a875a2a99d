#include "Tool.h"

#include <algorithm>
#include <new>
#include <string>
#include <vector>

#include "Command.h"
#include "LogLines.h"
#include "OSGLog.h"
#include "OSGShownText.h"

namespace Tool
{
namespace
{
// The words after the program's name, the last one first, as the parser takes them. The parser
// would take a number such as -.5 for an option, so such numbers get a zero.
std::vector<std::string> words_of(int argc, char const *const *argv)
{
    std::vector<std::string> words(argv + 1, argv + argc);
    for(std::string &word : words)
        if(word.size() > 2 && word[0] == '-' && word[1] == '.')
            word.insert(1, "0");
    std::reverse(words.begin(), words.end());
    return words;
}

// A message of CLI11 may have several lines. Only the first is shown.
int misused(std::string const &message, Streams streams)
{
    complain(streams, message.substr(0, message.find('\n')));
    return Misused;
}

// Handles `tolvanite` alone, `tolvanite help` and `tolvanite help COMMAND`.
int print_help(CLI::App const &program, char const *command, Streams streams)
{
    auto const commands = program.get_subcommands([](CLI::App const *) { return true; });
    for(CLI::App const *one : commands)
    {
        if(command != nullptr && one->get_name() == command)
        {
            streams.out << one->help(program.get_name());
            return Success;
        }
    }
    if(command != nullptr)
        return misused("no command " + std::string(command), streams);
    streams.out << program.help();
    return Success;
}
} // namespace

void complain(Streams streams, std::string const &text)
{
    if(streams.log != nullptr)
        streams.log->print();
    streams.err << "tolvanite: " + OSG::shown_text(text) + '\n' << std::flush;
}

void warn(Streams streams, std::string const &text)
{
    if(streams.log != nullptr)
        streams.log->note(text);
    else
        complain(streams, text);
}

void add_common_options(CLI::App &command, CommonOptions &options)
{
    command.add_flag("--json", options.json, "Print JSON instead of a table");
    command.add_flag("--quiet", options.quiet, "No progress bar and no warnings");
    command.add_flag("--verbose", options.verbose, "Log progress messages too");
}

void apply_log_level(CommonOptions const &options)
{
    OSG::doInitLog();
    OSG::osgLogP->setLogLevel(options.verbose ? OSG::LOG_PROGRESS : OSG::LOG_WARNING);
}

int run_tool(int argc, char const *const *argv, Streams streams)
{
    CLI::App program("Looks into scenes: what they hold, what lies where.", "tolvanite");
    program.set_version_flag("--version", "tolvanite " TOLVANITE_VERSION);
    program.require_subcommand(1);
    ChosenCommand chosen;
    add_info_command(program, chosen);
    add_dump_command(program, chosen);
    add_select_command(program, chosen);
    add_ops_command(program, chosen);
    add_convert_command(program, chosen);
    add_replay_command(program, chosen);
    add_formats_command(program, chosen);
    add_types_command(program, chosen);
    add_walk_command(program, chosen);
    add_render_command(program, chosen);
    add_view_command(program, chosen);

    std::string const word = argc > 1 ? argv[1] : "help";
    if(word == "help")
        return print_help(program, argc > 2 ? argv[2] : nullptr, streams);
    try
    {
        program.parse(words_of(argc, argv));
        return chosen(streams);
    }
    catch(CLI::ParseError const &error)
    {
        if(error.get_exit_code() == 0) // --help and --version
            return program.exit(error, streams.out, streams.err);
        bool const namesNoCommand = program.get_subcommands().empty() && argc > 1;
        if(namesNoCommand && argv[1][0] != '-')
            return misused("no command " + std::string(argv[1]), streams);
        return misused(error.what(), streams);
    }
    catch(std::bad_alloc const &)
    {
        complain(streams, "out of memory");
        return Failed;
    }
}
} // namespace Tool
