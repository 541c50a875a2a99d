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
    using NumberList = OSBRootElement::NumberList;

    /// `containers` in the order of their numbers, from 1 on, null where one is not there;
    /// `targets` of the pointers all lead to one that is. Nothing is kept alive.
    OSBStructure(OSBRootElement::ContainerList const &containers,
                 OSBRootElement::PointerFieldList const &pointers, NumberList &targets);

    /// Sets to 0 what would close a circle of counted references among what the first container
    /// leads to: such a circle would never end. The other trees that cores show count for none:
    /// nodes may visit one another. The result is the number of pointers that were cut.
    UInt32 cutCircles();

    /// The numbers that counted pointers reach from the first one. A node comes before its parent,
    /// so that it has none yet when it takes its children: what looks for cycles along the
    /// ancestors then has nowhere to go.
    NumberList getReachedFromBelow() const;

  private:
    using Pointers = OSBRootElement::PointerField;
    class CircleSearch;

    static bool isChildField(Pointers const &pointers);
    static bool isCounted(Pointers const &pointers);
    static bool isVisit(Pointers const &pointers);
    void takeChildren(UInt32 owner, Pointers const &pointers);
    void checkCycles() const;
    NumberList findDepths() const;
    /// No node stands behind its parent.
    bool childrenComeFirst(NumberList const &numbers) const;

    OSBRootElement::PointerFieldList const &_pointers;
    NumberList &_targets;
    std::vector<std::size_t> _firstField; // by number; its fields end where those of the next begin
    NumberList _parents;                  // by number, 0 for none
};
} // namespace OSG
