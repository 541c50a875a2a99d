#include "OSGStreamNumber.h"

#include <bit>
#include <cmath>
#include <limits>
#include <random>
#include <sstream>

#include <gtest/gtest.h>

#include "OSGDigitScan.h"
#include "StreamBuffers.h"

using namespace OSG;
using namespace OSG::Test;

namespace
{
struct Reading
{
    UInt32 bits; ///< of the value; 0 where extraction fails
    bool read;
    std::size_t taken; ///< characters
};

/// What a stream in the classic locale reads from the text, which continues behind the number.
Reading extracted(std::string const &text)
{
    std::istringstream in(text + "$");
    in.imbue(std::locale::classic());
    in.unsetf(std::ios_base::skipws);
    Real32 value = 0;
    bool const read = static_cast<bool>(in >> value);
    in.clear();
    return {read ? std::bit_cast<UInt32>(value) : 0, read, static_cast<std::size_t>(in.tellg())};
}

Reading accumulated(std::string const &text)
{
    Real32Accumulator number;
    std::size_t taken = 0;
    while(taken < text.size() && number.accept(text[taken]))
        ++taken;
    Real32 value = 1;
    bool const read = number.finish(value);
    return {std::bit_cast<UInt32>(value), read, taken};
}

void expect_same(Reading const &actual, Reading const &expected, std::string const &text)
{
    EXPECT_EQ(actual.bits, expected.bits) << text;
    EXPECT_EQ(actual.read, expected.read) << text;
    EXPECT_EQ(actual.taken, expected.taken) << text;
}

/// The short path may decline; what it reads must be right.
void expect_short_agrees(std::string const &text)
{
    std::string const closed = text + "$" + std::string(DigitScanReach, '5');
    Real32 value = 0;
    char const *const begin = closed.data();
    char const *const behind = scan_short_real32(begin, begin + text.size() + 1, value);
    if(behind == nullptr)
        return;
    expect_same({std::bit_cast<UInt32>(value), true, static_cast<std::size_t>(behind - begin)},
                extracted(text), text);
}

void expect_as_extracted(std::string const &text)
{
    expect_same(accumulated(text), extracted(text), text);
    expect_short_agrees(text);
}

char const *const NumberForms[] = {"0",
                                   "-0",
                                   "+5",
                                   "5.",
                                   ".5",
                                   "-.5",
                                   "+.5e1",
                                   ".",
                                   "-",
                                   "+",
                                   "",
                                   "-.",
                                   "e5",
                                   ".e5",
                                   "1e",
                                   "1e+",
                                   "1e-",
                                   "1E5",
                                   "1e5e5",
                                   "1e5.5",
                                   "1..2",
                                   "1.2.3",
                                   "--1",
                                   "+-1",
                                   "1-2",
                                   "1+2",
                                   "0x10",
                                   "0X1p3",
                                   "nan",
                                   "inf",
                                   "-inf",
                                   "infinity",
                                   "NAN(1)",
                                   "1e400",
                                   "-1e400",
                                   "1e-400",
                                   "-1e-400",
                                   "1e38",
                                   "3.4028235e38",
                                   "3.4028236e38",
                                   "3.40282356779733e38",
                                   "3.40282357e38",
                                   "1e39",
                                   "1e-45",
                                   "1.4e-45",
                                   "7e-46",
                                   "7.1e-46",
                                   "1e-42",
                                   "1.17549435e-38",
                                   "1.17549421e-38",
                                   "16777217",
                                   "16777219",
                                   "33554434.0000001",
                                   "1.00000017881393432617187499",
                                   "1.000000178813934326171875",
                                   "1.00000017881393432617187501",
                                   "0.000000000000000000000000000000000000000000001",
                                   "00000000001",
                                   "000000000000000000000000000000000000000000000012.5",
                                   "123456789012345678901234567890",
                                   "0.1234567890123456789012345678901234567890",
                                   "1e0000000000000000000000000000000005",
                                   "1e-0000000000000000000000000000000000005",
                                   "1e99999999999999999999999999",
                                   "0e99999999999999",
                                   "1e-99999999999999999999999999",
                                   "1,5",
                                   "1'000",
                                   "1_000",
                                   "1f",
                                   "1.5f",
                                   "1e5x",
                                   "1 2",
                                   "٣"};
} // namespace

TEST(StreamNumber, EveryFormIsReadAsAStreamReadsIt)
{
    for(char const *text : NumberForms)
        expect_as_extracted(text);
}

