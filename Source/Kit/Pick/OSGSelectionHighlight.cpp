#include "OSGSelectionHighlight.h"

namespace OSG
{
SelectionHighlight::SelectionHighlight(SelectionSet &set, AppearanceTable &table,
                                       Material *material)
    : _set(set)
    , _table(table)
    , _material(material)
{
    _set.forEach([this](NodePath const &path) { show(path); });
    _set.addObserver(this);
}

SelectionHighlight::~SelectionHighlight()
{
    _set.removeObserver(this);
    for(auto const &[path, before] : _before)
        giveBack(path, before);
}

void SelectionHighlight::selectionChanged(SelectionSet const &, SelectionSet::Change const &change)
{
    for(NodePath const &path : change.went)
    {
        auto const found = _before.find(path);
        if(found == _before.end())
            continue;
        giveBack(path, found->second);
        _before.erase(found);
    }
    for(NodePath const &path : change.came)
        show(path);
}

void SelectionHighlight::show(NodePath const &path)
{
    if(_before.try_emplace(path, _table.getMaterial(path)).second)
        _table.set(path, _material);
}

void SelectionHighlight::giveBack(NodePath const &path, Material *before)
{
    if(_table.getMaterial(path) == _material)
        _table.set(path, before);
}
} // namespace OSG
