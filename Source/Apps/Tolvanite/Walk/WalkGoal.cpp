#include "WalkGoal.h"

#include <algorithm>

namespace Tool
{
WalkGoalResult judge_goal(WalkGoal const &goal, OSG::Pnt3f const &start,
                          std::vector<OSG::WalkPose> const &poses)
{
    WalkGoalResult result;
    auto const look = [&goal, &result](OSG::Pnt3f const &from, OSG::Int64 milliseconds)
    {
        float const distance = from.dist(goal.place);
        result.nearest = std::min(result.nearest, distance);
        if(!result.milliseconds && distance <= goal.within)
            result.milliseconds = milliseconds;
    };
    result.nearest = start.dist(goal.place);
    look(start, 0);
    for(OSG::WalkPose const &pose : poses)
        look(pose.from, pose.milliseconds);
    return result;
}
} // namespace Tool
