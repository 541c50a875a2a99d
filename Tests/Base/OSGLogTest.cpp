#include <iostream>
#include <sstream>

#include <gmock/gmock.h>

#include "LogCapture.h"
#include "OSGLog.h"

namespace
{
using namespace OSG;
using OSG::Test::LogCapture;
using testing::ElementsAre;
using testing::IsEmpty;

/// Sends the log to a string stream while it lives.
class StreamedLog
{
  public:
    StreamedLog()
    {
        doInitLog();
        osgLogP->setStream(_out);
    }
    ~StreamedLog() { osgLogP->setStream(std::cerr); }
    std::string text() const { return _out.str(); }

  private:
    std::ostringstream _out;
};

TEST(Log, MessageReachesTheSinkWithItsLevel)
{
    LogCapture log;
    OSG_LOG_WARNING("%d apples\n", 3);
    ASSERT_EQ(log.messages().size(), 1u);
    EXPECT_EQ(log.messages()[0].level, LOG_WARNING);
    EXPECT_EQ(log.messages()[0].text, "3 apples\n");
}

TEST(Log, MessageAboveTheLevelIsDropped)
{
    LogCapture log(LOG_WARNING);
    OSG_LOG_NOTICE("unknown key\n");
    EXPECT_THAT(log.texts(), IsEmpty());
}

TEST(Log, DefaultLevelLetsWarningsThrough)
{
    Log log;
    EXPECT_TRUE(log.checkLevel(LOG_WARNING));
    EXPECT_FALSE(log.checkLevel(LOG_NOTICE));
}

TEST(Log, RefusedModuleGetsNeitherHeaderNorText)
{
    StreamedLog out;
    osgLogP->setModules("Window, FileIO");
    OSG_LOG_WARNING("refused\n");
    osgLogP->setModules(nullptr);
    EXPECT_EQ(out.text(), "");
}

TEST(Log, ModulesAreComparedWhole)
{
    Log log;
    log.setModules("OpenSGExtra, Other");
    EXPECT_FALSE(log.checkModule("OpenSG"));
    EXPECT_TRUE(log.checkModule("Other"));
}

TEST(Log, HeaderNamesFileLineAndFunction)
{
    StreamedLog out;
    log_message(LOG_WARNING, "OSGSome.cpp", 17, "work", "text\n");
    EXPECT_EQ(out.text(), "WARNING: (OSGSome.cpp:17 work) text\n");
}

/// Counts how often a stream that passes everything on writes.
class CountedWrites : public std::streambuf
{
  public:
    std::vector<std::string> const &writes() const { return _writes; }

  protected:
    int_type overflow(int_type c) override
    {
        _writes.emplace_back(1, traits_type::to_char_type(c));
        return c;
    }
    std::streamsize xsputn(char const *text, std::streamsize size) override
    {
        _writes.emplace_back(text, static_cast<std::size_t>(size));
        return size;
    }

  private:
    std::vector<std::string> _writes;
};

TEST(Log, AMessageIsOneWrite)
{
    CountedWrites buffer;
    std::ostream out(&buffer);
    doInitLog();
    osgLogP->setStream(out);
    log_message(LOG_WARNING, "OSGSome.cpp", 17, "work", "%d apples\n", 3);
    osgLogP->setStream(std::cerr);
    EXPECT_THAT(buffer.writes(), ElementsAre("WARNING: (OSGSome.cpp:17 work) 3 apples\n"));
}

TEST(Log, AHeaderWithoutTextIsWrittenByTheUnlock)
{
    StreamedLog out;
    osgLogP->lock();
    osgLogP->doHeader(LOG_WARNING, "OpenSG", "OSGSome.cpp", 17, "work");
    osgLogP->unlock();
    EXPECT_EQ(out.text(), "WARNING: (OSGSome.cpp:17 work) ");
}

TEST(Log, ASinkCanAskForTheFormat)
{
    doInitLog();
    std::string format;
    osgLogP->setSink([](LogLevel, char const *, char const *, void *user)
                     { *static_cast<std::string *>(user) = osgLogP->getMessageFormat(); },
                     &format);
    OSG_LOG_WARNING("%d apples\n", 3);
    osgLogP->setSink(nullptr, nullptr);
    EXPECT_EQ(format, "%d apples\n");
}

TEST(Log, ArgumentsAreNeverReadAsFormat)
{
    LogCapture log;
    OSG_LOG_WARNING("Unkown mtl %s\n", "%s%n%d\x01\xff\r");
    EXPECT_THAT(log.texts(), ElementsAre("Unkown mtl %s%n%d\x01\xff\r\n"));
}

TEST(Log, LongTextArrivesWhole)
{
    for(std::size_t length : {1021u, 1022u, 1023u, 1024u, 1025u, 3000000u})
    {
        LogCapture log;
        std::string const argument(length, 'x');
        OSG_LOG_WARNING("%s\n", argument.c_str());
        ASSERT_EQ(log.texts().size(), 1u);
        EXPECT_EQ(log.texts()[0], argument + "\n") << length;
    }
}

TEST(Log, LongTextHasItsHeader)
{
    for(std::size_t length : {970u, 990u, 991u, 992u, 993u, 994u, 1024u, 5000u})
    {
        StreamedLog out;
        std::string const argument(length, 'x');
        log_message(LOG_WARNING, "OSGSome.cpp", 17, "work", "%s\n", argument.c_str());
        EXPECT_EQ(out.text(), "WARNING: (OSGSome.cpp:17 work) " + argument + "\n") << length;
    }
}

TEST(Log, AfterTheEndOfTheSystemTextGoesToStandardOutput)
{
    LogCapture log;
    testing::internal::CaptureStdout();
    GlobalSystemState = 4;
    OSG_LOG_WARNING("late %s\n", "%d");
    GlobalSystemState = 0;
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "late %d\n");
    EXPECT_THAT(log.texts(), IsEmpty());
}

TEST(Log, StreamOutputReachesTheSinkAsOneMessage)
{
    LogCapture log;
    {
        LogLock guard(osgLogP->stream(LOG_WARNING));
        guard.stream() << "a " << 1 << "\n";
    }
    EXPECT_THAT(log.texts(LOG_WARNING), ElementsAre("a 1\n"));
}

TEST(Log, StreamAboveTheLevelSwallows)
{
    LogCapture log;
    osgLogP->stream(LOG_PROGRESS) << "progress" << std::flush;
    EXPECT_THAT(log.texts(), IsEmpty());
    EXPECT_EQ(&osgLogP->stream(LOG_PROGRESS), &osgLogP->nilstream());
}

TEST(LogCapture, InnermostReceivesAndTheOuterGoesOn)
{
    LogCapture outer;
    {
        LogCapture inner;
        OSG_LOG_WARNING("inner\n");
        EXPECT_THAT(inner.lines(), ElementsAre("inner"));
    }
    OSG_LOG_WARNING("outer\n");
    EXPECT_THAT(outer.lines(), ElementsAre("outer"));
}
} // namespace
