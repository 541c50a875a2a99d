#include "LogLines.h"

#include <algorithm>
#include <new>
#include <string_view>

#include "OSGObjMessages.h"
#include "OSGSceneFileHandler.h"
#include "OSGShownText.h"

namespace Tool
{
namespace
{
constexpr std::size_t LongestText = 400;

char const *name_of(OSG::LogLevel level)
{
    switch(level)
    {
    case OSG::LOG_FATAL:
        return "FATAL: ";
    case OSG::LOG_WARNING:
        return "WARNING: ";
    default:
        return "";
    }
}

// The text without line breaks and blanks at its end.
std::string shown_message(OSG::LogLevel level, std::string_view text)
{
    std::size_t const end = text.find_last_not_of(" \n");
    text = text.substr(0, end == std::string_view::npos ? 0 : end + 1);
    bool const isLong = text.size() > LongestText;
    return name_of(level) + OSG::shown_text(text.substr(0, LongestText)) + (isLong ? "..." : "");
}
} // namespace

LogLines::LogLines(std::ostream &out, Show show)
    : _out(out)
    , _show(show)
{
    OSG::doInitLog();
    OSG::osgLogP->setSink(&LogLines::receive, this);
}

LogLines::~LogLines()
{
    OSG::osgLogP->setSink(nullptr, nullptr);
    print();
}

void LogLines::receive(OSG::LogLevel level, char const *, char const *text, void *user)
{
    try
    {
        static_cast<LogLines *>(user)->take(level, text);
    }
    catch(std::bad_alloc const &)
    {
        // There is no memory for the line, and it is lost. The code that logged it will run out of
        // memory itself.
    }
}

void LogLines::take(OSG::LogLevel level, char const *text)
{
    if(_show == Show::Nothing)
        return;
    if(level > OSG::LOG_WARNING)
    {
        _out << shown_message(level, text) + '\n' << std::flush;
        return;
    }
    std::string const format = OSG::osgLogP->getMessageFormat();
    if(Kind *const kind = find(format))
        ++kind->count;
    else
        _kinds.push_back({format, shown_message(level, text),
                          OSG::SceneFileHandlerBase::the()->getReadLine(), 1});
}

void LogLines::note(std::string const &text)
{
    if(_show != Show::Nothing)
        _kinds.push_back({text, shown_message(OSG::LOG_WARNING, text), 0, 1});
}

LogLines::Kind *LogLines::find(std::string const &format)
{
    auto const found = std::find_if(_kinds.begin(), _kinds.end(),
                                    [&format](Kind const &kind) { return kind.format == format; });
    return found != _kinds.end() ? &*found : nullptr;
}

// The note in brackets behind the text: line and count. Empty where there is none.
std::string LogLines::remarksOn(Kind const &kind)
{
    std::string remarks;
    auto const add = [&remarks](std::string const &remark)
    { remarks += (remarks.empty() ? " (" : ", ") + remark; };
    if(kind.line != 0)
        add("line " + std::to_string(kind.line));
    if(kind.count > 1)
        add(std::to_string(kind.count) + " times");
    Kind const *const uses = find(OSG::ObjMessages::MaterialUnknown);
    if(kind.format == OSG::ObjMessages::LibraryMissing && uses != nullptr)
        add(std::to_string(uses->count) + (uses->count == 1 ? " use" : " uses") +
            " of unknown materials");
    return remarks.empty() ? remarks : remarks + ')';
}

void LogLines::print()
{
    bool const lacksLibrary = find(OSG::ObjMessages::LibraryMissing) != nullptr;
    for(Kind const &kind : _kinds)
    {
        if(!lacksLibrary || kind.format != OSG::ObjMessages::MaterialUnknown)
            _out << kind.text + remarksOn(kind) + '\n';
    }
    _out << std::flush;
    _kinds.clear();
}
} // namespace Tool
