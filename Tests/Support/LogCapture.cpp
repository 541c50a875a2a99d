#include "LogCapture.h"

#include <algorithm>

namespace OSG::Test
{
namespace
{
LogCapture *innermost = nullptr;
}

LogCapture::LogCapture(LogLevel level)
    : _outer(innermost)
{
    doInitLog();
    _formerLevel = osgLogP->getLogLevel();
    osgLogP->setLogLevel(level);
    osgLogP->setSink(&LogCapture::receive, this);
    innermost = this;
}

LogCapture::~LogCapture()
{
    innermost = _outer;
    osgLogP->setSink(_outer != nullptr ? &LogCapture::receive : nullptr, _outer);
    osgLogP->setLogLevel(_formerLevel);
}

std::vector<std::string> LogCapture::texts() const
{
    std::vector<std::string> result;
    for(Message const &message : _messages)
        result.push_back(message.text);
    return result;
}

std::vector<std::string> LogCapture::texts(LogLevel level) const
{
    std::vector<std::string> result;
    for(Message const &message : _messages)
    {
        if(message.level == level)
            result.push_back(message.text);
    }
    return result;
}

std::vector<std::string> LogCapture::lines() const
{
    std::string all;
    for(Message const &message : _messages)
        all += message.text;
    std::vector<std::string> result;
    std::size_t begin = 0;
    while(begin < all.size())
    {
        std::size_t const end = std::min(all.find('\n', begin), all.size());
        result.push_back(all.substr(begin, end - begin));
        begin = end + 1;
    }
    return result;
}

std::size_t LogCapture::count(std::string const &text) const
{
    return static_cast<std::size_t>(std::count_if(_messages.begin(), _messages.end(),
                                                  [&text](Message const &message)
                                                  { return message.text == text; }));
}

void LogCapture::receive(LogLevel level, char const *, char const *text, void *user)
{
    static_cast<LogCapture *>(user)->_messages.push_back({level, text});
}
} // namespace OSG::Test
