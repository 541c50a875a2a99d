#include "OSGInputRecording.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <istream>
#include <set>
#include <string_view>

#include "OSGMatrixUtility.h"
#include "OSGPointerTool.h"
#include "OSGRecordingWords.h"
#include "OSGShownText.h"

namespace OSG
{
namespace
{
// Two of these differ by less than the greatest 64-bit number.
constexpr Int64 GreatestTicks = 4'000'000'000'000'000'000;

/// Thrown for a fault in a line. read_recording catches it and adds the line's number.
struct Complaint
{
    std::string text;
};

[[noreturn]] void complain(std::string const &text) { throw Complaint{text}; }

/// A word of the file for a complaint: cut off if it is long, and without control characters.
std::string shown(std::string_view word)
{
    constexpr std::size_t LongestShown = 40;
    return shown_text(word.substr(0, LongestShown));
}

/// The words of a line up to its comment. Each call of take() gives the next one.
class Words
{
  public:
    explicit Words(std::string_view line)
        : _rest(line.substr(0, line.find('#')))
    {
        skipBlanks();
    }

    bool empty() const { return _rest.empty(); }

    std::string_view take()
    {
        if(empty())
            complain("something is missing at the end");
        std::size_t const length = std::min(_rest.find_first_of(Blanks), _rest.size());
        std::string_view const word = _rest.substr(0, length);
        _rest.remove_prefix(length);
        skipBlanks();
        return word;
    }

    template <class Number>
    Number number()
    {
        std::string_view const word = take();
        Number value{};
        char const *const end = word.data() + word.size();
        auto const [stop, error] = std::from_chars(word.data(), end, value);
        if(error == std::errc::result_out_of_range)
            complain(shown(word) + " is out of range");
        bool finite = true;
        if constexpr(std::is_floating_point_v<Number>)
            finite = std::isfinite(value);
        if(error != std::errc() || stop != end || !finite)
            complain(shown(word) + " is not a number here");
        return value;
    }

    template <class Tuple>
    Tuple triple()
    {
        Real32 const x = number<Real32>();
        Real32 const y = number<Real32>();
        return Tuple(x, y, number<Real32>());
    }

    bool truth()
    {
        std::string_view const word = take();
        if(word != "on" && word != "off")
            complain(shown(word) + " is neither on nor off");
        return word == "on";
    }

    void end() const
    {
        if(!empty())
            complain(shown(_rest) + " is too much");
    }

  private:
    static constexpr char const *Blanks = " \t\r";

    void skipBlanks()
    {
        _rest.remove_prefix(std::min(_rest.find_first_not_of(Blanks), _rest.size()));
    }

    std::string_view _rest;
};

class Reader
{
  public:
    void line(std::string const &text)
    {
        Words words(text);
        if(words.empty())
            return;
        if(!_signed)
            takeSignature(words);
        else if(startsWithTime(text))
            takeEvent(words);
        else
            takeSetting(words);
        words.end();
    }

    InputRecording finish()
    {
        if(!_signed)
            complain("this is no recording of events");
        requireSettings();
        checkView();
        return std::move(_recording);
    }

  private:
    void takeSignature(Words &words)
    {
        if(words.take() != RecordingSignature)
            complain("this is no recording of events");
        _version = words.number<int>();
        if(_version < PlainVersion || _version > HostVersion)
            complain("this version of the format is not known");
        _signed = true;
    }

    static bool startsWithTime(std::string const &text)
    {
        char const first = text[text.find_first_not_of(" \t")];
        return (first >= '0' && first <= '9') || first == '.' || first == '-';
    }

