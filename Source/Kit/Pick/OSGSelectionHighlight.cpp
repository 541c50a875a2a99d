#include "OSGSelectionHighlight.h"

namespace OSG
{
SelectionHighlight::SelectionHighlight(SelectionSet &set, AppearanceTable &table,
                                       Material *material)
    : _set(set)
    , _table(table)
    , _material(material)
{
    selectionChanged(_set, {_set.getPaths(), {}});
    _set.addObserver(this);
}

SelectionHighlight::~SelectionHighlight()
{
    _set.removeObserver(this);
    selectionChanged(_set, {{}, _set.getPaths()});
}

void SelectionHighlight::selectionChanged(SelectionSet const &, SelectionSet::Change const &change)
{
    for(NodePath const &path : change.went)
        _table.set(path, nullptr);
    for(NodePath const &path : change.came)
        _table.set(path, _material);
}
} // namespace OSG
