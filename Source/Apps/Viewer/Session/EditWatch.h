#pragma once

#include <unordered_set>
#include <vector>

#include "OSGEditJournal.h"

namespace Viewer
{
/// Tells whether nodes were edited. Used by the thread that writes in the aspect.
class EditWatch
{
  public:
    /// Whether one of the nodes was edited by what was committed since the last call, or may have
    /// been. It costs next to nothing where nothing was edited. The nodes may have ended.
    bool wereEdited(std::unordered_set<OSG::Node const *> const &nodes);

  private:
    OSG::EditJournal::Follower _edits;
    std::vector<OSG::EditJournal::Entry> _entries;
};
} // namespace Viewer
