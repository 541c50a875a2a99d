#include "OSGFrameDemand.h"

#include <utility>

namespace OSG
{
FrameDemand::~FrameDemand() = default;

bool FrameDemand::take(Viewport const &viewport)
{
    ShownView const before = std::exchange(_shown, shown_view_of(viewport));
    // A request stands until the journal could be read.
    bool const isOther = !(before == _shown);
    _isRequested = _isRequested || isOther;
    bool const wasEdited = _edits.haveCome();
    return std::exchange(_isRequested, false) || wasEdited;
}

void FrameDemand::selectionChanged(SelectionSet const &, SelectionSet::Change const &)
{
    request();
}
} // namespace OSG
