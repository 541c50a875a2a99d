#include "WalkResult.h"

#include <iomanip>
#include <sstream>

#include "NodePath.h"
#include "OSGName.h"
#include "OSGNode.h"
#include "OSGShownText.h"
#include "ValueJson.h"

namespace Tool
{
namespace
{
using OSG::WalkEvent;

std::string path_of(OSG::WalkObstacle const &obstacle, OSG::Node const *scene)
{
    return node_path(scene, obstacle.visitSubTreeNodes, obstacle.node);
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

std::string spaced(OSG::Pnt3f const &place)
{
    std::ostringstream text;
    text << place[0] << ' ' << place[1] << ' ' << place[2];
    return text.str();
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
    out << std::left << std::setw(10) << "t" << std::setw(10) << "event" << std::setw(34)
        << "position"
        << "height or obstacle\n";
    for(WalkEvent const &event : result.player.getEvents())
        out << std::setw(10) << event.milliseconds << std::setw(10) << OSG::name_of(event.kind)
            << std::setw(34) << spaced(event.position) << remark_of(event, result.scene) << '\n';
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
