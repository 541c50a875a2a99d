#include <cerrno>
#include <filesystem>
#include <system_error>
#include <vector>

#include <unistd.h>

#include "ViewerOptions.h"

namespace Tool
{
namespace
{
constexpr char const *Program = "tolvanite-view";

// The words of the command line that the options stand for.
std::vector<std::string> words_of(ViewerOptions const &options)
{
    std::vector<std::string> words = {Program, "--size=" + options.size};
    std::pair<char const *, std::string const &> const texts[] = {
        {"--engine=", options.engine},
        {"--play=", options.play},
        {"--report=", options.report},
        {"--screenshot=", options.screenshot}};
    for(auto const &[name, text] : texts)
        if(!text.empty())
            words.push_back(name + text);
    std::pair<char const *, bool> const flags[] = {{"--exit", options.exit},
                                                   {"--json", options.json},
                                                   {"--quiet", options.quiet},
                                                   {"--verbose", options.verbose}};
    for(auto const &[name, isSet] : flags)
        if(isSet)
            words.emplace_back(name);
    if(!options.file.empty())
        words.insert(words.end(), {"--", options.file});
    return words;
}

// The viewer is a program of its own, so that the other commands load no toolkit. It lies beside
// this one, or where the shell finds programs.
int run_view(ViewerOptions const &options, Streams streams)
{
    std::vector<std::string> words = words_of(options);
    std::vector<char *> arguments;
    arguments.reserve(words.size() + 1);
    for(std::string &word : words)
        arguments.push_back(word.data());
    arguments.push_back(nullptr);
    std::error_code error;
    auto const self = std::filesystem::read_symlink("/proc/self/exe", error);
    streams.out.flush();
    if(!error)
        ::execv((self.parent_path() / Program).c_str(), arguments.data());
    ::execvp(Program, arguments.data());
    complain(streams, errno == ENOENT
                          ? std::string("no viewer: ") + Program +
                                " is not installed; it is built where GLFW and Dear ImGui are"
                          : "no viewer: " + std::generic_category().message(errno));
    return Failed;
}
} // namespace

void add_view_command(CLI::App &program, ChosenCommand &chosen)
{
    auto const options = std::make_shared<ViewerOptions>();
    CLI::App &command =
        add_command(program, "view", "Show a scene in a window", options, run_view, chosen);
    add_viewer_options(command, *options);
}
} // namespace Tool
