#include <algorithm>
#include <charconv>
#include <ostream>
#include <string>

#include "OSGInputRecording.h"
#include "OSGRecordingWords.h"

namespace OSG
{
namespace
{
template <class Number>
std::string shortest(Number value)
{
    char text[32];
    return std::string(text, std::to_chars(text, text + sizeof(text), value).ptr);
}

template <class Tuple>
std::string spaced(Tuple const &values)
{
    return shortest(values[0]) + ' ' + shortest(values[1]) + ' ' + shortest(values[2]);
}

void write_event(std::ostream &out, NavigatorEvent const &event)
{
    for(EventWord const &row : EventWords)
    {
        if(row.kind != event.kind)
            continue;
        out << row.word;
        if(row.hasCode)
            out << ' ' << shortest(event.code);
        if(row.hasModifiers)
            out << ' ' << shortest(event.modifiers);
        if(row.hasPointer)
            out << ' ' << shortest(event.x) << ' ' << shortest(event.y);
    }
}

void write_change(std::ostream &out, InputRecording::TimedEvent const &timed)
{
    for(ChangeWord const &row : ChangeWords)
    {
        if(row.what == timed.what)
            out << row.word << ' '
                << (row.isNumber ? shortest(timed.number)
                    : timed.isOn ? "on"
                                 : "off");
    }
}

void write_line(std::ostream &out, InputRecording::TimedEvent const &timed)
{
    out << shortest(timed.seconds) << ' ';
    switch(timed.what)
    {
    case InputRecording::What::Event:
        write_event(out, timed.event);
        break;
    case InputRecording::What::Key:
        out << (timed.isOn ? "down " : "up ") << shortest(timed.code);
        break;
    case InputRecording::What::Focus:
        out << (timed.isOn ? "focus on" : "focus off");
        break;
    case InputRecording::What::Frame:
        out << "frame " << shortest(timed.ticks);
        break;
    case InputRecording::What::Tool:
        out << "tool " << timed.tool;
        if(timed.isOn && !is_shared_by_name(timed.tool))
            out << ' ' << SharedWord;
        break;
    case InputRecording::What::Held:
        out << "held " << shortest(timed.code);
        break;
    case InputRecording::What::Cancel:
        out << "cancel";
        break;
    case InputRecording::What::Pose:
        out << "pose " << spaced(timed.pose.from) << ' ' << spaced(timed.pose.at) << ' '
            << spaced(timed.pose.up);
        break;
    default:
        write_change(out, timed);
    }
    out << '\n';
}

bool is_of_host(InputRecording::TimedEvent const &timed)
{
    return timed.what > InputRecording::What::Frame;
}

RecordingVersion version_of(InputRecording const &recording)
{
    bool const hasHosts = std::any_of(recording.events.begin(), recording.events.end(), is_of_host);
    if(hasHosts || recording.contentScale != 1)
        return HostVersion;
    return recording.ticksPerSecond ? DesktopVersion : PlainVersion;
}
} // namespace

void write_recording(std::ostream &out, InputRecording const &recording)
{
    bool const perspective = recording.projection == InputRecording::Projection::Perspective;
    out << RecordingSignature << ' ' << int(version_of(recording)) << '\n'
        << "camera " << (perspective ? "perspective " : "orthographic ")
        << shortest(recording.opening) << '\n'
        << "depth " << shortest(recording.near) << ' ' << shortest(recording.far) << '\n'
        << "from " << spaced(recording.from) << '\n'
        << "at " << spaced(recording.at) << '\n'
        << "up " << spaced(recording.up) << '\n'
        << "motion-factor " << shortest(recording.motionFactor) << '\n'
        << "rotation-angle " << shortest(recording.rotationAngle) << '\n'
        << "click-center " << (recording.clickCenter ? "on" : "off") << '\n'
        << "no-intersect " << (recording.noIntersect ? "on" : "off") << '\n';
    if(recording.ticksPerSecond)
        out << "clock " << shortest(*recording.ticksPerSecond) << '\n';
    if(recording.contentScale != 1)
        out << "content-scale " << shortest(recording.contentScale) << '\n';
    for(InputRecording::TimedEvent const &timed : recording.events)
        write_line(out, timed);
}
} // namespace OSG
