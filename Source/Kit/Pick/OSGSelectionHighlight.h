#pragma once

#include <unordered_map>

#include "OSGAppearanceTable.h"
#include "OSGSelectionSet.h"

namespace OSG
{
/// Shows what is selected in a material of its own, by the table of the action that draws. When a
/// place is not selected any more, it gets back the material that it had in the table before; where
/// somebody has set another one meanwhile, that one stays.
///
///     SelectionHighlight highlight(selection, action->editAppearances(), material);
class OSG_TOLVANITEKIT_API SelectionHighlight : private SelectionSet::Observer
{
  public:
    /// Keeps references to the set and the table, which have to outlive it. What is in the set is
    /// shown at once. Null shows nothing.
    SelectionHighlight(SelectionSet &set, AppearanceTable &table, Material *material);
    /// Takes its rows back.
    ~SelectionHighlight() override;
    SelectionHighlight(SelectionHighlight const &) = delete;
    SelectionHighlight &operator=(SelectionHighlight const &) = delete;

  private:
    void selectionChanged(SelectionSet const &set, SelectionSet::Change const &change) override;

    void show(NodePath const &path);
    void giveBack(NodePath const &path, Material *before);

    SelectionSet &_set;
    AppearanceTable &_table;
    UnrecordedRefPtr<Material> _material;
    // By path: what the table had before.
    std::unordered_map<NodePath, UnrecordedRefPtr<Material>, NodePathHash> _before;
};
} // namespace OSG
