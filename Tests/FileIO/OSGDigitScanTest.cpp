#include "OSGDigitScan.h"

#include <random>

#include <gtest/gtest.h>

using namespace OSG;

namespace
{
DigitScan scan_slowly(char const *p)
{
    DigitScan scan = {0, 0};
    for(; scan.count < 8 && p[scan.count] >= '0' && p[scan.count] <= '9'; ++scan.count)
        scan.number = scan.number * 10 + static_cast<UInt32>(p[scan.count] - '0');
    return scan;
}

void expect_slow_result(char const *p)
{
    DigitScan const expected = scan_slowly(p);
    DigitScan const actual = scan_eight_digits(p);
    ASSERT_EQ(actual.count, expected.count) << std::string(p, 8);
    ASSERT_EQ(actual.number, expected.number) << std::string(p, 8);
}
} // namespace

TEST(DigitScan, EveryCharacterAtEveryPlaceEndsTheNumberUnlessItIsADigit)
{
    for(std::size_t place = 0; place < 8; ++place)
    {
        for(int c = 0; c < 256; ++c)
        {
            std::string text = "12345678";
            text[place] = static_cast<char>(c);
            expect_slow_result(text.data());
        }
    }
}

TEST(DigitScan, WhatFollowsTheNumberDoesNotMatter)
{
    std::mt19937 random(3);
    for(int round = 0; round < 200000; ++round)
    {
        char text[8];
        for(char &c : text)
            c = random() % 8 != 0 ? static_cast<char>('0' + random() % 10)
                                  : static_cast<char>(random());
        expect_slow_result(text);
    }
}
