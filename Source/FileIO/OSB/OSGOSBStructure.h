#pragma once

#include <vector>

#include "OSGOSBRootElement.h"

namespace OSG
{
/// How the containers of a file hang together, by their numbers, before anything is linked.
///
/// Raises ReadError where the nodes are not one tree: a node with two parents, a parent of the
/// first container, a node that is its own ancestor. Time and memory go with the pointers of the
/// file.
class OSBStructure
{
  public:
    /// `containers` in the order of their numbers, from 1 on; all pointers lead to one of them.
    OSBStructure(OSBRootElement::ContainerList const &containers,
                 OSBRootElement::PointerFieldList const &pointers);

    /// The numbers that counted pointers reach from the first one. A node comes before its parent,
    /// so that it has none yet when it takes its children: what looks for cycles along the
    /// ancestors then has nowhere to go.
    std::vector<UInt32> getReachedFromBelow() const;

  private:
    using Numbers = std::vector<UInt32>;
    using Pointers = OSBRootElement::PointerField;

    static bool isChildField(Pointers const &pointers);
    void takeChildren(UInt32 owner, Pointers const &pointers);
    void checkCycles() const;
    Numbers findDepths() const;

    std::vector<std::vector<Pointers const *>> _pointersOf; // by number
    Numbers _parents;                                       // by number, 0 for none
};
} // namespace OSG
