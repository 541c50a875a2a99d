#include "SelectQuery.h"

#include <gtest/gtest.h>

namespace Tool
{
namespace
{
std::string error_of(std::string const &line)
{
    try
    {
        SelectQuery const query = parse_query(line, {});
        VolumeChoice const choice(query.volume);
        return "";
    }
    catch(CLI::ParseError const &error)
    {
        return error.what();
    }
}

std::string const View = R"("from":[7,3,9],"at":[0,1,0],"up":[0,1,0],"fov":45)";

TEST(SelectQuery, EachKeyIsTheOptionOfItsName)
{
    SelectQuery const query =
        parse_query("{" + View +
                        R"(,"size":[640,480],"pixel":[1.5,-2],"radius":3,"kinds":"lines,points",)"
                        R"("plane":"far","hits":"all","fast":true})",
                    {});
    EXPECT_EQ(query.volume.from, OSG::Pnt3f(7, 3, 9));
    EXPECT_EQ(query.volume.at, OSG::Pnt3f(0, 1, 0));
    EXPECT_EQ(query.volume.up, OSG::Pnt3f(0, 1, 0));
    EXPECT_EQ(query.volume.fieldOfView, 45.f);
    EXPECT_EQ(query.volume.size, (std::array<double, 2>{640, 480}));
    EXPECT_EQ(query.volume.pixel, (std::array<float, 2>{1.5f, -2.f}));
    EXPECT_EQ(query.volume.radius, 3.f);
    EXPECT_FALSE(query.volume.box || query.volume.corners || query.volume.rectangle);
    EXPECT_EQ(query.settings.kinds, 6u);
    EXPECT_EQ(query.settings.plane, OSG::SelectionFunctor::FarPlane);
    EXPECT_EQ(query.settings.hits, OSG::SelectionFunctor::AllHits);
    EXPECT_TRUE(query.settings.fast);
}

TEST(SelectQuery, ListsOfPointsKeepTheirOrder)
{
    SelectQuery const query = parse_query(
        R"({"corners":[[0,1,2],[3,4,5],[6,7,8],[9,10,11],[12,13,14],[15,16,17],[18,19,20],[21,22,23]]})",
        {});
    ASSERT_TRUE(query.volume.corners);
    for(int i = 0; i < 8; ++i)
    {
        float const first = static_cast<float>(3 * i);
        EXPECT_EQ((*query.volume.corners)[static_cast<std::size_t>(i)],
                  OSG::Pnt3f(first, first + 1, first + 2));
    }
}

TEST(SelectQuery, WhatALineDoesNotSayIsTheDefault)
{
    SelectionSettings defaults;
    defaults.kinds = 4;
    defaults.plane = OSG::SelectionFunctor::TopPlane;
    defaults.hits = OSG::SelectionFunctor::BackHits;
    defaults.fast = true;
    std::string const box = R"("box":[[0,0,0],[1,1,1]])";
    SelectionSettings const kept = parse_query("{" + box + "}", defaults).settings;
    EXPECT_EQ(kept.kinds, 4u);
    EXPECT_EQ(kept.plane, OSG::SelectionFunctor::TopPlane);
    EXPECT_EQ(kept.hits, OSG::SelectionFunctor::BackHits);
    EXPECT_TRUE(kept.fast);
    SelectionSettings const said =
        parse_query("{" + box + R"(,"fast":false,"hits":"front"})", defaults).settings;
    EXPECT_EQ(said.hits, OSG::SelectionFunctor::FrontHits);
    EXPECT_FALSE(said.fast);
}

// In each case a double between the text and the result would give the other neighbour.
TEST(SelectQuery, NumbersAreRoundedOnceTo32Bits)
{
    auto const pixel = [](std::string const &number)
    { return (*parse_query("{\"pixel\":[" + number + ",0]}", {}).volume.pixel)[0]; };
    // Just above the middle of 1 and its successor: closer to the middle than doubles are.
    EXPECT_EQ(pixel("1.00000005960464477539062500000000000000000001"), 0x1.000002p0f);
    EXPECT_EQ(pixel("1.000000059604644775390625"), 1.f);
    EXPECT_EQ(pixel("16777217"), 16777216.f);
    EXPECT_EQ(pixel("9007199791611905"), 9007200328482816.f);
    EXPECT_EQ(pixel("3.4028235e38"), 0x1.fffffep127f);
    EXPECT_EQ(pixel("1e-60"), 0.f);
    EXPECT_EQ(pixel("1e-45"), 0x1p-149f);
}

struct BadLine
{
    char const *line;
    char const *error;
};

void PrintTo(BadLine const &line, std::ostream *out) { *out << line.line; }

class BadLines : public testing::TestWithParam<BadLine>
{
};

TEST_P(BadLines, AreNamed) { EXPECT_EQ(error_of(GetParam().line), GetParam().error); }

#define VIEW R"("from":[7,3,9],"at":[0,1,0],"up":[0,1,0],"fov":45)"
#define BOX R"("box":[[0,0,0],[1,1,1]])"
INSTANTIATE_TEST_SUITE_P(
    SelectQuery, BadLines,
    testing::Values(
        BadLine{"", "no JSON object"}, BadLine{"nonsense", "no JSON object"},
        BadLine{"[1]", "no JSON object"}, BadLine{"1", "no JSON object"},
        BadLine{"\"box\"", "no JSON object"}, BadLine{"null", "no JSON object"},
        BadLine{"true", "no JSON object"}, BadLine{"{" BOX, "no JSON object"},
        BadLine{"{" BOX "} {}", "no JSON object"}, BadLine{"[{}]", "no JSON object"},
        BadLine{"{}", "VOLUME: --corners, --box or --from is required"},
        BadLine{R"({"Box":[[0,0,0],[1,1,1]]})", "unknown key Box"},
        BadLine{R"({"file":"x"})", "unknown key file"},
        BadLine{R"({"fast":true,"fast":true})", "the key fast stands twice"},
        BadLine{R"({"fast":1})", "fast: true or false is required"},
        BadLine{R"({"hits":true})", "hits: a string is required"},
        BadLine{R"({"hits":"none"})", "--hits: none is not one of all,back,front"},
        BadLine{R"({"plane":"middle"})",
                "--plane: middle is not one of bottom,far,left,near,right,top"},
        BadLine{R"({"kinds":"lines,quads"})",
                "--kinds: lines,quads is not of triangles,lines,points"},
        BadLine{R"({"from":null})", "from: a list of three numbers is required"},
        BadLine{R"({"from":"7,3,9"})", "from: a list of three numbers is required"},
        BadLine{R"({"from":[7,3]})", "from: a list of three numbers is required"},
        BadLine{R"({"from":[7,3,9,1]})", "from: a list of three numbers is required"},
        BadLine{R"({"from":[[7,3,9]]})", "from: a list of three numbers is required"},
        BadLine{R"({"from":[7,3,true]})", "from: a list of three numbers is required"},
        BadLine{R"({"from":{"x":7}})", "from: a list of three numbers is required"},
        BadLine{R"({"fov":[45]})", "fov: a number is required"},
        BadLine{R"({"box":[0,0,0,1,1,1]})", "box: a list of two points is required"},
        BadLine{R"({"box":[[0,0,0]]})", "box: a list of two points is required"},
        BadLine{R"({"box":[[0,0],[0,1,1,1]]})", "box: a list of two points is required"},
        BadLine{R"({"box":[[[0,0,0]],[1,1,1]]})", "box: a list of two points is required"},
        BadLine{R"({"corners":[[0,0,0],[1,1,1]]})", "corners: a list of eight points is required"},
        BadLine{R"({"rect":[0,0,1]})", "rect: a list of four numbers is required"},
        BadLine{R"({"lasso":[]})", "lasso: a list of numbers is required"},
        BadLine{R"({"lasso":7})", "lasso: a list of numbers is required"},
        BadLine{R"({"lasso":[[1,2],[3,4]]})", "lasso: a list of numbers is required"},
        BadLine{R"({"lasso":[1,"2"]})", "lasso: a list of numbers is required"},
        BadLine{R"({"lasso":[1,1e39]})", "a number is beyond 32 bits"},
        BadLine{R"({"ortho":[9]})", "ortho: a number is required"},
        BadLine{R"({"enclosed":1})", "enclosed: true or false is required"},
        BadLine{R"({"pixel":[1e39,0]})", "a number is beyond 32 bits"},
        BadLine{R"({"pixel":[-1e400,0]})", "a number is beyond 32 bits"},
        BadLine{R"({"box":[[1,0,0],[0,1,1]]})", "--box: 1,0,0 is not the smaller corner"},
        BadLine{"{" BOX "," VIEW R"(,"size":[1,1],"pixel":[0,0]})", "--from excludes --box"},
        BadLine{"{" BOX R"(,"fov":45})", "--fov requires --from"},
        BadLine{"{" BOX R"(,"radius":2})", "--radius requires --pixel"},
        BadLine{"{" VIEW R"(,"pixel":[0,0]})", "--from requires --size"},
        BadLine{"{" VIEW R"(,"size":[1,1]})", "VOLUME: --from requires --pixel, --rect or --lasso"},
        BadLine{"{" VIEW R"(,"size":[1,0],"pixel":[0,0]})", "--size: 1x0 is not WxH"},
        BadLine{"{" VIEW R"(,"size":[1.5,1],"pixel":[0,0]})", "--size: 1.5x1 is not WxH"},
        BadLine{"{" VIEW R"(,"size":[1,3000000000],"pixel":[0,0]})", "--size: 1x3e+09 is not WxH"},
        BadLine{"{" VIEW R"(,"size":[1,1],"pixel":[0,0],"radius":0})",
                "--radius: a number above 0 is required"}));
} // namespace
} // namespace Tool
