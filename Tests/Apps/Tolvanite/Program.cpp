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

Outcome run_program_into(std::string const &file, std::vector<std::string> const &words)
{
    std::string const err = temporary("err");
    std::string command = quoted(TOOL_PROGRAM);
    for(std::string const &word : words)
        command += ' ' + quoted(word);
    command += " >" + quoted(file) + " 2>" + quoted(err) + " </dev/null";
    int const status = std::system(command.c_str());
    Outcome outcome{WIFEXITED(status) ? WEXITSTATUS(status) : -1, std::string(), content_of(err)};
    std::remove(err.c_str());
    return outcome;
}

Outcome run_program(std::vector<std::string> const &words)
{
    std::string const out = temporary("out");
    Outcome outcome = run_program_into(out, words);
    outcome.out = content_of(out);
    std::remove(out.c_str());
    return outcome;
}

std::string pavilion() { return TEST_SOURCE_DIR "/Models/pavilion.obj"; }

TextFile::TextFile(std::string const &name, std::string const &content)
    : _path(testing::TempDir() + std::to_string(getpid()) + name)
{
    std::ofstream(_path, std::ios::binary) << content;
}

TextFile::~TextFile() { std::remove(_path.c_str()); }
} // namespace Tool::Test
