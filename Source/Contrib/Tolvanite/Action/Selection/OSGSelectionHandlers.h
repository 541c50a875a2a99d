#pragma once

#include "OSGAction.h"
#include "OSGSelectionFunctor.h"

namespace OSG
{
/// The way of a frustum down the graph, as exact and quick selection share it: culling by boxes,
/// transforms, switches and shared subtrees. What happens at a geometry is left to the functors.
///
/// The handlers work on the action that calls them, so that they also serve copies of the functor's
/// action. A core type without a row in the table is passed through, all its children are walked.
class OSG_CONTRIBTOLVANITE_API SelectionHandlers : public SelectionFunctor
{
  protected:
    using SelectionFunctor::SelectionFunctor;
    SelectionHandlers();
    ~SelectionHandlers() override;

    using ResultE = ActionBase::ResultE;

    /// Registers enter and leave handler of each row on the functor's action; `enterGeometry` is
    /// the functor's own.
    void registerHandlers(Action::Functor const &enterGeometry);

    /// The box of the node that is visited certainly misses the frustum. Box and frustum are in the
    /// parent's space. A box that is not valid never misses.
    static bool outside_frustum(SelectionAction const &action);
    /// A hit at the node that is visited, without place, normal and primitive.
    HitT hit_here(SelectionAction const &action) const;

  private:
    // --- handlers; each pop answers a push, as no leave handler follows a skip ---
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