TEST(StreamNumber, ShortFormsNeedNoAccumulator)
{
    for(char const *text : {"1", "-0.5", "12.345678", "+3", "1e5", "-1.5E-7", "0.000001", "100000"})
    {
        std::string const closed = std::string(text) + ' ' + std::string(DigitScanReach, ' ');
        char const *const end = closed.data() + closed.size() - DigitScanReach;
        Real32 value;
        EXPECT_NE(scan_short_real32(closed.data(), end, value), nullptr) << text;
    }
}

TEST(StreamNumber, ADecimalFractionIsRoundedAsAStreamRoundsIt)
{
    // The first two lie half way between two floats, the third a little above that.
    struct
    {
        UInt64 mantissa;
        UInt32 digits;
        char const *text;
    } const rows[] = {{83886085, 1, "8388608.5"},
                      {83886095, 1, "8388609.5"},
                      {838860850000001, 8, "8388608.50000001"},
                      {0, 5, "0.00000"},
                      {999999999999999, 8, "9999999.99999999"}};
    for(auto const &row : rows)
        EXPECT_EQ(std::bit_cast<UInt32>(round_exactly(row.mantissa, row.digits)),
                  extracted(row.text).bits)
            << row.text;
}

TEST(StreamNumber, ShortFormsThatReachTheEndAreLeftOpen)
{
    std::string const text = "12\n" + std::string(DigitScanReach, ' ');
    Real32 value;
    EXPECT_EQ(scan_short_real32(text.data(), text.data() + 2, value), nullptr);
}

TEST(StreamNumber, RandomCharactersAreReadAsAStreamReadsThem)
{
    std::mt19937 random(20240611);
    std::string const alphabet = "0011223456789999..ee+-+-Exnaif, ";
    for(int round = 0; round < 60000; ++round)
    {
        std::string text;
        for(std::size_t length = random() % 14; text.size() < length;)
            text += alphabet[random() % alphabet.size()];
        expect_as_extracted(text);
    }
}

TEST(StreamNumber, RandomDecimalsAreRoundedOnce)
{
    std::mt19937 random(777);
    for(int round = 0; round < 60000; ++round)
    {
        std::string text = random() % 2 != 0 ? "-" : "";
        std::size_t const digits = 1 + random() % 24;
        std::size_t const point = random() % (digits + 1);
        for(std::size_t i = 0; i < digits; ++i)
        {
            if(i == point)
                text += '.';
            text += static_cast<char>('0' + random() % 10);
        }
        if(random() % 3 == 0)
            text += "e" + std::to_string(static_cast<int>(random() % 100) - 50);
        expect_as_extracted(text);
    }
}

TEST(StreamNumber, DecimalsAtTheMiddleOfTwoFloatsAreRoundedOnce)
{
    std::mt19937 random(4711);
    for(int round = 0; round < 20000; ++round)
    {
        UInt32 const bits = random() % 0x7f000000;
        Real64 const low = std::bit_cast<Real32>(bits);
        Real64 const high = std::bit_cast<Real32>(bits + 1);
        Real64 middle = (low + high) / 2;
        middle = std::nextafter(middle, round % 3 == 0 ? 0.0 : round % 3 == 1 ? middle : 1e300);
        char text[1100];
        std::snprintf(text, sizeof text, round % 2 == 0 ? "%.25g" : "%.300f", middle);
        expect_as_extracted(text);
    }
}

TEST(StreamNumber, ShortDecimalsNextToTheMiddleOfTwoFloatsAreRoundedOnce)
{
    // Numbers of 16 digits as close as possible to the middle of two floats. An error of one unit
    // in the double would show.
    std::mt19937 random(5);
    for(int round = 0; round < 200000; ++round)
    {
        UInt32 const bits = 0x38000000 + random() % 0x10000000;
        Real64 const middle =
            (Real64(std::bit_cast<Real32>(bits)) + Real64(std::bit_cast<Real32>(bits + 1))) / 2;
        char text[64];
        std::snprintf(text, sizeof text, round % 2 == 0 ? "%.16g" : "%.15e", middle);
        expect_short_agrees(text);
    }
}

TEST(StreamNumber, DigitsBehindTheLastKeptOneDecideAMiddle)
{
    // 1 + 2^-24 lies between 1 and its successor; a digit far behind makes it the upper one.
    std::string const middle = "1.000000059604644775390625";
    for(std::size_t zeros : {0, 50, 95, 96, 97, 200, 5000})
    {
        expect_as_extracted(middle + repeated(zeros, '0'));
        expect_as_extracted(middle + repeated(zeros, '0') + "1");
    }
    expect_as_extracted("1" + repeated(200, '0') + "e-200");
    expect_as_extracted("0." + repeated(5000, '0') + "1e5001");
    expect_as_extracted(repeated(5000, '0') + "1");
    expect_as_extracted(repeated(5000, '9') + "e-4990");
}
