#pragma once

#include <optional>
#include <ostream>
#include <string>

#include "JsonWriter.h"
#include "WalkGoal.h"

namespace OSG
{
class Node;
}

namespace Tool
{
/// What a walk has come to.
struct WalkResult
{
    std::string file;
    OSG::Node *scene;
    OSG::WalkPlayer const &player;
    std::optional<WalkGoalResult> goal; ///< nothing where no goal was given
    double seconds;                     ///< of the walk, without the read
};

void write_walk(JsonWriter &json, WalkResult const &result);
/// The events as a table, then a summary.
void print_walk(std::ostream &out, WalkResult const &result);
} // namespace Tool
