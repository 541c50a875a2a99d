#pragma once

/// \file
/// Operations that rewrite a subtree, addressed by name.
///
/// An operation of a host's own derives from GraphOp and has
///
///   clone         a fresh operation, as its `create` makes it
///   setParams     reads a GraphOpParamSet and warns about the words that it does not know
///   usage         a text for people
///   traverseEnter before the children of a node: Skip passes over what is below it
///   traverseLeave after them: the place to edit the node's children, which are done by then
///
/// It becomes known by GraphOpFactoryBase::registerOp with a prototype; a StaticInitFuncWrapper
/// does that when the system starts.
///
/// `traverse` walks the children that a node has at the moment, without recursion: chains of any
/// depth are good. A function may take away, add and reorder the children of the node that it was
/// called with from traverseLeave, and give nodes below it other parents. It leaves the nodes above
/// that one alone: they are being walked, and they are not counted meanwhile. The tree that a
/// VisitSubTree shows is not walked.

#include <string>

#include "OSGActionBase.h"
#include "OSGGraphOpParamSet.h"
#include "OSGNodeSet.h"
#include "OSGRefCountPtr.h"

namespace OSG
{
/// Edits happen in place, on the thread and aspect of the caller, who commits the changes.
class OSG_UTIL_API GraphOp : public MemoryObject
{
  public:
    using ResultE = ActionBase::ResultE;
    using ParamSet = GraphOpParamSet;

    // --- virtual operations, in slot order ---
    /// A fresh operation of the class: neither parameters nor lists are copied.
    virtual TransitPtr<GraphOp> clone() = 0;
    /// Sets what `params` names, see GraphOpParamSet. Words that the operation does not know give
    /// one warning; the others count.
    virtual void setParams(std::string params) = 0;
    /// What the operation does and which parameters it has.
    virtual std::string usage() = 0;
    /// Runs the operation over `root` and what is below it. False where it did not go through; what
    /// was edited by then stays. GraphOp's own walk goes through always, unless `root` is null.
    virtual bool traverse(Node *root);
    /// Called before the children of a node; Skip walks neither the children nor calls
    /// traverseLeave. Continue unless a class says otherwise.
    virtual ResultE traverseEnter(Node *node);
    /// Called after the children with what traverseEnter has returned. What it returns has no
    /// effect on the walk.
    virtual ResultE traverseLeave(Node *node, ResultE result);

    std::string const &getName() const { return _name; }

    // --- nodes that the caller wants to be left alone; they have to outlive their use here ---
    /// What the lists mean is up to each operation.
    void addToExcludeList(Node *node) { _excludeList.add(node); }
    void addToPreserveList(Node *node) { _preserveList.add(node); }
    bool isInExcludeList(Node const *node) const { return _excludeList.contains(node); }
    bool isInPreserveList(Node const *node) const { return _preserveList.contains(node); }
    NodeSet const &getExcludeList() const { return _excludeList; }
    NodeSet const &getPreserveList() const { return _preserveList; }

  protected:
    explicit GraphOp(char const *name);
    /// Copies name and lists.
    GraphOp(GraphOp const &source);
    ~GraphOp() override;

    /// The node that `traverse` was called with, while it walks; null otherwise. An operation that
    /// knows that the node above will be handled too may leave work to it.
    Node const *getWalkedRoot() const { return _walkedRoot; }

    /// Warns that the operation does not have the parameters that are left in `params`, if any are:
    /// "CLASS doesn't have parameters 'WORDS'" and `ending`.
    static void warnUnused(ParamSet const &params, char const *classname,
                           char const *ending = ".\n");

    NodeSet _excludeList;
    NodeSet _preserveList;

  private:
    std::string _name;
    Node const *_walkedRoot = nullptr;
};
} // namespace OSG