    void takeSetting(Words &words)
    {
        std::string const name(words.take());
        if(!_recording.events.empty())
            complain(shown(name) + " comes after the first event");
        if(!_seen.insert(name).second)
            complain(shown(name) + " comes twice");
        if(name == "camera")
            takeCamera(words);
        else if(name == "depth")
            takeDepth(words);
        else if(name == "from")
            _recording.from = words.triple<Pnt3f>();
        else if(name == "at")
            _recording.at = words.triple<Pnt3f>();
        else if(name == "up")
            _recording.up = words.triple<Vec3f>();
        else if(name == "motion-factor")
            _recording.motionFactor = words.number<Real32>();
        else if(name == "rotation-angle")
            _recording.rotationAngle = words.number<Real32>();
        else if(name == "click-center")
            _recording.clickCenter = words.truth();
        else if(name == "no-intersect")
            _recording.noIntersect = words.truth();
        else if(name == "clock" && _version >= DesktopVersion)
            takeClock(words);
        else if(name == "content-scale" && _version >= HostVersion)
            takeContentScale(words);
        else
            complain(shown(name) + " is not known");
    }

    void takeClock(Words &words)
    {
        _recording.ticksPerSecond = words.number<Int64>();
        if(*_recording.ticksPerSecond < 0)
            complain("a clock cannot run like that");
    }

    void takeContentScale(Words &words)
    {
        _recording.contentScale = words.number<Real32>();
        if(!(_recording.contentScale > 0))
            complain("a content scale is above 0");
    }

    void takeCamera(Words &words)
    {
        std::string_view const kind = words.take();
        bool const perspective = kind == "perspective";
        if(!perspective && kind != "orthographic")
            complain(shown(kind) + " is neither perspective nor orthographic");
        _recording.projection = perspective ? InputRecording::Projection::Perspective
                                            : InputRecording::Projection::Orthographic;
        _recording.opening = words.number<Real64>();
        if(!(_recording.opening > 0) || (perspective && !(_recording.opening < 180)))
            complain("a camera cannot open like that");
    }

    void takeDepth(Words &words)
    {
        _recording.near = words.number<Real32>();
        _recording.far = words.number<Real32>();
        if(!(_recording.near < _recording.far))
            complain("depth wants near < far");
    }

    // These checks concern several lines, so they wait for the end of the file.
    void checkView() const
    {
        if(_recording.projection == InputRecording::Projection::Perspective &&
           !(_recording.near > 0))
            complain("a perspective view wants a depth of 0 < near < far");
        checkPose(_recording.from, _recording.at, _recording.up);
    }

    static void checkPose(Pnt3f const &from, Pnt3f const &at, Vec3f const &up)
    {
        Matrix view;
        if(MatrixLookAt(view, from, at, up))
            complain("from, at and up give no view");
    }

    void requireSettings() const
    {
        for(char const *name : {"camera", "from", "at", "up", "motion-factor", "rotation-angle",
                                "click-center", "no-intersect"})
        {
            if(_seen.count(name) == 0)
                complain(shown(name) + " is missing");
        }
        if(_version == DesktopVersion && !_recording.ticksPerSecond)
            complain("clock is missing");
    }

    void takeEvent(Words &words)
    {
        requireSettings();
        Real64 const seconds = words.number<Real64>();
        std::vector<InputRecording::TimedEvent> &events = _recording.events;
        if(seconds < (events.empty() ? 0 : events.back().seconds))
            complain("time runs backwards");
        std::string_view const name = words.take();
        InputRecording::TimedEvent timed{seconds};
        bool const isDesktops = _recording.ticksPerSecond && takeDesktop(name, words, timed);
        bool const isHosts = _version >= HostVersion &&
                             (takeTool(name, words, timed) || takeChange(name, words, timed));
        if(!isDesktops && !isHosts)
            timed.event = eventOf(name, words);
        events.push_back(timed);
    }

    /// False if `name` is no word of the desktop.
    static bool takeDesktop(std::string_view name, Words &words, InputRecording::TimedEvent &timed)
    {
        if(name == "down" || name == "up")
        {
            timed.what = InputRecording::What::Key;
            timed.code = words.number<Int16>();
            timed.isOn = name == "down";
        }
        else if(name == "focus")
        {
            timed.what = InputRecording::What::Focus;
            timed.isOn = words.truth();
        }
        else if(name == "frame")
        {
            timed.what = InputRecording::What::Frame;
            timed.ticks = words.number<Int64>();
            if(timed.ticks > GreatestTicks || timed.ticks < -GreatestTicks)
                complain("a frame is too far away");
        }
        return timed.what != InputRecording::What::Event;
    }

