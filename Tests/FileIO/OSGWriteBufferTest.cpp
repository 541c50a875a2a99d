#include "OSGWriteBuffer.h"

#include <iomanip>
#include <sstream>
#include <stdexcept>
#include <streambuf>

#include <gtest/gtest.h>

#include "StreamBuffers.h"

using namespace OSG;
using namespace OSG::Test;

namespace
{
TEST(WriteBuffer, WritesTextAndNumbersInOrder)
{
    std::ostringstream out;
    WriteBuffer buffer(out);
    buffer.put("v ").put(0.5f).put(' ').put(UInt32(4294967295u)).put('\n');
    buffer.flush();
    EXPECT_EQ(out.str(), "v 0.5 4294967295\n");
}

TEST(WriteBuffer, KeepsTextThatIsLongerThanABlock)
{
    std::string const text = repeated(WriteBuffer::BlockBytes * 2 + 17, 'x');
    std::ostringstream out;
    WriteBuffer buffer(out);
    buffer.put("begin ").put(text).put(" end");
    buffer.flush();
    EXPECT_EQ(out.str(), "begin " + text + " end");
}

TEST(WriteBuffer, WritesNumbersAcrossTheEndsOfBlocks)
{
    std::ostringstream out;
    std::ostringstream plain;
    WriteBuffer buffer(out);
    for(UInt32 i = 0; i < 30000; ++i)
    {
        Real32 const value = static_cast<Real32>(i) / 7.f;
        buffer.put(i).put(' ').put(value).put('\n');
        plain << i << ' ' << value << '\n';
    }
    buffer.flush();
    EXPECT_EQ(out.str(), plain.str());
}

TEST(WriteBuffer, WritesFractionsInTheFormatOfTheStream)
{
    std::ostringstream out;
    out << std::fixed << std::setprecision(2) << std::showpos;
    WriteBuffer buffer(out);
    buffer.put(1.f).put(' ').put(1234.567f).put(' ').put(UInt32(7));
    buffer.flush();
    EXPECT_EQ(out.str(), "+1.00 +1234.57 7");
}

struct CommaNumbers : std::numpunct<char>
{
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

TEST(WriteBuffer, WritesFractionsInTheLocaleOfTheStreamAndWholeNumbersPlain)
{
    std::ostringstream out;
    out.imbue(std::locale(std::locale::classic(), new CommaNumbers));
    WriteBuffer buffer(out);
    buffer.put(0.5f).put(' ').put(UInt32(1234567));
    buffer.flush();
    EXPECT_EQ(out.str(), "0,5 1234567");
}

TEST(WriteBuffer, DoesNotTakeAFieldWidth)
{
    std::ostringstream out;
    out << std::setw(20) << std::setprecision(3);
    WriteBuffer buffer(out);
    buffer.put(0.5f).put('|').put(0.25f);
    buffer.flush();
    EXPECT_EQ(out.str(), "0.5|0.25");
}

TEST(WriteBuffer, WritesNothingToAStreamThatHasFailed)
{
    std::ostringstream out;
    out.setstate(std::ios::failbit);
    WriteBuffer buffer(out);
    buffer.put("text");
    buffer.flush();
    EXPECT_EQ(out.str(), "");
}

TEST(WriteBuffer, LeavesTheStreamBadWhereItTakesOnlyAPart)
{
    NarrowBuffer full(2);
    std::ostream out(&full);
    WriteBuffer buffer(out);
    buffer.put(repeated(WriteBuffer::BlockBytes * 3, 'x'));
    buffer.flush();
    EXPECT_TRUE(out.bad());
}

TEST(WriteBuffer, RaisesWhatTheStreamIsAskedToRaise)
{
    NarrowBuffer full(2);
    std::ostream out(&full);
    out.exceptions(std::ios::badbit);
    WriteBuffer buffer(out);
    buffer.put("text");
    EXPECT_THROW(buffer.flush(), std::ios_base::failure);
}
} // namespace
