#include "OSGRenderHandlers.h"

#include "OSGNodeCore.h"

namespace OSG
{
namespace
{
RenderAction &render_action(Action *action) { return static_cast<RenderAction &>(*action); }

void enter_space(NodeCore &core, RenderAction &action)
{
    Matrix local;
    core.accumulateMatrix(local);
    action.pushSpace(local);
}
} // namespace

void register_render_scope(FieldContainerType const &type, RenderHandler enter,
                           Action::HandlerPromise promise)
{
    register_render_choice(type, enter, promise);
    RenderAction::registerLeaveDefault(
        type,
        [](NodeCore *, Action *action)
        {
            render_action(action).pop();
            return ActionBase::Continue;
        },
        promise);
}

void register_render_choice(FieldContainerType const &type, RenderHandler choose,
                            Action::HandlerPromise promise)
{
    RenderAction::registerEnterDefault(
        type,
        [choose](NodeCore *core, Action *action)
        {
            choose(*core, render_action(action));
            return ActionBase::Continue;
        },
        promise);
}

void register_render_space(FieldContainerType const &type)
{
    register_render_scope(type, &enter_space, Action::HandlerPromise::Repeats);
}

void show_child(RenderAction &action, UInt32 index)
{
    action.addNode(action.getNode(index)); // null shows none
}
} // namespace OSG
