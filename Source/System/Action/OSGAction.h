#pragma once

/// \file
/// Traversals that call a function per core type.

#include <vector>

#include <boost/function.hpp>

#include "OSGActionBase.h"
#include "OSGChildIndex.h"
#include "OSGFieldContainerType.h"
#include "OSGRefCountPtr.h"

namespace OSG
{
class Node;
class NodeCore;

/// A traversal of a tree of nodes. For each node it calls the enter function of the node's core
/// type, then walks the children, then calls the leave function; on Skip it does neither of the
/// last two. A core type without a function of its own, and a node without a core, are passed
/// through. Nodes whose traversal mask shares no bit with the action's are not walked.
///
/// A function takes (NodeCore *, Action *). From an enter function, addNode makes the added nodes
/// the ones walked below this node, in place of its children. A node that is added below itself,
/// below 1,024 added levels, or behind 1,048,576 added nodes is passed over with one warning; an
/// added child of the current node counts for none of the three.
///
/// Where no function but those that keep their HandlerPromise is in the action, a walk leaves out
/// children that it would find nothing at; see ChildIndex.
class OSG_SYSTEM_API Action : public ActionBase
{
  public:
    using Functor = boost::function<ResultE(NodeCore *, Action *)>;
    using FunctorStore = std::vector<Functor>; ///< by type id

    /// What a function promises to walks, so that they may leave out what nobody would miss.
    enum class HandlerPromise : UInt8
    {
        Nothing,    ///< it may do anything, also edit the scene: the walk takes every node
        KeepsScene, ///< it edits no scene
        GatedByBox, ///< likewise, and where the action's findMissed() finds the node's box, which
                    ///< is valid, missed, it does nothing and returns Skip
        Repeats ///< it edits no scene, and what it tells the action is the same as long as neither
                ///< the node, its core nor what is above them is edited
    };
    using PromiseStore = std::vector<HandlerPromise>; ///< by type id

    // --- running ---
    /// start(), the walk, stop(). Null walks nothing between the two.
    virtual ResultE apply(Node *node);
    /// The same over several roots, with one start and one stop.
    virtual ResultE apply(std::vector<Node *>::iterator begin, std::vector<Node *>::iterator end);

    // --- functions of this action; a later one replaces the earlier one of its type ---
    void registerEnterFunction(FieldContainerType const &type, Functor const &function,
                               HandlerPromise promise = HandlerPromise::Nothing);
    void registerLeaveFunction(FieldContainerType const &type, Functor const &function,
                               HandlerPromise promise = HandlerPromise::Nothing);
    static ResultE _defaultEnterFunction(NodeCore *core, Action *action);
    static ResultE _defaultLeaveFunction(NodeCore *core, Action *action);

    // --- for the functions, during a walk ---
    Node *getActNode() const { return _actNode; }
    /// Children of the current node.
    Node *getNode(UInt32 index) const;
    UInt32 getNNodes() const;
    /// Null counts as a call: nothing is walked below the node then.
    void addNode(Node *node);

    // --- settings ---
    UInt32 getTravMask() const { return _travMask; }
    void setTravMask(UInt32 mask) { _travMask = mask; }

    // --- indices, which make queries faster and change no answer ---
    /// Whether functions may answer a geometry through its index of primitives (true, the default).
    /// Without, each primitive is looked at, and no index is built.
    bool getUsePrimitiveIndex() const { return _usePrimitiveIndex; }
    void setUsePrimitiveIndex(bool uses) { _usePrimitiveIndex = uses; }
    /// How often a geometry was answered through an index since the last apply() began. A geometry
    /// under several nodes counts once for each.
    UInt32 getIndexedGeometries() const { return _indexedGeometries; }
    /// For the functions, during a walk: one more geometry was answered through its index.
    void countIndexed() { ++_indexedGeometries; }

  protected:
    Action() = default;
    /// Copies the functions, the mask and the use of indices.
    Action(Action const &source);
    ~Action() override;

    /// What a walk does at the nodes, for NodeWalker; for actions that walk by parts.
    struct OSG_SYSTEM_API Visitor
    {
        Action &action;

        bool enter(Node *node);
        bool takeAdded(std::vector<Node *> &nodes);
        void leave(Node *node) { action.call(action._leave, node); }
    };

    /// Whether the functions of a core type, if it has any, promise to repeat.
    bool repeats(FieldContainerType const &type) const;
    /// Changes with every function that is registered.
    UInt32 getFunctionsNumber() const { return _functionsNumber; }
    /// Forgets what a walk that was ended has left: for cancel() of actions that walk by parts.
    void endWalk();

    virtual ResultE start();
    virtual ResultE stop(ResultE result);
    /// In place of stop() where an exception ends the walk, which then passes on: drops what the
    /// walk has put aside. Throws nothing.
    virtual void cancel();

    /// Functions by type id that new actions of a class begin with; null for none.
    virtual FunctorStore *getDefaultEnterFunctors();
    virtual FunctorStore *getDefaultLeaveFunctors();

    /// Sets a bit of `missed` for each box that a handler which is GatedByBox would skip. The boxes
    /// of nodes that it would not skip are never missed, nor is a box around one.
    virtual void findMissed(BoxLanes const *boxes, std::size_t count, UInt8 *missed) const;

    /// Takes the place of all functions. Functions without a promise have that of Nothing.
    void takeEnterFunctions(FunctorStore const &functions, PromiseStore const &promises = {});
    void takeLeaveFunctions(FunctorStore const &functions, PromiseStore const &promises = {});

    Node *_actNode = nullptr;
    UInt32 _travMask = 0xFFFFFFFF;

  private:
    /// Functions of one kind by type id.
    struct Functions
    {
        FunctorStore functors;
        PromiseStore promises; // of the first types; the others promise nothing

        HandlerPromise promiseOf(std::size_t type) const;
        bool isDefault(std::size_t type, ResultE (*passing)(NodeCore *, Action *)) const;
    };

    ResultE call(Functions const &functions, Node *node);
    void walk(std::vector<Node *>::iterator begin, std::vector<Node *>::iterator end);
    void put(Functions &functions, FieldContainerType const &type, Functor const &function,
             HandlerPromise promise, Functor const &filler);
    WalkRoles const *findRoles() const;
    bool takeUnmissed(std::vector<Node *> &nodes) const;

    Functions _enter;
    Functions _leave;
    WalkRoles const *_roles = nullptr; // null where every node is walked
    bool _rolesKnown = false;
    std::vector<Node *> _newList;
    bool _useNewList = false;
    bool _usePrimitiveIndex = true;
    UInt32 _indexedGeometries = 0;
    UInt32 _functionsNumber = 0;
};

/// Puts `function` at the place of `type`; places before it that are new hold `filler`.
OSG_SYSTEM_API void put_functor(Action::FunctorStore &store, FieldContainerType const &type,
                                Action::Functor const &function, Action::Functor const &filler);
} // namespace OSG
