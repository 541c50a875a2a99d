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

TEST(DigitScan, AWordHoldsTheDigitsBeforeAPlace)
{
    std::string const text = "x98765432yyyyyyyy";
    UInt32 const numbers[] = {0, 2, 32, 432, 5432, 65432, 765432, 8765432, 98765432};
    for(UInt32 count = 0; count <= DigitsAtOnce; ++count)
        EXPECT_EQ(number_of_word(digit_word(text.data() + 9, count)), numbers[count]);
}

TEST(DigitWindow, ShowsWhatIsNoDigitInOrderAndEndsWithItsLastCharacter)
{
    std::string text(DigitWindow::Size, '5');
    for(std::size_t at : {2, 6, 7, 40})
        text[at] = '/';
    UInt64 others = 0;
    for(UInt32 i = 0; i < DigitWindow::Size; i += 16)
        others |= UInt64(other_than_digits_16(text.data() + i)) << i;
    DigitWindow window(text.data(), others);
    for(UInt32 at : {2, 6, 7, 40})
    {
        EXPECT_EQ(window.other(), at);
        EXPECT_EQ(window[window.other()], '/');
        window.pass();
    }
    EXPECT_EQ(window.other(), DigitWindow::Last);
    EXPECT_EQ(window[DigitWindow::Last], '5');
}
