#include "OSGAction.h"

#include <algorithm>
#include <bit>

#include "OSGNodeWalker.h"

namespace OSG
{
Action::~Action() = default;

Action::Action(Action const &source)
    : ActionBase(source)
    , _travMask(source._travMask)
    , _enter(source._enter)
    , _leave(source._leave)
    , _roles(source._roles)
    , _rolesKnown(source._rolesKnown)
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

void Action::put(Functions &functions, FieldContainerType const &type, Functor const &function,
                 HandlerPromise promise, Functor const &filler)
{
    put_functor(functions.functors, type, function, filler);
    if(functions.promises.size() < functions.functors.size())
        functions.promises.resize(functions.functors.size(), HandlerPromise::Nothing);
    functions.promises[type.getId()] = promise;
    _rolesKnown = false;
    ++_functionsNumber;
}

void Action::registerEnterFunction(FieldContainerType const &type, Functor const &function,
                                   HandlerPromise promise)
{
    put(_enter, type, function, promise, &Action::_defaultEnterFunction);
}

void Action::registerLeaveFunction(FieldContainerType const &type, Functor const &function,
                                   HandlerPromise promise)
{
    put(_leave, type, function, promise, &Action::_defaultLeaveFunction);
}

void Action::takeEnterFunctions(FunctorStore const &functions, PromiseStore const &promises)
{
    _enter = {functions, promises};
    _rolesKnown = false;
    ++_functionsNumber;
}

void Action::takeLeaveFunctions(FunctorStore const &functions, PromiseStore const &promises)
{
    _leave = {functions, promises};
    _rolesKnown = false;
    ++_functionsNumber;
}

ActionBase::ResultE Action::_defaultEnterFunction(NodeCore *, Action *) { return Continue; }
ActionBase::ResultE Action::_defaultLeaveFunction(NodeCore *, Action *) { return Continue; }
Action::FunctorStore *Action::getDefaultEnterFunctors() { return nullptr; }
Action::FunctorStore *Action::getDefaultLeaveFunctors() { return nullptr; }

// --- roles of types ---

Action::HandlerPromise Action::Functions::promiseOf(std::size_t type) const
{
    return type < promises.size() ? promises[type] : HandlerPromise::Nothing;
}

bool Action::Functions::isDefault(std::size_t type, ResultE (*passing)(NodeCore *, Action *)) const
{
    return type >= functors.size() || functors[type] == passing;
}

// Null where a function may edit the scene, or where no node is gated.
WalkRoles const *Action::findRoles() const
{
    WalkRoles roles(std::max(_enter.functors.size(), _leave.functors.size()), WalkRole::Passes);
    bool anyGated = false;
    for(std::size_t type = 0; type < roles.size(); ++type)
    {
        bool const enters = !_enter.isDefault(type, &Action::_defaultEnterFunction);
        bool const leaves = !_leave.isDefault(type, &Action::_defaultLeaveFunction);
        if((enters && _enter.promiseOf(type) == HandlerPromise::Nothing) ||
           (leaves && _leave.promiseOf(type) == HandlerPromise::Nothing))
            return nullptr;
        bool const gated = enters && _enter.promiseOf(type) == HandlerPromise::GatedByBox;
        anyGated = anyGated || gated;
        if(enters || leaves)
            roles[type] = gated ? WalkRole::Gated : WalkRole::Other;
    }
    return anyGated ? shared_roles(roles) : nullptr;
}

void Action::findMissed(BoxLanes const *, std::size_t count, UInt8 *missed) const
{
    std::fill_n(missed, count, UInt8(0));
}

/// Gives the children of the current node that the walk may find something at. False where these
/// are all of them, or where nothing is known.
bool Action::takeUnmissed(std::vector<Node *> &nodes) const
{
    constexpr std::size_t AtOnce = 32;
    Node *const node = _actNode;
    ChildIndex const *const index = ChildIndex::find(node, _roles);
    if(index == nullptr)
        return false;
    auto const &boxes = index->getBoxes();
    UInt8 missed[AtOnce];
    for(std::size_t first = 0; first < boxes.size(); first += AtOnce)
    {
        std::size_t const count = std::min(AtOnce, boxes.size() - first);
        findMissed(&boxes[first], count, missed);
        for(std::size_t i = 0; i < count; ++i)
        {
            UInt32 const begin = static_cast<UInt32>((first + i) * BoxLanes::Lanes);
            UInt32 const last = std::min(begin + BoxLanes::Lanes, index->getNChildren());
            for(UInt32 left = ~missed[i] & ((2u << (last - begin - 1)) - 1); left != 0;
                left &= left - 1)
                nodes.push_back(
                    node->getChild(begin + static_cast<UInt32>(std::countr_zero(left))));
        }
    }
    if(nodes.size() != index->getNChildren())
        return true;
    nodes.clear();
    return false;
}

// --- walking ---

bool Action::Visitor::enter(Node *node)
{
    if((node->getTravMask() & action._travMask) == 0)
        return false;
    action._newList.clear();
    action._useNewList = false;
    return action.call(action._enter, node) == Continue;
}

bool Action::Visitor::takeAdded(std::vector<Node *> &nodes)
{
    if(!action._useNewList)
        return action._roles != nullptr &&
               action._actNode->getNChildren() >= ChildIndex::MinChildren &&
               action.takeUnmissed(nodes);
    nodes.swap(action._newList);
    action._useNewList = false;
    return true;
}

ActionBase::ResultE Action::call(Functions const &functions, Node *node)
{
    _actNode = node;
    NodeCore *const core = node->getCore();
    if(core == nullptr)
        return Continue;
    UInt32 const type = core->getType().getId();
    FunctorStore const &functors = functions.functors;
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
        if(!_rolesKnown)
            _roles = findRoles();
        _rolesKnown = true;
        Visitor visitor{*this};
        NodeWalker walker;
        for(auto root = begin; root != end; ++root)
            walker.walk(*root, visitor);
    }
    catch(...)
    {
        endWalk();
        cancel();
        throw;
    }
}

void Action::endWalk()
{
    _actNode = nullptr;
    _newList.clear();
    _useNewList = false;
}

bool Action::repeats(FieldContainerType const &type) const
{
    UInt32 const id = type.getId();
    return (_enter.isDefault(id, &Action::_defaultEnterFunction) ||
            _enter.promiseOf(id) == HandlerPromise::Repeats) &&
           (_leave.isDefault(id, &Action::_defaultLeaveFunction) ||
            _leave.promiseOf(id) == HandlerPromise::Repeats);
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
