#pragma once

#include "OSGAppearanceTable.h"
#include "OSGSelectionSet.h"

namespace OSG
{
/// Shows what is selected in a material of its own, by the table of the action that draws. It knows
/// the rows that it has made, and leaves those of others as they are.
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

    SelectionSet &_set;
    AppearanceTable &_table;
    UnrecordedRefPtr<Material> _material;
};
} // namespace OSG
