#include "JsonWriter.h"

#include <bit>
#include <cmath>
#include <limits>
#include <random>
#include <sstream>
#include <string>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace
{
template <class T>
std::string written(T const &value)
{
    std::ostringstream out;
    Tool::JsonWriter(out).value(value);
    return out.str();
}

TEST(JsonWriter, FloatHasTheShortestFormOfItsOwnWidth)
{
    EXPECT_EQ(written(0.1f), "0.1");
    EXPECT_EQ(written(1.0f), "1");
    EXPECT_EQ(written(16777216.0f), "16777216");
    EXPECT_EQ(written(1.0f / 3.0f), "0.33333334");
    EXPECT_EQ(written(1e30f), "1e+30");
    EXPECT_EQ(written(-0.0f), "-0");
}

TEST(JsonWriter, EveryFloatReadsBackAsItself)
{
    std::mt19937 random(7);
    for(int i = 0; i < 100000; ++i)
    {
        float const number = std::bit_cast<float>(static_cast<std::uint32_t>(random()));
        if(!std::isfinite(number))
            continue;
        auto const read = nlohmann::json::parse(written(number)).get<double>();
        ASSERT_EQ(std::bit_cast<std::uint32_t>(static_cast<float>(read)),
                  std::bit_cast<std::uint32_t>(number))
            << written(number);
    }
}

TEST(JsonWriter, WhatIsNoFiniteNumberIsAString)
{
    float const infinity = std::numeric_limits<float>::infinity();
    EXPECT_EQ(written(infinity), "\"inf\"");
    EXPECT_EQ(written(-infinity), "\"-inf\"");
    EXPECT_EQ(written(std::nanf("")), "\"nan\"");
    EXPECT_EQ(written(-std::nan("")), "\"nan\"");
}

TEST(JsonWriter, IntegersKeepTheirWholeRange)
{
    EXPECT_EQ(written(std::numeric_limits<std::uint64_t>::max()), "18446744073709551615");
    EXPECT_EQ(written(std::numeric_limits<std::int64_t>::min()), "-9223372036854775808");
}

TEST(JsonWriter, TextIsQuotedAndKeepsItsCharacters)
{
    EXPECT_EQ(written("a\"b\\c\n"), "\"a\\\"b\\\\c\\n\"");
    EXPECT_EQ(written("s\xc3\xa4ule"), "\"s\xc3\xa4ule\"");
}

TEST(JsonWriter, BytesThatAreNoTextBecomeReplacementCharacters)
{
    EXPECT_EQ(written("a\xff"
                      "b"),
              "\"a\xef\xbf\xbd"
              "b\"");
}

TEST(JsonWriter, ElementsAndMembersAreSeparated)
{
    std::ostringstream out;
    Tool::JsonWriter json(out);
    json.beginObject().member("a", 1).key("b").beginArray().value(2).null().beginObject();
    json.endObject().value(true).endArray().member("c", "d").endObject();
    EXPECT_EQ(out.str(), R"({"a":1,"b":[2,null,{},true],"c":"d"})");
}

TEST(JsonWriter, AnArrayTakesTheFirstElementsOfAnIndexedValue)
{
    std::ostringstream out;
    float const values[] = {1, 2.5f, 3};
    Tool::JsonWriter(out).array(values, 2);
    EXPECT_EQ(out.str(), "[1,2.5]");
}
} // namespace
