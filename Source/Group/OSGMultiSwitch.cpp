#include "OSGMultiSwitch.h"

#include "OSGRenderHandlers.h"

namespace OSG
{
MultiSwitch::~MultiSwitch() = default;

namespace
{
void show_choices(NodeCore &core, RenderAction &action)
{
    MultiSwitch const &choices = static_cast<MultiSwitch &>(core);
    if(choices.getSwitchMode() != MultiSwitch::ShowChoices &&
       choices.getSwitchMode() != MultiSwitch::ShowNone)
        return;
    action.addNode(nullptr);
    if(choices.getSwitchMode() == MultiSwitch::ShowNone)
        return;
    // A child is shown once, in the order of the children, however often it is named.
    std::vector<bool> isChosen(action.getNNodes(), false);
    for(UInt32 choice : *choices.getMFChoices())
    {
        if(choice < isChosen.size())
            isChosen[choice] = true;
    }
    for(UInt32 child = 0; child < isChosen.size(); ++child)
    {
        if(isChosen[child])
            show_child(action, child);
    }
}
} // namespace

void MultiSwitch::initMethod(TypeBase::InitPhase phase)
{
    MultiSwitchBase::initMethod(phase);
    if(phase == TypeBase::SystemPost)
        register_render_choice(getClassType(), &show_choices, Action::HandlerPromise::Repeats);
}
} // namespace OSG
