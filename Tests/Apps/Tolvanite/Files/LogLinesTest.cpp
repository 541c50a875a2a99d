// The lines that the program prints to standard error for messages of the library's log.

#include <sstream>

#include <gtest/gtest.h>

#include "LogLines.h"
#include "Program.h"

namespace Tool::Test
{
namespace
{
char const *const Triangle = "v 0 0 0\nv 1 0 0\nv 1 1 0\nf 1 2 3\n";

TEST(LogLines, HaveEachKindOnceWithItsCount)
{
    std::ostringstream out;
    {
        LogLines const lines(out, LogLines::Show::Lines);
        for(int i = 0; i < 3; ++i)
            OSG_LOG_WARNING("no %d\n", i);
        OSG_LOG_FATAL("over\n");
        EXPECT_EQ(out.str(), "");
    }
    EXPECT_EQ(out.str(), "WARNING: no 0 (3 times)\nFATAL: over\n");
}

TEST(LogLines, ShowNothingWhereNothingIsWanted)
{
    std::ostringstream out;
    {
        LogLines const lines(out, LogLines::Show::Nothing);
        OSG_LOG_FATAL("over\n");
    }
    EXPECT_EQ(out.str(), "");
}

TEST(LogLines, HaveNoControlCharacters)
{
    std::ostringstream out;
    {
        LogLines const lines(out, LogLines::Show::Lines);
        OSG_LOG_WARNING("a\x1b[31m\nb\n");
    }
    EXPECT_EQ(out.str(), "WARNING: a\\x1B[31m\\x0Ab\n");
}

TEST(LogOfARead, AMissingLibraryIsOneLineWithNameLineAndCount)
{
    std::string text = "# a model\nmtllib none.mtl\n";
    for(int i = 0; i < 24; ++i)
        text += Triangle + ("usemtl m" + std::to_string(i)) + '\n';
    TextFile const file("lacking.obj", text + Triangle);
    Outcome const outcome = run_program({"info", file.path()});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.err,
              "WARNING: Couldn't open 'none.mtl'! (line 2, 24 uses of unknown materials)\n");
    EXPECT_EQ(run_program({"info", file.path(), "--quiet"}).err, "");
}

TEST(LogOfARead, UnknownMaterialsOfALibraryThatIsThereAreALineToo)
{
    std::string text = Triangle;
    for(char const *const word : {"usemtl a\n", "usemtl b\n"})
        text.append(word).append(Triangle);
    TextFile const file("lacking.obj", text);
    EXPECT_EQ(run_program({"info", file.path()}).err, "FATAL: Unkown mtl a (line 5, 2 times)\n");
}

TEST(LogOfARead, EscapeSequencesOfTheFileDoNotReachTheTerminal)
{
    TextFile const file("\x1b[7m.obj", "\x1b[31m 1\nusemtl \x1b[32m\n" + std::string(Triangle));
    for(std::vector<std::string> const &words : {std::vector<std::string>{"info", file.path()},
                                                 {"info", file.path() + "\x1b[0m"},
                                                 {"convert", file.path(), "/missing\x1b/out.osb"},
                                                 {"dump", file.path(), "--op", "\x1b[33m"},
                                                 {"\x1b[33m"}})
    {
        Outcome const outcome = run_program(words);
        EXPECT_EQ(outcome.err.find('\x1b'), std::string::npos) << outcome.err;
        EXPECT_EQ(outcome.out.find('\x1b'), std::string::npos) << outcome.out;
        EXPECT_NE(outcome.err.find("\\x1B"), std::string::npos) << outcome.err;
    }
}

/// A text with a triangle, and behind it a number with a decimal comma.
std::string const BrokenText = std::string(Triangle) + "v 0,5 1,5 2\nf 1 2 3\n";

TEST(Completeness, IsSaidByEveryCommandThatReads)
{
    TextFile const broken("broken.obj", BrokenText);
    TextFile const whole("whole.obj", Triangle);
    std::string const target = broken.path() + ".osb";
    for(std::vector<std::string> words : {std::vector<std::string>{"info"},
                                          {"dump"},
                                          {"select", "--box", "-1,-1,-1", "2,2,2"},
                                          {"convert", target}})
    {
        words.insert(words.begin() + 1, broken.path());
        words.push_back("--json");
        Outcome const outcome = run_program(words);
        EXPECT_EQ(outcome.status, 0);
        EXPECT_NE(outcome.out.find("\"complete\":false"), std::string::npos) << outcome.out;
        EXPECT_EQ(outcome.err, "WARNING: The read ends in line 5, at '0,5'!\n");
        words[1] = whole.path();
        EXPECT_NE(run_program(words).out.find("\"complete\":true"), std::string::npos);
    }
    std::remove(target.c_str());
}

TEST(Completeness, IsAskedForByStrict)
{
    TextFile const broken("broken.obj", BrokenText);
    TextFile const whole("whole.obj", Triangle);
    std::string const target = broken.path() + ".osb";
    for(std::vector<std::string> words : {std::vector<std::string>{"info"},
                                          {"dump", "--json"},
                                          {"select", "--box", "-1,-1,-1", "2,2,2"},
                                          {"convert", target}})
    {
        words.insert(words.begin() + 1, broken.path());
        words.push_back("--strict");
        Outcome const outcome = run_program(words);
        EXPECT_EQ(outcome.status, 1);
        EXPECT_EQ(outcome.out, "");
        EXPECT_EQ(outcome.err, "WARNING: The read ends in line 5, at '0,5'!\ntolvanite: " +
                                   broken.path() + " was not read completely\n");
        words[1] = whole.path();
        if(words[0] != "convert")
        {
            EXPECT_EQ(run_program(words).status, 0);
        }
    }
    EXPECT_NE(std::remove(target.c_str()), 0) << "a file was written";
}
} // namespace
} // namespace Tool::Test
