#include "OSGOSBStructure.h"

#include <algorithm>

#include "OSGNode.h"
#include "OSGNodeCore.h"

namespace OSG
{
namespace
{
using ReadError = ExceptionBinaryDataHandler::ReadError;
} // namespace

OSBStructure::OSBStructure(OSBRootElement::ContainerList const &containers,
                           OSBRootElement::PointerFieldList const &pointers, NumberList &targets)
    : _pointers(pointers)
    , _targets(targets)
    , _firstField(containers.size() + 2, 0)
    , _parents(containers.size() + 1, 0)
{
    // The pointer fields are in the order of their containers.
    std::size_t field = 0;
    for(UInt32 owner = 1; owner <= containers.size(); ++owner)
    {
        _firstField[owner] = field;
        for(; field < pointers.size() && pointers[field].container == containers[owner - 1];
            ++field)
        {
            if(isChildField(pointers[field]))
                takeChildren(owner, pointers[field]);
        }
    }
    _firstField[containers.size() + 1] = field;
    checkCycles();
}

bool OSBStructure::isChildField(Pointers const &pointers)
{
    return pointers.field->getPointers()->isChildField &&
           pointers.field == Node::getClassType().getFieldDesc(Node::ChildrenFieldId);
}

bool OSBStructure::isCounted(Pointers const &pointers)
{
    return pointers.field->getFieldType().getClass() == FieldClass::Pointer;
}

// Whether the field makes a core show another tree.
bool OSBStructure::isVisit(Pointers const &pointers)
{
    auto const &type =
        static_cast<PointerType const &>(pointers.field->getFieldType().getContentType());
    return !pointers.field->getPointers()->isChildField &&
           type.getPointedTo() == Node::getClassType() &&
           pointers.container->getType().isDerivedFrom(NodeCore::getClassType());
}

void OSBStructure::takeChildren(UInt32 owner, Pointers const &pointers)
{
    for(std::size_t at = pointers.begin; at < pointers.end; ++at)
    {
        UInt32 const child = _targets[at];
        if(child == 0)
            continue;
        if(_parents[child] != 0 || child == 1)
            throw ReadError("a node has two parents");
        _parents[child] = owner;
    }
}

void OSBStructure::checkCycles() const
{
    NumberList lastVisitor(_parents.size(), 0);
    for(UInt32 visitor = 1; visitor < _parents.size(); ++visitor)
    {
        UInt32 at = visitor;
        for(; at != 0 && lastVisitor[at] == 0; at = _parents[at])
            lastVisitor[at] = visitor;
        if(at != 0 && lastVisitor[at] == visitor)
            throw ReadError("a node is its own ancestor");
    }
}

// --- circles ---

/// Depth-first search with its own stack. A pointer to a container that is still open closes a
/// circle (a back edge) and is cut. The tree that a core shows is searched separately, when no
/// container is open, because such a pointer may close a circle. Fields are taken in reverse, so
/// the children of a node come first and a tree is entered at its root where possible.
class OSBStructure::CircleSearch
{
  public:
    explicit CircleSearch(OSBStructure const &structure)
        : _structure(structure)
        , _states(structure._parents.size(), State::New)
    {
        _starts.push_back(1);
    }

    UInt32 cut()
    {
        for(std::size_t i = 0; i < _starts.size(); ++i)
        {
            if(_states[_starts[i]] == State::New)
                open(_starts[i]);
            while(!_path.empty())
                step();
        }
        return _numCut;
    }

  private:
    enum class State : UInt8
    {
        New,
        Open,
        Done
    };
    struct Step
    {
        UInt32 number;
        std::size_t fieldsLeft; // the fields before this one are still to be searched
        std::size_t at;         // the next target of the field at that place
    };

    void open(UInt32 number)
    {
        _states[number] = State::Open;
        _path.push_back({number, _structure._firstField[number + 1], 0});
        enterField(_path.back());
    }

    void enterField(Step &step) const
    {
        if(step.fieldsLeft > _structure._firstField[step.number])
            step.at = _structure._pointers[step.fieldsLeft - 1].begin;
    }

    void step()
    {
        Step &top = _path.back();
        if(top.fieldsLeft == _structure._firstField[top.number])
        {
            _states[top.number] = State::Done;
            _path.pop_back();
            return;
        }
        Pointers const &field = _structure._pointers[top.fieldsLeft - 1];
        if(top.at == field.end || !isCounted(field))
        {
            --top.fieldsLeft;
            enterField(top);
            return;
        }
        follow(field, _structure._targets[top.at++]);
    }

    void follow(Pointers const &field, UInt32 &target)
    {
        if(target == 0)
            return;
        if(isVisit(field))
            _starts.push_back(target);
        else if(_states[target] == State::New)
            open(target);
        else if(_states[target] == State::Open)
        {
            target = 0;
            ++_numCut;
        }
    }

    OSBStructure const &_structure;
    std::vector<State, MemAllocator<State>> _states; // by container number
    std::vector<Step, MemAllocator<Step>> _path;
    NumberList _starts;
    UInt32 _numCut = 0;
};

UInt32 OSBStructure::cutCircles() { return CircleSearch(*this).cut(); }

// --- order ---

// The depth of each node below its root. Each path upwards ends at the first node whose depth is
// known, so that the time is linear.
OSBStructure::NumberList OSBStructure::findDepths() const
{
    NumberList depths(_parents.size(), 0);
    NumberList path;
    for(UInt32 number = 1; number < _parents.size(); ++number)
    {
        UInt32 at = number;
        for(; _parents[at] != 0 && depths[at] == 0; at = _parents[at])
            path.push_back(at);
        for(UInt32 depth = depths[at]; !path.empty(); path.pop_back())
            depths[path.back()] = ++depth;
    }
    return depths;
}

OSBStructure::NumberList OSBStructure::getReachedFromBelow() const
{
    NumberList reached = {1};
    std::vector<bool> isReached(_parents.size(), false);
    isReached[0] = isReached[1] = true;
    for(std::size_t i = 0; i < reached.size(); ++i)
    {
        UInt32 const number = reached[i];
        for(std::size_t field = _firstField[number]; field < _firstField[number + 1]; ++field)
        {
            if(!isCounted(_pointers[field]))
                continue;
            for(std::size_t at = _pointers[field].begin; at < _pointers[field].end; ++at)
            {
                UInt32 const target = _targets[at];
                if(isReached[target])
                    continue;
                isReached[target] = true;
                reached.push_back(target);
            }
        }
    }
    // The library writes parents before their children, so the reversed list of its files is in
    // order already. Other files are sorted by depth.
    std::reverse(reached.begin(), reached.end());
    if(!childrenComeFirst(reached))
    {
        NumberList const depths = findDepths();
        std::stable_sort(reached.begin(), reached.end(),
                         [&depths](UInt32 a, UInt32 b) { return depths[a] > depths[b]; });
    }
    return reached;
}

bool OSBStructure::childrenComeFirst(NumberList const &numbers) const
{
    std::vector<bool> isPassed(_parents.size(), false);
    for(UInt32 const number : numbers)
    {
        if(isPassed[_parents[number]])
            return false;
        isPassed[number] = true;
    }
    return true;
}
} // namespace OSG
