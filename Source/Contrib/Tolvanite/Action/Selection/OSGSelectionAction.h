#pragma once

/// \file
/// The traversal that finds what lies inside a frustum.

#include <deque>
#include <vector>

#include "OSGAction.h"
#include "OSGContribTolvaniteApi.h"
#include "OSGFrustum.h"

namespace OSG
{
class SelectionFunctor;

/// The state of a selection's walk. It holds no geometric test: a `SelectionFunctor` attached as
/// its actor decides and keeps the hits. Geometry is never moved. At each transform the frustum
/// goes through the inverse matrix, so that vertices are tested where they lie; the matrices run
/// the other way, from local to root space, and serve the hit points alone.
///
///     UnrecordedRefPtr<SelectionAction> action(SelectionAction::create());
///     SimpleSelectionFunctor functor(action, SelectionFunctor::SelectTriangles,
///                                    SelectionFunctor::NearPlane);
///     action->reinitialize();
///     action->pushFrustum(frustum); // in the space of the root that is walked
///     action->apply(root);
///     functor.hits(SelectionFunctor::FrontHits);
///
/// `apply` needs an actor and a frustum; neither is tested. Volumes of nodes are taken as they
/// stand. After an edit the host first commits and then calls Node::updateVolume: the commit marks
/// the volumes that the edit touched as invalid, and an invalid volume is not used for culling. The
/// other way round the answers are the same, but they take longer. An action and its functor belong
/// to one thread during a selection, and the static data below to the one that starts the system
/// up.
class OSG_CONTRIBTOLVANITE_API SelectionAction : public Action
{
  public:
    // --- creation ---
    /// A copy of the prototype where there is one, an action without frustum otherwise.
    static TransitPtr<SelectionAction> create();
    /// The same with `frustum` on top of the stack.
    static TransitPtr<SelectionAction> create(Frustum const &frustum);
    /// Not counted: whoever sets it keeps it alive. Null by default.
    static SelectionAction *getPrototype() { return _prototype; }
    static void setPrototype(SelectionAction *prototype) { _prototype = prototype; }
    static char const *getClassname() { return "SelectionAction"; }

    // --- handlers that every action constructed from now on begins with; none by default ---
    static void registerEnterDefault(FieldContainerType const &type, Functor const &function);
    static void registerLeaveDefault(FieldContainerType const &type, Functor const &function);
    /// Release the tables; true also where there is none. They run when the system ends.
    static bool terminateEnter();
    static bool terminateLeave();

    // --- the functor; not owned, it outlives every apply ---
    SelectionFunctor *getActor() const { return _actor; }
    void setActor(SelectionFunctor *actor) { _actor = actor; }

    /// Empties the stacks of frusta, nodes and matrices and gives their memory back. The planes
    /// stay those of the last frustum until the next one is pushed.
    void reinitialize();

    // --- frusta, in the space of the node that is visited; the top of an empty stack is undefined
    void pushFrustum(Frustum const &frustum);
    void popFrustum();
    Frustum const &topFrustum() const { return _frustumStack.back(); }
    bool emptyFrustum() const { return _frustumStack.empty(); }
    /// The planes of the top frustum; six without normal once the last one is popped.
    FrustumVolume const &frustumVolume() const { return _frustumVolume; }

    // --- matrices from local space to that of the root ---
    void pushMatrix(Matrix const &matrix) { _matrixStack.push_back(matrix); }
    void popMatrix() { _matrixStack.pop_back(); }
    Matrix const &topMatrix() const { return _matrixStack.back(); }
    bool emptyMatrix() const { return _matrixStack.empty(); }

    // --- nodes of the transforms that are entered; not counted ---
    void pushNode(Node *node) { _nodeStack.push_back(node); }
    void popNode() { _nodeStack.pop_back(); }
    Node const *topNode() const { return _nodeStack.back(); }
    bool emptyNode() const { return _nodeStack.empty(); }

    // --- `VisitSubTree` nodes that are entered, outermost first; not counted ---
    void pushVisitSubTreeNode(Node *node) { _visitSubTreeNodes.push_back(node); }
    void popVisitSubTreeNode() { _visitSubTreeNodes.pop_back(); }
    std::vector<Node *> const &getVisitSubTreeNodes() const { return _visitSubTreeNodes; }

    // --- order: no two actions are equal, not even one and itself ---
    bool operator==(SelectionAction const &) const { return false; }
    bool operator!=(SelectionAction const &) const { return true; }
    /// By address.
    bool operator<(SelectionAction const &other) const;

    /// Do nothing; a frustum has no length to be scaled and no distances of entry and exit.
    void scale(Real32) {}
    ResultE setEnterLeave(Real32, Real32) { return Continue; }

  protected:
    SelectionAction();
    explicit SelectionAction(Frustum const &frustum);
    /// Copies all, the functor's address included: its handlers serve the copy too, but its
    /// getAction() still names the source.
    SelectionAction(SelectionAction const &source);
    ~SelectionAction() override;

    /// Clears the hits and primes the matrices with the identity; the frusta stay.
    ResultE start() override;
    /// Has the functor sort its hits.
    ResultE stop(ResultE result) override;
    /// The stacks are as before the walk.
    void cancel() override;

    FunctorStore *getDefaultEnterFunctors() override;
    FunctorStore *getDefaultLeaveFunctors() override;

  private:
    void takeDefaults();

    static FunctorStore *_defaultEnterFunctors;
    static FunctorStore *_defaultLeaveFunctors;
    static SelectionAction *_prototype;

    std::deque<Frustum> _frustumStack;
    std::deque<Node *> _nodeStack;
    std::vector<Node *> _visitSubTreeNodes;
    std::size_t _frustaOfHost = 0; // on the stack when the walk began
    std::size_t _visitsOfHost = 0; // likewise
    std::deque<Matrix> _matrixStack;
    FrustumVolume _frustumVolume;
    SelectionFunctor *_actor = nullptr;
};
} // namespace OSG
