#include "EditWatch.h"

#include <algorithm>

namespace Viewer
{
bool EditWatch::wereEdited(std::unordered_set<OSG::Node const *> const &nodes)
{
    _entries.clear();
    bool const isKnown = _edits.read(_entries);
    return !isKnown ||
           std::any_of(_entries.begin(), _entries.end(),
                       [&nodes](auto const &entry) { return nodes.contains(entry.node); });
}
} // namespace Viewer
