#include "OSGWalkEvent.h"

namespace OSG
{
char const *name_of(WalkEvent::Kind kind)
{
    switch(kind)
    {
    case WalkEvent::Kind::Jumped:
        return "jumped";
    case WalkEvent::Kind::Climbed:
        return "climbed";
    case WalkEvent::Kind::Dropped:
        return "dropped";
    case WalkEvent::Kind::Blocked:
        break;
    }
    return "blocked";
}

void append_walk_events(WalkStep const &step, Real32 groundDistance, std::vector<WalkEvent> &events)
{
    // Raised steps on a level floor end higher or lower by some rounding.
    constexpr Real32 LeastClimb = 1e-4f;
    using Kind = WalkEvent::Kind;
    if(step.outcome == WalkStep::Outcome::Refused)
    {
        events.push_back({Kind::Blocked, 0, {}, 0, step.obstacle});
        return;
    }
    Real32 const rise = (step.after - step.before).dot(step.up);
    if(step.outcome == WalkStep::Outcome::Raised)
    {
        if(step.isAfterSpace)
            events.push_back({Kind::Jumped, 0, {}, 0, {}});
        else if(rise > LeastClimb)
            events.push_back({Kind::Climbed, 0, {}, rise, {}});
    }
    if(-rise > groundDistance)
        events.push_back({Kind::Dropped, 0, {}, -rise, {}});
}
} // namespace OSG
