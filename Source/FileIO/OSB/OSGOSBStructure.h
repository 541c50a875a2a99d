#pragma once

#include <vector>

#include "OSGOSBRootElement.h"

namespace OSG
{
/// Checks how the containers of a file point to one another, by number, before they are linked.
///
/// Raises ReadError where the nodes are not one tree: a node has two parents, the first container
/// has a parent, or a node is its own ancestor. Time and memory are linear in the number of
/// pointers of the file.
class OSBStructure
{
  public:
    using NumberList = OSBRootElement::NumberList;

    /// `containers` are in the order of their numbers, which begin at 1. An entry is null where the
    /// container could not be made. Each of `targets` is 0 or the number of an entry that is not
    /// null. References to the arguments are kept.
    OSBStructure(OSBRootElement::ContainerList const &containers,
                 OSBRootElement::PointerFieldList const &pointers, NumberList &targets);

    /// Sets to 0 the pointers that would close a circle of counted references, which would never be
    /// freed. Only containers that can be reached from the first one are searched. A pointer by
    /// which a core shows another tree is left alone, since nodes may visit one another. Returns
    /// the number of pointers that were cut.
    UInt32 cutCircles();

    /// The numbers that can be reached from the first one by counted pointers, each node before its
    /// parent. In this order a node has no parent yet when it receives its children, so the search
    /// for cycles among its ancestors ends at once.
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
    /// True where no node comes after its parent.
    bool childrenComeFirst(NumberList const &numbers) const;

    OSBRootElement::PointerFieldList const &_pointers;
    NumberList &_targets;
    std::vector<std::size_t>
        _firstField;     // by container number; the fields end at those of the next
    NumberList _parents; // by container number, 0 for none
};
} // namespace OSG
