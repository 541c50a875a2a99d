#include "OSGChosenChildren.h"

#include "OSGGroup.h"
#include "OSGGroupingStage.h"
#include "OSGMakeNode.h"
#include "OSGMultiSwitch.h"
#include "OSGSwitch.h"

namespace OSG
{
namespace
{
/// Makes the new node as the last child of the switch's node and moves children into it.
class ChosenGroup
{
  public:
    explicit ChosenGroup(Node &node)
        : _node(node)
    {
        UnrecordedRefPtr<Node> const made(make_node(UnrecordedRefPtr<Group>(Group::create())));
        node.addChild(made);
        _group = made;
    }

    /// Number of children that have not been taken. Without the new node itself.
    UInt32 getNLeft() const { return _node.getNChildren() - 1; }

    void take(UInt32 index)
    {
        if(index < getNLeft())
            _group->addChild(_node.getChild(index));
    }

    void takeUnlessStage(UInt32 index)
    {
        if(index >= getNLeft())
            return;
        if(dynamic_cast<GroupingStage *>(_node.getChild(index)->getCore()) != nullptr)
            _node.subChild(index);
        else
            _group->addChild(_node.getChild(index));
    }

    Node *finish()
    {
        if(_group->getNChildren() != 0)
            return _group;
        _node.subChild(_group);
        return nullptr;
    }

  private:
    Node &_node;
    Node *_group = nullptr;
};
} // namespace

Node *take_chosen(Node &node, Switch const &core)
{
    ChosenGroup chosen(node);
    Int32 const choice = core.getChoice();
    if(choice == Switch::AllChildren)
    {
        // From the last child, so that taking a child moves no other.
        while(chosen.getNLeft() != 0)
            chosen.take(chosen.getNLeft() - 1);
    }
    else if(choice != Switch::NoChild)
        chosen.take(static_cast<UInt32>(choice));
    return chosen.finish();
}

Node *take_chosen(Node &node, MultiSwitch const &core)
{
    ChosenGroup chosen(node);
    if(core.getSwitchMode() == MultiSwitch::ShowAll)
    {
        while(chosen.getNLeft() != 0)
            chosen.takeUnlessStage(chosen.getNLeft() - 1);
    }
    else if(core.getSwitchMode() == MultiSwitch::ShowChoices)
    {
        auto const &choices = *core.getMFChoices();
        for(std::size_t i = choices.size(); i > 0; --i)
            chosen.takeUnlessStage(choices[i - 1]);
    }
    return chosen.finish();
}
} // namespace OSG
