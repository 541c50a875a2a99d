#include <gmock/gmock.h>

#include "OSGShownText.h"

namespace
{
using OSG::shown_text;

struct Case
{
    char const *name;
    std::string text;
    char const *shown;
};

void PrintTo(Case const &row, std::ostream *out) { *out << row.name; }

class ShownText : public testing::TestWithParam<Case>
{
};

TEST_P(ShownText, HasNoControlCharacters)
{
    EXPECT_EQ(shown_text(GetParam().text), GetParam().shown);
}

INSTANTIATE_TEST_SUITE_P(
    Words, ShownText,
    testing::Values(Case{"Plain", "wood_2~", "wood_2~"}, Case{"Empty", "", ""},
                    Case{"Escape", "\x1b[31mred", "\\x1B[31mred"},
                    Case{"LineBreakAndTab", "a\n\tb", "a\\x0A\\x09b"},
                    Case{"ZeroByte", std::string("a\0b", 3), "a\\x00b"},
                    Case{"Delete", "\x7f", "\\x7F"},
                    Case{"Umlauts", "\xc3\xa4\xe2\x82\xac\xf0\x9f\x98\x80",
                         "\xc3\xa4\xe2\x82\xac\xf0\x9f\x98\x80"},
                    Case{"NoBreakSpaceIsNoControlCharacter", "\xc2\xa0", "\xc2\xa0"},
                    Case{"C1InUtf8",
                         "\xc2\x9b"
                         "31m\xc2\x80",
                         "\\x9B31m\\x80"},
                    Case{"C1AsAByte",
                         "\x9b"
                         "31m\x80\x9f",
                         "\\x9B31m\\x80\\x9F"},
                    Case{"C1InAnOverlongForm", "\xe0\x82\x9b", "\xe0\\x82\\x9B"},
                    Case{"LatinOne", "\xe4\xf6\xff", "\xe4\xf6\xff"},
                    Case{"CutCharacter", "\xe2\x82", "\xe2\\x82"}),
    [](testing::TestParamInfo<Case> const &row) { return row.param.name; });
} // namespace
