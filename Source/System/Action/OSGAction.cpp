#include "OSGAction.h"

#include "OSGNodeWalker.h"

namespace OSG
{
Action::~Action() = default;

Action::Action(Action const &source)
    : ActionBase(source)
    , _enterFunctors(source._enterFunctors)
    , _leaveFunctors(source._leaveFunctors)
    , _travMask(source._travMask)
    , _usePrimitiveIndex(source._usePrimitiveIndex)
{
}

// --- functions ---

void put_functor(Action::FunctorStore &store, FieldContainerType const &type,
                 Action::Functor const &function, Action::Functor const &filler)
{
    while(type.getId() >= store.size())
        store.push_back(filler);
    store[type.getId()] = function;
}

void Action::registerEnterFunction(FieldContainerType const &type, Functor const &function)
{
    put_functor(_enterFunctors, type, function, &Action::_defaultEnterFunction);
}

void Action::registerLeaveFunction(FieldContainerType const &type, Functor const &function)
{
    put_functor(_leaveFunctors, type, function, &Action::_defaultLeaveFunction);
}

ActionBase::ResultE Action::_defaultEnterFunction(NodeCore *, Action *) { return Continue; }
ActionBase::ResultE Action::_defaultLeaveFunction(NodeCore *, Action *) { return Continue; }
Action::FunctorStore *Action::getDefaultEnterFunctors() { return nullptr; }
Action::FunctorStore *Action::getDefaultLeaveFunctors() { return nullptr; }

// --- walking ---

struct Action::Visitor
{
    Action &action;

    bool enter(Node *node)
    {
        if((node->getTravMask() & action._travMask) == 0)
            return false;
        action._newList.clear();
        action._useNewList = false;
        return action.call(action._enterFunctors, node) == Continue;
    }

    bool takeAdded(std::vector<Node *> &nodes)
    {
        if(!action._useNewList)
            return false;
        nodes.swap(action._newList);
        action._useNewList = false;
        return true;
    }

    void leave(Node *node) { action.call(action._leaveFunctors, node); }
};

ActionBase::ResultE Action::call(FunctorStore const &functors, Node *node)
{
    _actNode = node;
    NodeCore *const core = node->getCore();
    if(core == nullptr)
        return Continue;
    UInt32 const type = core->getType().getId();
    return type < functors.size() ? functors[type](core, this) : Continue;
}

ActionBase::ResultE Action::apply(Node *node)
{
    std::vector<Node *> roots{node};
    return Action::apply(roots.begin(), roots.end());
}

ActionBase::ResultE Action::apply(std::vector<Node *>::iterator begin,
                                  std::vector<Node *>::iterator end)
{
    _indexedGeometries = 0;
    ResultE const started = start();
    if(started == Continue)
        walk(begin, end);
    _actNode = nullptr;
    return stop(started);
}

void Action::walk(std::vector<Node *>::iterator begin, std::vector<Node *>::iterator end)
{
    try
    {
        Visitor visitor{*this};
        NodeWalker walker;
        for(auto root = begin; root != end; ++root)
            walker.walk(*root, visitor);
    }
    catch(...)
    {
        _actNode = nullptr;
        _newList.clear();
        _useNewList = false;
        cancel();
        throw;
    }
}

ActionBase::ResultE Action::start() { return Continue; }
ActionBase::ResultE Action::stop(ResultE result) { return result; }
void Action::cancel() {}

Node *Action::getNode(UInt32 index) const
{
    return _actNode != nullptr && index < _actNode->getNChildren() ? _actNode->getChild(index)
                                                                   : nullptr;
}

UInt32 Action::getNNodes() const { return _actNode != nullptr ? _actNode->getNChildren() : 0; }

void Action::addNode(Node *node)
{
    _newList.push_back(node);
    _useNewList = true;
}
} // namespace OSG
