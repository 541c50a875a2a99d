#include "OSGSelectionHandlers.h"

#include <boost/bind/bind.hpp>

#include "OSGBillboard.h"
#include "OSGComponentTransform.h"
#include "OSGConstSizeTransform.h"
#include "OSGConstantSizeTransform.h"
#include "OSGGeometry.h"
#include "OSGInverseTransform.h"
#include "OSGMoveManipulator.h"
#include "OSGMultiSwitch.h"
#include "OSGNode.h"
#include "OSGRotateManipulator.h"
#include "OSGScaleManipulator.h"
#include "OSGSelectionAction.h"
#include "OSGSelectionSearch.h"
#include "OSGVisitSubTree.h"

namespace OSG
{
namespace
{
SelectionAction &selection(Action *action) { return static_cast<SelectionAction &>(*action); }

/// Enters the space that `local` maps to the parent's space. Where `local` has no inverse, the
/// frustum is not changed.
void push_local_space(SelectionAction &action, Matrix const &local)
{
    Matrix inverse;
    inverse.invertFrom(local);
    Frustum frustum(action.topFrustum());
    frustum.multFull(inverse);
    Matrix toRoot(action.topMatrix());
    action.getActNode()->getCore()->accumulateMatrix(toRoot);
    action.pushMatrix(toRoot);
    action.pushFrustum(frustum);
    action.pushNode(action.getActNode());
}

ActionBase::ResultE pop_local_space(SelectionAction &action)
{
    action.popMatrix();
    action.popFrustum();
    action.popNode();
    return ActionBase::Continue;
}

// Points whose coordinates differ by no more than this are the same place.
constexpr Real32 SamePlaceEpsilon = 1e-6f;

SelectionRecords::Record record_of(SelectionAction const &action,
                                   SelectionSearch::Extreme const &extreme)
{
    Pnt3f point;
    action.topMatrix().multFull(extreme.point, point);
    return {extreme.distance, extreme.index, 0, extreme.hasPoint, point, extreme.normal};
}

/// Adds the children that the choices name to the walk. The position in the choices advances only
/// on a match. A choice that is out of order or beyond the children therefore hides all choices
/// after it.
void add_choices(Action &action, MField<UInt32> const &choices)
{
    auto choice = choices.begin();
    UInt32 const count = action.getNNodes();
    for(UInt32 i = 0; i < count && choice != choices.end(); ++i)
    {
        if(i != *choice)
            continue;
        action.addNode(action.getNode(i));
        ++choice;
    }
}
} // namespace

SelectionHandlers::SelectionHandlers() = default;
SelectionHandlers::~SelectionHandlers() = default;

void SelectionHandlers::registerHandlers(Action::Functor const &enterGeometry)
{
    using Self = SelectionHandlers;
    using HandlerPromise = Action::HandlerPromise;
    using Handler = ResultE (Self::*)(NodeCore *, Action *);
    struct Row
    {
        FieldContainerType const &type;
        Action::Functor enter;
        Action::Functor leave;
        HandlerPromise promise; // of enter
    };
    constexpr HandlerPromise Gated = HandlerPromise::GatedByBox;
    auto const own = [this](Handler handler) -> Action::Functor
    {
        using namespace boost::placeholders;
        return boost::bind(handler, this, _1, _2);
    };
    Action::Functor const enter = own(&Self::enterTransform);
    Action::Functor const leave = own(&Self::leaveTransform);
    Action::Functor const enterAccumulate = own(&Self::enterAccumulateTransform);
    Action::Functor const leaveAccumulate = own(&Self::leaveAccumulateTransform);
    Row const rows[] = {
        {Transform::getClassType(), enter, leave, Gated},
        {ComponentTransform::getClassType(), enter, leave, Gated},
        {MoveManipulator::getClassType(), enter, leave, Gated},
        {RotateManipulator::getClassType(), enter, leave, Gated},
        {ScaleManipulator::getClassType(), enter, leave, Gated},
        {InverseTransform::getClassType(), enterAccumulate, leaveAccumulate, Gated},
        {Billboard::getClassType(), enterAccumulate, leaveAccumulate, Gated},
        {ConstSizeTransform::getClassType(), enterAccumulate, leaveAccumulate, Gated},
        {ConstantSizeTransform::getClassType(), enterAccumulate, leaveAccumulate, Gated},
        {Geometry::getClassType(), enterGeometry, own(&Self::leaveGeometry), Gated},
        {MultiSwitch::getClassType(), own(&Self::enterMultiSwitch), own(&Self::leaveMultiSwitch),
         HandlerPromise::KeepsScene},
        {VisitSubTree::getClassType(), own(&Self::enterVisitSubTree), own(&Self::leaveVisitSubTree),
         Gated},
    };
    for(Row const &row : rows)
    {
        getAction()->registerEnterFunction(row.type, row.enter, row.promise);
        getAction()->registerLeaveFunction(row.type, row.leave, HandlerPromise::KeepsScene);
    }
}

bool SelectionHandlers::outside_frustum(SelectionAction &action)
{
    BoxVolume const &volume = action.getActNode()->getVolume();
    if(volume.isValid())
        return !volume.intersectFrustum(action.frustumVolume());
    action.reportInvalidBox();
    return false;
}

bool SelectionHandlers::record_here(SelectionAction const &action)
{
    if(!passesFilter(action))
        return false;
    records().addVisit(action.getActNode(), getSelectionType(), action.topMatrix(),
                       action.getVisitSubTreeNodes());
    return true;
}

void SelectionHandlers::record(SelectionAction const &action,
                               SelectionSearch::Extremes const &extremes)
{
    bool const hasNear = extremes.near.index > -1;
    bool const hasFar = extremes.far.index > -1 &&
                        !extremes.near.point.equals(extremes.far.point, SamePlaceEpsilon);
    if((!hasNear && !hasFar) || !record_here(action))
        return;
    if(hasNear)
        records().addFirst(record_of(action, extremes.near));
    if(hasFar)
        records().addLast(record_of(action, extremes.far));
}

void SelectionHandlers::recordWithoutPlace(SelectionAction const &action)
{
    if(record_here(action))
        records().addFirst({0.f, -1, 0, false, Pnt3f(), Vec3f()});
}

// --- transforms ---

ActionBase::ResultE SelectionHandlers::enterTransform(NodeCore *core, Action *action)
{
    if(outside_frustum(selection(action)))
        return ActionBase::Skip;
    push_local_space(selection(action), static_cast<Transform *>(core)->getMatrix());
    return ActionBase::Continue;
}

ActionBase::ResultE SelectionHandlers::leaveTransform(NodeCore *, Action *action)
{
    return pop_local_space(selection(action));
}

ActionBase::ResultE SelectionHandlers::enterAccumulateTransform(NodeCore *core, Action *action)
{
    if(outside_frustum(selection(action)))
        return ActionBase::Skip;
    Matrix local;
    core->accumulateMatrix(local);
    push_local_space(selection(action), local);
    return ActionBase::Continue;
}

ActionBase::ResultE SelectionHandlers::leaveAccumulateTransform(NodeCore *, Action *action)
{
    return pop_local_space(selection(action));
}

// --- geometry ---

ActionBase::ResultE SelectionHandlers::leaveGeometry(NodeCore *, Action *)
{
    return ActionBase::Continue;
}

// --- switches and shared subtrees ---

ActionBase::ResultE SelectionHandlers::enterMultiSwitch(NodeCore *core, Action *action)
{
    auto const *const multiSwitch = dynamic_cast<MultiSwitch const *>(core);
    if(multiSwitch == nullptr)
        return ActionBase::Continue;
    if(multiSwitch->getSwitchMode() == MultiSwitch::ShowNone)
        return ActionBase::Skip;
    if(multiSwitch->getSwitchMode() != MultiSwitch::ShowChoices)
        return ActionBase::Continue;
    if(multiSwitch->getChoices().empty())
        return getContinueOnEmptyMultiSwitchChoices() ? ActionBase::Continue : ActionBase::Skip;
    add_choices(*action, multiSwitch->getChoices());
    return ActionBase::Continue;
}

ActionBase::ResultE SelectionHandlers::leaveMultiSwitch(NodeCore *, Action *)
{
    return ActionBase::Continue;
}

ActionBase::ResultE SelectionHandlers::enterVisitSubTree(NodeCore *core, Action *action)
{
    if(outside_frustum(selection(action)))
        return ActionBase::Skip;
    action->addNode(static_cast<VisitSubTree *>(core)->getSubTreeRoot());
    selection(action).pushVisitSubTreeNode(action->getActNode());
    return ActionBase::Continue;
}

ActionBase::ResultE SelectionHandlers::leaveVisitSubTree(NodeCore *, Action *action)
{
    selection(action).popVisitSubTreeNode();
    return ActionBase::Continue;
}
} // namespace OSG
