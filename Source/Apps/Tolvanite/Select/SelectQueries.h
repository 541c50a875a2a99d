#pragma once

#include "LineReader.h"
#include "SceneFile.h"
#include "SelectQuery.h"
#include "Selector.h"

namespace Tool
{
/// What a line of queries means where it does not say otherwise.
struct QueryDefaults
{
    SelectionSettings settings;
    float radius;
};

/// Writes one line of JSON for each line that is not blank, in order: the members of a selection
/// after the line's number, or what is wrong with the line. All answers so far are written out
/// before the file is asked for more. The result is Failed if a line was wrong or the file could
/// not be read to its end. With --verbose, the log says how long reading, answering and printing
/// took.
int answer_queries(LineReader &lines, QueryDefaults const &defaults, Selector &selector,
                   Scene const &scene, Streams streams);
} // namespace Tool
