#include "OSGOSBStructure.h"

#include <algorithm>

#include "OSGNode.h"

namespace OSG
{
namespace
{
using ReadError = ExceptionBinaryDataHandler::ReadError;
} // namespace

OSBStructure::OSBStructure(OSBRootElement::ContainerList const &containers,
                           OSBRootElement::PointerFieldList const &pointers)
    : _pointersOf(containers.size() + 1)
    , _parents(containers.size() + 1, 0)
{
    UInt32 owner = 1;
    for(Pointers const &field : pointers)
    {
        // Pointer fields lie in the order of their containers.
        while(containers[owner - 1] != field.container)
            ++owner;
        _pointersOf[owner].push_back(&field);
        if(isChildField(field))
            takeChildren(owner, field);
    }
    checkCycles();
}

bool OSBStructure::isChildField(Pointers const &pointers)
{
    return pointers.field->getFieldId() == Node::ChildrenFieldId &&
           pointers.container->getType().isDerivedFrom(Node::getClassType());
}

void OSBStructure::takeChildren(UInt32 owner, Pointers const &pointers)
{
    for(UInt32 const child : pointers.targets)
    {
        if(child == 0)
            continue;
        if(_parents[child] != 0 || child == 1)
            throw ReadError("a node has two parents");
        _parents[child] = owner;
    }
}

void OSBStructure::checkCycles() const
{
    Numbers lastVisitor(_parents.size(), 0);
    for(UInt32 visitor = 1; visitor < _parents.size(); ++visitor)
    {
        UInt32 at = visitor;
        for(; at != 0 && lastVisitor[at] == 0; at = _parents[at])
            lastVisitor[at] = visitor;
        if(at != 0 && lastVisitor[at] == visitor)
            throw ReadError("a node is its own ancestor");
    }
}

// Each number looks up as far as the next one whose depth is known.
OSBStructure::Numbers OSBStructure::findDepths() const
{
    Numbers depths(_parents.size(), 0);
    Numbers path;
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

std::vector<UInt32> OSBStructure::getReachedFromBelow() const
{
    Numbers reached = {1};
    std::vector<bool> isReached(_pointersOf.size(), false);
    isReached[0] = isReached[1] = true;
    for(std::size_t i = 0; i < reached.size(); ++i)
    {
        for(Pointers const *pointers : _pointersOf[reached[i]])
        {
            if(pointers->field->getFieldType().getClass() != FieldClass::Pointer)
                continue;
            for(UInt32 const target : pointers->targets)
            {
                if(isReached[target])
                    continue;
                isReached[target] = true;
                reached.push_back(target);
            }
        }
    }
    Numbers const depths = findDepths();
    std::stable_sort(reached.begin(), reached.end(),
                     [&depths](UInt32 a, UInt32 b) { return depths[a] > depths[b]; });
    return reached;
}
} // namespace OSG
