#include "WalkScriptFile.h"

#include <system_error>

#include <CLI/CLI.hpp>

#include "LineReader.h"

namespace Tool
{
namespace
{
[[noreturn]] void refuse_line(char const *option, std::size_t number, std::string_view text)
{
    constexpr std::size_t MostShown = 60;
    std::string shown(text.substr(0, MostShown));
    if(text.size() > MostShown)
        shown += "...";
    throw CLI::ValidationError(option, "line " + std::to_string(number) + ": " + shown +
                                           " is not KEYS MILLISECONDS");
}

void check_error(char const *option, std::string const &file, LineReader const &lines)
{
    if(lines.error() != 0)
        throw CLI::ValidationError(option, "cannot read " + file + ": " +
                                               std::generic_category().message(lines.error()));
}
} // namespace

std::vector<OSG::WalkScriptLine> read_walk_script(char const *option, std::string const &file)
{
    LineReader lines(file);
    check_error(option, file, lines);
    std::vector<OSG::WalkScriptLine> script;
    LineReader::Line line;
    for(std::size_t number = 1; lines.next(line, [] {}); ++number)
    {
        if(!line.isTooLong && OSG::is_walk_comment(line.text))
            continue;
        std::optional<OSG::WalkScriptLine> const read = OSG::parse_walk_line(line.text);
        if(line.isTooLong || !read)
            refuse_line(option, number, line.text);
        script.push_back(*read);
    }
    check_error(option, file, lines);
    return script;
}
} // namespace Tool
