#pragma once

/// \file
/// Operations that rewrite a subtree, addressed by name.
///
/// A host's own operation derives from GraphOp and overrides
///
///   clone         a fresh operation, as its `create` makes it
///   setParams     reads a GraphOpParamSet and warns about the words that it does not know
///   usage         a text for people
///   traverseEnter called before the children of a node; Skip leaves out what is below it
///   traverseLeave called after the children; here the node's child list may be edited
///
/// The host registers a prototype by GraphOpFactoryBase::registerOp, from a StaticInitFuncWrapper,
/// which runs when the system starts.
///
/// `traverse` walks without recursion, so the tree may have any depth. It reads the child lists
/// while it walks. traverseLeave may remove, add and reorder the children of the node that it was
/// called with, and may give nodes below it other parents. It must not edit the nodes above: they
/// are being walked, and the walk holds no references to them. The tree that a VisitSubTree shows
/// is not walked.

#include <string>

#include "OSGActionBase.h"
#include "OSGGraphOpParamSet.h"
#include "OSGNodeSet.h"
#include "OSGRefCountPtr.h"

namespace OSG
{
/// An operation edits in place, in the aspect of the calling thread. The caller commits the
/// changes.
class OSG_UTIL_API GraphOp : public MemoryObject
{
  public:
    using ResultE = ActionBase::ResultE;
    using ParamSet = GraphOpParamSet;

    // --- virtual operations, in slot order ---
    /// A new operation of the same class. Parameters and lists are not copied.
    virtual TransitPtr<GraphOp> clone() = 0;
    /// Sets the parameters that `params` names, see GraphOpParamSet. Words that the operation does
    /// not know are named in one warning; the other words are used.
    virtual void setParams(std::string params) = 0;
    /// A text for people: what the operation does, and its parameters.
    virtual std::string usage() = 0;
    /// Runs the operation on `root` and everything below it. False where it was not completed;
    /// earlier edits remain. The walk of GraphOp itself fails only for a null `root`.
    virtual bool traverse(Node *root);
    /// Called before the children of a node. On Skip the children are not walked and traverseLeave
    /// is not called. GraphOp returns Continue.
    virtual ResultE traverseEnter(Node *node);
    /// Called after the children, with the result of traverseEnter. The result does not affect the
    /// walk.
    virtual ResultE traverseLeave(Node *node, ResultE result);

    std::string const &getName() const { return _name; }

    // --- nodes that the operation shall spare; not counted, they must outlive their use here ---
    /// Each operation documents what its lists mean.
    void addToExcludeList(Node *node) { _excludeList.add(node); }
    void addToPreserveList(Node *node) { _preserveList.add(node); }
    bool isInExcludeList(Node const *node) const { return _excludeList.contains(node); }
    bool isInPreserveList(Node const *node) const { return _preserveList.contains(node); }
    NodeSet const &getExcludeList() const { return _excludeList; }
    NodeSet const &getPreserveList() const { return _preserveList; }

  protected:
    explicit GraphOp(char const *name);
    /// Copies the name and the lists.
    GraphOp(GraphOp const &source);
    ~GraphOp() override;

    /// The node that `traverse` was called with, while it walks; null otherwise. Nodes below it can
    /// be sure that their parent is handled after them, and may leave work to the parent.
    Node const *getWalkedRoot() const { return _walkedRoot; }

    /// Warns where words of `params` were not used: "CLASS doesn't have parameters 'WORDS'",
    /// followed by `ending`.
    static void warnUnused(ParamSet const &params, char const *classname,
                           char const *ending = ".\n");

    NodeSet _excludeList;
    NodeSet _preserveList;

  private:
    std::string _name;
    Node const *_walkedRoot = nullptr;
};
} // namespace OSG
