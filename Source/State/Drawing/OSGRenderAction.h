#pragma once

#include "OSGDrawList.h"
#include "OSGLightSource.h"
#include "OSGRenderActionBase.h"
#include "OSGRenderPartition.h"
#include "OSGSceneCache.h"

namespace OSG
{
class FrameCollector;

/// Collects what a view shows of a scene, in the order in which it is drawn. It draws nothing and
/// needs no context: apply() leaves a DrawList, which Viewport::render draws.
///
/// The action knows no core. Whoever knows one registers functions for its type, which serve the
/// types derived from it as well: a transform leads into a space, a group replaces materials, a
/// switch chooses children by addNode(), a geometry adds its shape. A core type without functions
/// is passed through.
///
/// A function that promises Repeats is asked once. What it told the action is kept from frame to
/// frame, until its node, its core or what is above them is edited (see SceneCache): a still scene
/// is walked once, a camera that moves costs no walk. The next frame shows every edit, committed or
/// not, of the thread that draws, and the committed ones of other threads. A function without that
/// promise is called in each frame, with the matrices of the view in the active partition, and so
/// are all functions below it.
///
/// Shapes whose node's box is out of sight are left out. The boxes of the nodes are brought up to
/// date first.
class OSG_STATE_API RenderAction : public RenderActionBase
{
  public:
    // --- creation ---
    static TransitPtr<RenderAction> create();
    static char const *getClassname() { return "RenderAction"; }

    // --- functions that every action made from now on begins with ---
    /// A type gets the functions of the nearest type, itself or above it, that has any.
    static void registerEnterDefault(FieldContainerType const &type, Functor const &function,
                                     HandlerPromise promise = HandlerPromise::Nothing);
    static void registerLeaveDefault(FieldContainerType const &type, Functor const &function,
                                     HandlerPromise promise = HandlerPromise::Nothing);

    // --- the view; to be set before apply() ---
    DrawEnv &editDrawEnv() { return _partition.editDrawEnv(); }
    DrawEnv const &getDrawEnv() const { return _partition.getDrawEnv(); }
    /// Whether a white light shines from the eye along the view, and no light of the scene (false).
    bool getHeadlight() const { return _headlight; }
    void setHeadlight(bool isOn) { _headlight = isOn; }

    /// What is shown in place of materials, or not at all, by places of the scene. It costs no walk
    /// of the scene, and is no edit of it.
    AppearanceTable &editAppearances() { return _appearances; }
    AppearanceTable const &getAppearances() const { return _appearances; }

    // --- the result of the last apply() ---
    DrawList const &getDrawList() const { return _list; }

    // --- running ---
    ResultE apply(Node *node) override;
    ResultE apply(std::vector<Node *>::iterator begin, std::vector<Node *>::iterator end) override;

    // --- for functions that repeat, at the current node ---
    /// From the current node's space, that of its parent, to that of the root.
    Matrix getToRoot() const;
    /// Has the shape drawn. `material` is its own; null stands for none.
    void addShape(DrawShape const *shape, Material const *material);
    /// What follows holds below the node, until the leave function calls pop().
    void pushSpace(Matrix const &toParent);
    /// Replaces all materials below; null changes nothing.
    void pushMaterial(Material const *material);
    /// Overrides the materials below part by part; of several the outermost does, null none.
    void pushOverriding(Material const *material);
    void pushLight(LightSource const *light);
    void pop();

    // --- for functions that are called for each view ---
    RenderPartition *getActivePartition() { return &_partition; }
    /// Notes what of the current node is in sight, by its box in the current space, until
    /// popVisibility of the partition; false where nothing is.
    bool pushVisibility();

  protected:
    RenderAction();
    /// Copies the functions, the settings and the appearances.
    RenderAction(RenderAction const &source);
    ~RenderAction() override;

    void cancel() override;

    FunctorStore *getDefaultEnterFunctors() override;
    FunctorStore *getDefaultLeaveFunctors() override;

  private:
    class Recording;
    struct OpenVisitor;

    void collect(std::vector<Node *> const &roots);
    UInt64 walkKey() const;

    RenderPartition _partition;
    DrawList _list;
    AppearanceTable _appearances;
    SceneCache _cache;
    std::unique_ptr<FrameCollector> _collector;
    SceneRecorder *_recorder = nullptr; // null: the functions are called for the view at hand
    bool _headlight = false;
};
} // namespace OSG
