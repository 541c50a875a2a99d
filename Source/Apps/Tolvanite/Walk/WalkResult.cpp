#include "WalkResult.h"

#include <iomanip>
#include <sstream>

#include "NumberText.h"
#include "OSGName.h"
#include "OSGNode.h"
#include "OSGNodePath.h"
#include "OSGShownText.h"
#include "ValueJson.h"

namespace Tool
{
namespace
{
using OSG::WalkEvent;

std::string path_of(OSG::WalkObstacle const &obstacle, OSG::Node const *scene)
{
    return OSG::node_path(scene, obstacle.visitSubTreeNodes, obstacle.node);
}

bool has_height(WalkEvent const &event)
{
    return event.kind == WalkEvent::Kind::Climbed || event.kind == WalkEvent::Kind::Dropped;
}

void write_obstacle(JsonWriter &json, WalkEvent const &event, OSG::Node const *scene)
{
    if(!event.obstacle)
    {
        json.key("node").null().key("distance").null().key("normal").null();
        return;
    }
    json.member("node", path_of(*event.obstacle, scene));
    json.member("distance", event.obstacle->distance);
    write_tuple(json, "normal", event.obstacle->normal, 3);
}

void write_event(JsonWriter &json, WalkEvent const &event, OSG::Node const *scene)
{
    json.beginObject().member("event", OSG::name_of(event.kind)).member("t", event.milliseconds);
    write_tuple(json, "position", event.position, 3);
    if(has_height(event))
        json.member("height", event.height);
    if(event.kind == WalkEvent::Kind::Blocked)
        write_obstacle(json, event, scene);
    json.endObject();
}

void write_frame(JsonWriter &json, OSG::WalkPose const &pose)
{
    json.beginObject().member("t", pose.milliseconds);
    write_tuple(json, "from", pose.from, 3);
    write_tuple(json, "at", pose.at, 3);
    write_tuple(json, "up", pose.up, 3);
    json.member("blocked", pose.isBlocked).endObject();
}

void write_goal(JsonWriter &json, WalkGoalResult const &goal)
{
    json.key("goal").beginObject().member("reached", goal.milliseconds.has_value()).key("t");
    if(goal.milliseconds)
        json.value(*goal.milliseconds);
    else
        json.null();
    json.member("nearest", goal.nearest).endObject();
}

// The height of a climb or a drop, or what was in the way.
std::string remark_of(WalkEvent const &event, OSG::Node const *scene)
{
    std::ostringstream text;
    if(has_height(event))
        text << event.height;
    if(event.kind == WalkEvent::Kind::Blocked && !event.obstacle)
        text << '-';
    if(event.obstacle)
    {
        text << "by " << path_of(*event.obstacle, scene);
        if(char const *const name = OSG::getName(event.obstacle->node))
            text << ' ' << OSG::shown_text(name);
        text << " at " << event.obstacle->distance;
    }
    return text.str();
}

/// A line of the table: an event, or several that are the same but for the time.
struct EventLine
{
    std::string times;
    std::string rest;
    std::size_t count = 1;
    OSG::UInt64 last = 0;
};

std::vector<EventLine> lines_of(WalkResult const &result)
{
    std::vector<EventLine> lines;
    for(WalkEvent const &event : result.player.getEvents())
    {
        std::ostringstream rest;
        rest << std::left << std::setw(9) << OSG::name_of(event.kind) << ' ' << std::setw(33)
             << spaced(event.position) << ' ' << remark_of(event, result.scene);
        if(lines.empty() || lines.back().rest != rest.str())
            lines.push_back({std::to_string(event.milliseconds), rest.str()});
        else
            ++lines.back().count;
        lines.back().last = event.milliseconds;
    }
    return lines;
}
} // namespace

void write_walk(JsonWriter &json, WalkResult const &result)
{
    json.beginObject().member("file", result.file);
    json.key("frames").beginArray();
    for(OSG::WalkPose const &pose : result.player.getPoses())
        write_frame(json, pose);
    json.endArray().key("events").beginArray();
    for(WalkEvent const &event : result.player.getEvents())
        write_event(json, event, result.scene);
    json.endArray().member("queries", result.player.getQueries());
    json.member("seconds", result.seconds);
    if(result.goal)
        write_goal(json, *result.goal);
    json.endObject();
}

void print_walk(std::ostream &out, WalkResult const &result)
{
    out << std::left << std::setw(9) << "t" << ' ' << std::setw(9) << "event" << ' '
        << std::setw(33) << "position"
        << " height or obstacle\n";
    for(EventLine const &line : lines_of(result))
    {
        out << std::setw(9) << line.times << ' ' << line.rest;
        if(line.count > 1)
            out << " (" << line.count << " times, until " << line.last << ')';
        out << '\n';
    }
    auto const &poses = result.player.getPoses();
    out << poses.size() << (poses.size() == 1 ? " frame" : " frames");
    if(!poses.empty())
        out << " to " << spaced(poses.back().from);
    out << ", " << result.player.getQueries() << " queries in " << result.seconds << " s\n";
    if(!result.goal)
        return;
    if(result.goal->milliseconds)
        out << "goal reached at " << *result.goal->milliseconds;
    else
        out << "goal not reached";
    out << ", nearest " << result.goal->nearest << '\n';
}
} // namespace Tool
