#include "OSGIntersectSpaces.h"

#include "OSGIntersectAction.h"
#include "OSGNodeCore.h"

namespace OSG
{
namespace
{
IntersectAction &ray_of(Action *action) { return static_cast<IntersectAction &>(*action); }

ActionBase::ResultE enter_space(NodeCore *core, Action *action)
{
    if(ray_of(action).passesVolume())
        return ActionBase::Skip;
    Matrix local;
    core->accumulateMatrix(local);
    return ray_of(action).pushSpace(local) ? ActionBase::Continue : ActionBase::Skip;
}

ActionBase::ResultE leave_space(NodeCore *, Action *action)
{
    ray_of(action).popSpace();
    return ActionBase::Continue;
}
} // namespace

void register_intersect_space(FieldContainerType const &type)
{
    IntersectAction::registerEnterDefault(type, &enter_space, Action::HandlerPromise::GatedByBox);
    IntersectAction::registerLeaveDefault(type, &leave_space, Action::HandlerPromise::KeepsScene);
}
} // namespace OSG
