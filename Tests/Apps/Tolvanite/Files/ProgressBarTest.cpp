#include "ProgressBar.h"

#include <sstream>

#include <gtest/gtest.h>

namespace
{
using Tool::ProgressBar;

TEST(ProgressBar, DrawsAPercentageOnce)
{
    std::ostringstream out;
    ProgressBar bar(out, ProgressBar::Show::Always);
    bar.set(42);
    std::string const first = out.str();
    EXPECT_NE(first.find("42 %"), std::string::npos);
    bar.set(42);
    EXPECT_EQ(out.str(), first);
}

TEST(ProgressBar, IsWipedAtItsEnd)
{
    std::ostringstream out;
    ProgressBar(out, ProgressBar::Show::Always).set(100);
    EXPECT_TRUE(out.str().ends_with("\r\033[K"));
}

TEST(ProgressBar, WritesNothingWhereItIsNotWanted)
{
    std::ostringstream out;
    ProgressBar(out, ProgressBar::Show::Never).set(50);
    EXPECT_EQ(out.str(), "");
}

TEST(ProgressBar, StaysAtAHundred)
{
    std::ostringstream out;
    ProgressBar bar(out, ProgressBar::Show::Always);
    bar.set(4000000000u);
    EXPECT_NE(out.str().find("100 %"), std::string::npos);
}
} // namespace
