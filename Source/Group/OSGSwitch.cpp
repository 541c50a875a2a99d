#include "OSGSwitch.h"

#include "OSGRenderHandlers.h"

namespace OSG
{
Switch::~Switch() = default;

namespace
{
void show_choice(NodeCore &core, RenderAction &action)
{
    Int32 const choice = static_cast<Switch &>(core).getChoice();
    if(choice != Switch::AllChildren)
        show_child(action, static_cast<UInt32>(choice));
}
} // namespace

void Switch::initMethod(TypeBase::InitPhase phase)
{
    SwitchBase::initMethod(phase);
    if(phase == TypeBase::SystemPost)
        register_render_choice(getClassType(), &show_choice, Action::HandlerPromise::Repeats);
}
} // namespace OSG