    /// False if `name` is no word of tools.
    static bool takeTool(std::string_view name, Words &words, InputRecording::TimedEvent &timed)
    {
        constexpr Int16 MostModifiers =
            PointerTool::Shift | PointerTool::Control | PointerTool::Alt;
        if(name == "tool")
        {
            timed.what = InputRecording::What::Tool;
            timed.tool = words.take();
            if(!is_tool_name(timed.tool))
                complain(shown(timed.tool) + " is no name of a tool");
            timed.isOn = is_shared_by_name(timed.tool) || !words.empty();
            if(!words.empty() && words.take() != SharedWord)
                complain("only shared may follow the name of a tool");
        }
        else if(name == "held")
        {
            timed.what = InputRecording::What::Held;
            timed.code = words.number<Int16>();
            if(timed.code < 0 || timed.code > MostModifiers)
                complain("these are no modifiers");
        }
        else if(name == "cancel")
            timed.what = InputRecording::What::Cancel;
        return timed.what != InputRecording::What::Event;
    }

    /// False if `name` is no word of a change by the host.
    static bool takeChange(std::string_view name, Words &words, InputRecording::TimedEvent &timed)
    {
        if(name == "pose")
        {
            timed.what = InputRecording::What::Pose;
            timed.pose.from = words.triple<Pnt3f>();
            timed.pose.at = words.triple<Pnt3f>();
            timed.pose.up = words.triple<Vec3f>();
            checkPose(timed.pose.from, timed.pose.at, timed.pose.up);
        }
        for(ChangeWord const &row : ChangeWords)
        {
            if(name != row.word)
                continue;
            timed.what = row.what;
            if(row.isNumber)
                timed.number = words.number<Real32>();
            else
                timed.isOn = words.truth();
        }
        return timed.what != InputRecording::What::Event;
    }

    static NavigatorEvent eventOf(std::string_view name, Words &words)
    {
        for(EventWord const &row : EventWords)
        {
            if(name != row.word)
                continue;
            NavigatorEvent event;
            event.kind = row.kind;
            event.code = row.hasCode ? words.number<Int16>() : Int16(0);
            event.modifiers = row.hasModifiers ? words.number<UInt16>() : UInt16(0);
            event.x = row.hasPointer ? words.number<Int16>() : Int16(0);
            event.y = row.hasPointer ? words.number<Int16>() : Int16(0);
            return event;
        }
        complain(shown(name) + " is no event");
    }

    InputRecording _recording;
    std::set<std::string> _seen;
    bool _signed = false;
    int _version = 0;
};

// Like std::getline, but with a limit. A file that is not a recording may have no line break at
// all, and std::getline would read all of it into memory. The longest event has less than 100
// characters; the limit leaves room for comments.
bool take_line(std::istream &in, std::string &line)
{
    constexpr std::size_t LongestLine = 4096;
    using Traits = std::istream::traits_type;
    line.clear();
    if(in.peek() == Traits::eof())
        return false;
    for(int c = in.get(); c != Traits::eof() && c != '\n'; c = in.get())
    {
        if(line.size() == LongestLine)
            complain("more than " + std::to_string(LongestLine) + " characters");
        line.push_back(Traits::to_char_type(c));
    }
    return true;
}
} // namespace

RecordingResult read_recording(std::istream &in)
{
    Reader reader;
    UInt32 number = 0;
    try
    {
        for(std::string text; ++number, take_line(in, text);)
            reader.line(text);
        --number;
        return {reader.finish(), ""};
    }
    catch(Complaint const &complaint)
    {
        return {std::nullopt, "line " + std::to_string(number) + ": " + complaint.text};
    }
}
} // namespace OSG
