// The command view, as far as it goes without a window.

#include <algorithm>

#include <gmock/gmock.h>

#include "Program.h"

namespace Tool::Test
{
namespace
{
using testing::HasSubstr;

void expect_misused(std::vector<std::string> words, std::string const &part)
{
    words.insert(words.begin(), "view");
    Outcome const outcome = run_program(words);
    EXPECT_EQ(outcome.status, 2) << part;
    EXPECT_EQ(outcome.out, "");
    EXPECT_THAT(outcome.err, HasSubstr("tolvanite: "));
    EXPECT_THAT(outcome.err, HasSubstr(part));
    EXPECT_EQ(std::count(outcome.err.begin(), outcome.err.end(), '\n'), 1);
}

TEST(View, OptionsThatAreWrongAreOneLine)
{
    expect_misused({"nothing.obj"}, "nothing.obj");
    expect_misused({pavilion(), "--size", "0x5"}, "0x5 is not WxH in pixels up to 32767");
    expect_misused({pavilion(), "--size", "40000x5"}, "40000x5 is not WxH");
    expect_misused({pavilion(), "--size", "12"}, "12 is not WxH");
    expect_misused({pavilion(), "--engine", "boat"}, "boat");
    expect_misused({pavilion(), "--play", "nothing.events"}, "nothing.events");
    expect_misused({pavilion(), "--screenshot", "a.jpg"}, "a.jpg is no PNG file");
    expect_misused({pavilion(), pavilion()}, pavilion());
}

TEST(View, HelpNamesItsOptions)
{
    Outcome const outcome = run_program({"help", "view"});
    EXPECT_EQ(outcome.status, 0);
    for(char const *option : {"--size", "--engine", "--play", "--report", "--screenshot", "--exit"})
        EXPECT_THAT(outcome.out, HasSubstr(option));
}
} // namespace
} // namespace Tool::Test
