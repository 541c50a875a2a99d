#include "Program.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>

#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "FileContent.h"

namespace Tool::Test
{
namespace
{
std::string quoted(std::string const &word)
{
    std::string result = "'";
    for(char const c : word)
        result += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return result + "'";
}

using OSG::Test::content_of;

std::string temporary(char const *name)
{
    return testing::TempDir() + name + std::to_string(getpid());
}
} // namespace

namespace
{
// `limits` are commands of the shell that come before the program.
Outcome run_under(std::string const &limits, std::string const &file,
                  std::vector<std::string> const &words)
{
    std::string const err = temporary("err");
    std::string command = limits + quoted(TOOL_PROGRAM);
    for(std::string const &word : words)
        command += ' ' + quoted(word);
    command += " >" + quoted(file) + " 2>" + quoted(err) + " </dev/null";
    int const status = std::system(command.c_str());
    Outcome outcome{WIFEXITED(status) ? WEXITSTATUS(status) : -1, std::string(), content_of(err)};
    std::remove(err.c_str());
    return outcome;
}

Outcome run_with_output(std::string const &limits, std::vector<std::string> const &words)
{
    std::string const out = temporary("out");
    Outcome outcome = run_under(limits, out, words);
    outcome.out = content_of(out);
    std::remove(out.c_str());
    return outcome;
}
} // namespace

Outcome run_program_into(std::string const &file, std::vector<std::string> const &words)
{
    return run_under("", file, words);
}

Outcome run_program(std::vector<std::string> const &words) { return run_with_output("", words); }

Outcome run_program_within(unsigned megabytes, std::vector<std::string> const &words)
{
    return run_with_output("ulimit -v " + std::to_string(megabytes * 1024) + "; ", words);
}

Outcome run_program_with_files_of(unsigned bytes, std::vector<std::string> const &words)
{
    return run_with_output("ulimit -f " + std::to_string(bytes / 512) + "; ", words);
}

std::string pavilion() { return TEST_SOURCE_DIR "/Models/pavilion.obj"; }

TextFile::TextFile(std::string const &name, std::string const &content)
    : _path(testing::TempDir() + std::to_string(getpid()) + name)
{
    std::ofstream(_path, std::ios::binary) << content;
}

TextFile::~TextFile() { std::remove(_path.c_str()); }
} // namespace Tool::Test
