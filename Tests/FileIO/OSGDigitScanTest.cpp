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
            std::string text = "12345678" + std::string(DigitScanReach, '5');
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
        char text[DigitScanReach];
        for(char &c : text)
            c = random() % 8 != 0 ? static_cast<char>('0' + random() % 10)
                                  : static_cast<char>(random());
        expect_slow_result(text);
    }
}

TEST(DigitScan, SixteenCharactersAreComparedAtOnce)
{
    for(int c = 0; c < 256; ++c)
    {
        for(std::size_t place = 0; place < 16; ++place)
        {
            std::string text(16, '0');
            text[place] = static_cast<char>(c);
            UInt32 const expected = c >= '0' && c <= '9' ? 0 : 1u << place;
            ASSERT_EQ(other_than_digits_16(text.data()), expected) << c;
        }
    }
}

TEST(DigitScan, NumbersOfAnyCountAreConverted)
{
    std::string const text = "98765432" + std::string(DigitScanReach, 'x');
    UInt32 const numbers[] = {0, 9, 98, 987, 9876, 98765, 987654, 9876543, 98765432};
    for(UInt32 count = 0; count <= DigitsAtOnce; ++count)
        EXPECT_EQ(number_of_digits(text.data(), count), numbers[count]);
}
