#pragma once

#include <optional>

#include "OSGWalkPlayer.h"

namespace Tool
{
/// A place that a walk has to reach.
struct WalkGoal
{
    OSG::Pnt3f place;
    float within = 0.5f;
};

struct WalkGoalResult
{
    std::optional<OSG::Int64> milliseconds; ///< when it was reached first; nothing where it was not
    float nearest = 0;                      ///< the smallest distance
};

/// `start` is where the eye is at time 0.
WalkGoalResult judge_goal(WalkGoal const &goal, OSG::Pnt3f const &start,
                          std::vector<OSG::WalkPose> const &poses);
} // namespace Tool
