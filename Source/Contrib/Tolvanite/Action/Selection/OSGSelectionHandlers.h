#pragma once

#include "OSGAction.h"
#include "OSGSelectionFunctor.h"

namespace OSG
{
namespace SelectionSearch
{
struct Extremes;
} // namespace SelectionSearch

/// The handlers that exact and fast selection share: culling by boxes, transforms, switches and
/// visited subtrees. Derived functors handle geometry.
///
/// A handler works on the action that calls it, so handlers also serve copies of the functor's
/// action. For a core type without a row in the table, all children are walked.
class OSG_CONTRIBTOLVANITE_API SelectionHandlers : public SelectionFunctor
{
  protected:
    using SelectionFunctor::SelectionFunctor;
    SelectionHandlers();
    ~SelectionHandlers() override;

    using ResultE = ActionBase::ResultE;

    /// Registers the enter and leave handlers of each row with the functor's action.
    /// `enterGeometry` is the derived functor's handler.
    void registerHandlers(Action::Functor const &enterGeometry);

    /// True if the box of the visited node certainly misses the frustum. Both are in the parent's
    /// space. False for a box that is not valid, which the action reports once.
    static bool outside_frustum(SelectionAction &action);
    /// The next hits are recorded at the visited node. False where the filter leaves them out.
    [[nodiscard]] bool record_here(SelectionAction const &action);
    /// Records what a search of the visited geometry has found. Points are transformed to the space
    /// of the root. The far hit is left out where its point equals that of the near hit.
    void record(SelectionAction const &action, SelectionSearch::Extremes const &extremes);
    /// Records that the visited geometry is hit, without a place.
    void recordWithoutPlace(SelectionAction const &action);

  private:
    // --- handlers; after Skip no leave handler is called, so pushes and pops match ---
    ResultE enterTransform(NodeCore *core, Action *action);
    ResultE leaveTransform(NodeCore *core, Action *action);
    ResultE enterAccumulateTransform(NodeCore *core, Action *action);
    ResultE leaveAccumulateTransform(NodeCore *core, Action *action);
    ResultE leaveGeometry(NodeCore *core, Action *action);
    ResultE enterMultiSwitch(NodeCore *core, Action *action);
    ResultE leaveMultiSwitch(NodeCore *core, Action *action);
    ResultE enterVisitSubTree(NodeCore *core, Action *action);
    ResultE leaveVisitSubTree(NodeCore *core, Action *action);
};
} // namespace OSG
