#include "OSGOSBStreams.h"

#include <gtest/gtest.h>

#include "LogCapture.h"
#include "OsbScenes.h"
#include "StreamBuffers.h"

namespace OSG
{
namespace
{
using namespace OSG::Test;

// --- the stream ---

TEST(OSBStreams, TheStreamStandsBehindTheSceneAfterwards)
{
    std::string const scene = osb_bytes(make_group({make_group()}));
    std::istringstream in(scene + scene + "rest");
    EXPECT_NE(NodePtr(OSBSceneFileType::the().read(in, "osb", {})), nullptr);
    EXPECT_NE(NodePtr(OSBSceneFileType::the().read(in, "osb", {})), nullptr);
    std::string rest;
    EXPECT_TRUE(in >> rest);
    EXPECT_EQ(rest, "rest");
}

/// Hands out a byte at a time and cannot seek.
class ByteBuffer : public std::streambuf
{
  public:
    explicit ByteBuffer(std::string bytes)
        : _bytes(std::move(bytes))
    {
    }

  protected:
    int_type underflow() override
    {
        if(_at == _bytes.size())
            return traits_type::eof();
        _byte = _bytes[_at++];
        setg(&_byte, &_byte, &_byte + 1);
        return traits_type::to_int_type(_byte);
    }

  private:
    std::string _bytes;
    std::size_t _at = 0;
    char _byte = 0;
};

TEST(OSBStreams, AStreamThatCannotSeekStandsBehindTheSceneToo)
{
    std::string const scene = osb_bytes(make_group({make_group()}));
    ByteBuffer buffer(scene + scene + "rest");
    std::istream in(&buffer);
    EXPECT_NE(NodePtr(OSBSceneFileType::the().read(in, "osb", {})), nullptr);
    EXPECT_NE(NodePtr(OSBSceneFileType::the().read(in, "osb", {})), nullptr);
    std::string rest;
    EXPECT_TRUE(in >> rest);
    EXPECT_EQ(rest, "rest");
}

TEST(OSBStreams, AStreamThatEndsAtAnyByteIsReported)
{
    LogCapture const log;
    NodePtr const root = make_group({make_group()});
    std::size_t const size = osb_bytes(root).size();
    for(std::size_t room = 0; room <= size; ++room)
    {
        NarrowBuffer buffer(room);
        std::ostream out(&buffer);
        EXPECT_EQ(OSBSceneFileType::the().write(root, out, "osb"), room == size) << room;
    }
}
} // namespace
} // namespace OSG
