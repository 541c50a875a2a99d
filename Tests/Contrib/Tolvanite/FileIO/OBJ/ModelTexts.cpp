#include "ModelTexts.h"

#include <algorithm>
#include <cstdio>

namespace OSG::Test
{
namespace
{
std::string with_cr(std::string const &text)
{
    std::string result;
    for(char c : text)
    {
        if(c == '\n')
            result += '\r';
        result += c;
    }
    return result;
}

char const *const QuadCube = R"(# a cube of quads
mtllib cube.mtl other.mtl
o cube
g sides
v -1.000000 -1.000000 1.000000
v 1.000000 -1.000000 1.000000
v 1.000000 1.000000 1.000000
v -1.000000 1.000000 1.000000
v -1.0 -1.0 -1.0
v 1.0 -1.0 -1.0
v 1.0 1.0 -1.0
v -1.0 1.0 -1.0
vt 0.0 0.0 0.0
vt 1.0 0.0 0.0
vt 1.0 1.0 0.0
vt 0.0 1.0 0.0
vn 0 0 1
vn 0 0 -1
usemtl m0
s 1
f 1/1/1 2/2/1 3/3/1 4/4/1
f 6/1/2 5/2/2 8/3/2 7/4/2
usemtl m1
s off
f 2//1 6//1 7//1 3//1
f 5/1 1/2 4/3 8/4
usemtl unknown
fo 4 3 7 8
f 5 6 2 1
)";

char const *const RelativeStrip = R"($ negative indices and continuation
v 0 0 0
v 1e0 0 0
v .5 1. -0
f -3 -2 -1
v 1.5 1 0 # a comment behind values
v 2.25e+0 -1.25E-2 +3
f -4 -3 \
-2 -1
usemtl m2
usemtl m3
f -1/-1 \
  -2//-1 -3/-1/-1   \
-4
p 1 2
l 1 2 3
f 1 2 3)";

char const *const Numbers = R"(v 123456.789 -0.000001234 3.40282e38
v 1.17549435e-38 1e-42 1e-400
v 0.12345678901234567 16777217 33554433.00000001
vt 0.3333333333333333 0.6666666666666667
vn -0.57735026918962576 0.57735026918962576 0.57735026918962576
f 1 2 3
f 0 2 3
f 1 2 99999999999999999999
f -99999999999999999999 1 2
f 1/2/3/4 2//5 3/6
f /1 2 3 4////5 6
)";

char const *const TwoMaterials = R"(# library
newmtl m0
Ka 0.2 0.2 0.2
Kd 0.8 0.1 0.1
Ks 1 1 1
Ns 20
illum 2
d 0.25
map_Kd wood.png
Kd 0 1 0

newmtl m1
Tr 0.5
Ni 1.45
Tf 1 1 1
sharpness 60
map_Ka nothere.png
map_Ks -s 2 2 2 shine.png
map_d alpha.png
bump -bm 1 rough.png
decal sticker.png
refl -type sphere sky.png
)";

char const *const OddLibrary = R"(Kd 1 0 0
$ words before the first material
Ns 1e38
newmtl name with blanks
Kd -1 2 1e-40
d -5
Tr 7 newmtl m5 map_Kd a.png map_Kd a.png map_Ka b.png Ka 1 2 3
newmtl
Ks 1 1 1
unknown 1 2 3)";

std::string const &number_that_hurts(std::mt19937 &random)
{
    static std::vector<std::string> const numbers_that_hurt = {
        "0",           "-1",          "2147483647", "2147483648",
        "-2147483648", "-2147483649", "4294967295", "99999999999999999999",
        "1e400",       "-1e400",      "1e-400",     "nan",
        "inf",         "0x10",        "1.5",        "1e",
        "+",           "-",           "1/2/3/4",    "//",
        "/1",          "1//",         "7/",         "1e38",
        "3.5e38",      "1e-45",       "\\",         "#",
        "\xff",        "1,5"};
    return numbers_that_hurt[random() % numbers_that_hurt.size()];
}

/// Begin and end of a random word, or of the end of the text.
std::pair<std::size_t, std::size_t> random_word(std::string const &text, std::mt19937 &random)
{
    std::size_t const begin = text.find_first_not_of(" \r\n", random() % text.size());
    if(begin == std::string::npos)
        return {text.size(), text.size()};
    return {begin, std::min(text.find_first_of(" \r\n", begin), text.size())};
}

std::pair<std::size_t, std::size_t> random_line(std::string const &text, std::mt19937 &random)
{
    std::size_t const at = random() % text.size();
    std::size_t const before = text.rfind('\n', at);
    std::size_t const begin = before == std::string::npos ? 0 : before;
    return {begin, std::min(text.find('\n', at + 1), text.size())};
}

void hurt_once(std::string &text, std::mt19937 &random)
{
    if(text.empty())
        text = "v";
    std::size_t const at = random() % text.size();
    auto const [begin, end] =
        random() % 2 != 0 ? random_word(text, random) : random_line(text, random);
    switch(random() % 10)
    {
    case 0:
        text[at] = static_cast<char>(random());
        break;
    case 1:
        text.resize(at);
        break;
    case 2:
        text.erase(begin, end - begin);
        break;
    case 3:
        text.insert(at, text.substr(begin, end - begin));
        break;
    case 4:
    case 5:
    case 6:
        text.replace(begin, end - begin, number_that_hurts(random));
        break;
    case 7:
        text[at] = " \n\r\t\v\f/\\#$"[random() % 10];
        break;
    case 8:
        text.insert(at, random() % 50, " \n/1\\x"[random() % 6]);
        break;
    default:
        text.insert(at, 8150 + random() % 80, " 1x/\\"[random() % 5]);
        break;
    }
}
} // namespace

std::vector<std::string> const &model_texts()
{
    static std::vector<std::string> const texts = {QuadCube,      with_cr(QuadCube),
                                                   RelativeStrip, with_cr(RelativeStrip),
                                                   Numbers,       with_cr(Numbers)};
    return texts;
}

std::vector<std::string> const &library_texts()
{
    static std::vector<std::string> const texts = {TwoMaterials, with_cr(TwoMaterials), OddLibrary,
                                                   with_cr(OddLibrary)};
    return texts;
}

std::string hurt(std::string text, std::mt19937 &random)
{
    for(std::size_t count = 1 + random() % 4; count > 0; --count)
        hurt_once(text, random);
    return text;
}
} // namespace OSG::Test
