#pragma once

/// \file
/// The action that finds what lies inside a frustum.

#include <vector>

#include "OSGAction.h"
#include "OSGContribTolvaniteApi.h"
#include "OSGFrustum.h"
#include "OSGLevelStack.h"

namespace OSG
{
class SelectionFunctor;

/// Holds the state of a selection's walk. The geometric tests and the hits are those of its actor,
/// a `SelectionFunctor`. Geometry is never transformed. At each transform the frustum goes through
/// the inverse matrix, so vertices are tested in their own space. The stacked matrices lead from
/// local space to the space of the root. They are used for the points of hits alone.
///
///     UnrecordedRefPtr<SelectionAction> action(SelectionAction::create());
///     SimpleSelectionFunctor functor(action, SelectionFunctor::SelectTriangles,
///                                    SelectionFunctor::NearPlane);
///     action->reinitialize();
///     action->pushFrustum(frustum); // in the space of the root that is walked
///     action->apply(root);
///     functor.hits(SelectionFunctor::FrontHits);
///
/// `apply` needs an actor and a frustum, and checks neither. It does not update volumes. After an
/// edit the host first commits and then calls Node::updateVolume. The commit marks the volumes that
/// the edit touched as invalid, and an invalid volume is not used for culling. In the other order
/// the answers are the same but take longer, and the action says so in one warning. During a
/// selection an action and its functor belong to one thread. The static data below belong to the
/// thread that calls startUp.
class OSG_CONTRIBTOLVANITE_API SelectionAction : public Action
{
  public:
    // --- creation ---
    /// A copy of the prototype. Without a prototype, an action without a frustum.
    static TransitPtr<SelectionAction> create();
    /// Likewise, with `frustum` pushed onto the stack.
    static TransitPtr<SelectionAction> create(Frustum const &frustum);
    /// Not counted: the host keeps it alive. Null by default.
    static SelectionAction *getPrototype() { return _prototype; }
    static void setPrototype(SelectionAction *prototype) { _prototype = prototype; }
    static char const *getClassname() { return "SelectionAction"; }

    // --- default handlers; each action constructed afterwards gets them; none at first ---
    static void registerEnterDefault(FieldContainerType const &type, Functor const &function);
    static void registerLeaveDefault(FieldContainerType const &type, Functor const &function);
    /// Free the tables of default handlers. Called when the system ends. They always return true.
    static bool terminateEnter();
    static bool terminateLeave();

    // --- the functor; not owned, it must outlive each apply() ---
    SelectionFunctor *getActor() const { return _actor; }
    void setActor(SelectionFunctor *actor) { _actor = actor; }

    /// Empties the stacks of frusta, nodes and matrices and frees their memory but for the first
    /// levels, which need none. frustumVolume() does not change until the next frustum is pushed.
    void reinitialize();

    // --- frusta, in the space of the visited node; the top of an empty stack is undefined
    void pushFrustum(Frustum const &frustum);
    void popFrustum();
    Frustum const &topFrustum() const { return _frustumStack.top().frustum; }
    bool emptyFrustum() const { return _frustumStack.empty(); }
    /// The planes of the top frustum. Six planes with the normal zero once the last frustum has
    /// been popped.
    FrustumVolume const &frustumVolume() const { return _frustumVolume; }

    // --- matrices from local space to the space of the root ---
    void pushMatrix(Matrix const &matrix) { _matrixStack.push(matrix); }
    void popMatrix() { _matrixStack.pop(); }
    Matrix const &topMatrix() const { return _matrixStack.top(); }
    bool emptyMatrix() const { return _matrixStack.empty(); }

    // --- nodes of the transforms that the walk has entered; not counted ---
    void pushNode(Node *node) { _nodeStack.push(node); }
    void popNode() { _nodeStack.pop(); }
    Node const *topNode() const { return _nodeStack.top(); }
    bool emptyNode() const { return _nodeStack.empty(); }

    // --- `VisitSubTree` nodes that the walk has entered, outermost first; not counted ---
    void pushVisitSubTreeNode(Node *node) { _visitSubTreeNodes.push_back(node); }
    void popVisitSubTreeNode() { _visitSubTreeNodes.pop_back(); }
    std::vector<Node *> const &getVisitSubTreeNodes() const { return _visitSubTreeNodes; }

    /// For handlers that find a box that is not valid: the first call logs a warning.
    void reportInvalidBox();

    // --- order; no action equals another or itself ---
    bool operator==(SelectionAction const &) const { return false; }
    bool operator!=(SelectionAction const &) const { return true; }
    /// Compares addresses.
    bool operator<(SelectionAction const &other) const;

    /// These do nothing: a frustum has no length to scale, and no distances of entry and exit.
    void scale(Real32) {}
    ResultE setEnterLeave(Real32, Real32) { return Continue; }

  protected:
    SelectionAction();
    explicit SelectionAction(Frustum const &frustum);
    /// Copies everything, the pointer to the functor included. The functor's handlers serve the
    /// copy as well, but its getAction() still returns the source.
    SelectionAction(SelectionAction const &source);
    ~SelectionAction() override;

    /// Clears the hits and pushes the identity matrix. The frusta are kept.
    ResultE start() override;
    /// Makes the functor sort its hits.
    ResultE stop(ResultE result) override;
    /// Restores the stacks to what they held before the walk.
    void cancel() override;

    FunctorStore *getDefaultEnterFunctors() override;
    FunctorStore *getDefaultLeaveFunctors() override;
    void findMissed(BoxLanes const *boxes, std::size_t count, UInt8 *missed) const override;

  private:
    void takeDefaults();

    static FunctorStore *_defaultEnterFunctors;
    static FunctorStore *_defaultLeaveFunctors;
    static SelectionAction *_prototype;

    /// A frustum and its planes, which are needed again when the levels above have gone.
    struct Level
    {
        Frustum frustum;
        FrustumVolume volume;
    };
    static constexpr std::size_t FixedLevels = 16; // deeper scenes use the heap

    LevelStack<Level, FixedLevels> _frustumStack;
    LevelStack<Node *, FixedLevels> _nodeStack;
    std::vector<Node *> _visitSubTreeNodes;
    std::size_t _frustaOfHost = 0; // number of frusta when the walk began
    std::size_t _visitsOfHost = 0; // number of visiting nodes then
    LevelStack<Matrix, FixedLevels> _matrixStack;
    FrustumVolume _frustumVolume;
    SelectionFunctor *_actor = nullptr;
    bool _invalidBoxReported = false;
};
} // namespace OSG
