#pragma once

#include "OSGActionBase.h"
#include "OSGConstSizeTransformBase.h"

namespace OSG
{
class Action;

/// Shows its subtree at the same size on the screen, however far away it is. Markers and handles
/// use it.
///
/// The field `matrix` belongs to the user. It places the subtree, and the core does not change it.
/// Rendering and picking use the field `transform`, which rendering computes for its view. It is
/// the identity before the first rendering. If several nodes share the core, it belongs to the node
/// that was rendered last. `distance` is the size in pixels that one unit of the subtree has on the
/// screen. The core is meant for nodes that have no other transform above them.
class OSG_CONTRIBTOLVANITE_API ConstSizeTransform : public ConstSizeTransformBase
{
  public:
    static constexpr Replaced Replaces = Replaced::InitMethod;

    /// Multiplies `matrix` from the right by `transform`.
    void accumulateMatrix(Matrix &matrix) override;
    /// Makes the volume infinite, because the size of the subtree in space depends on the view.
    void adjustVolume(Volume &volume) override;

  protected:
    ConstSizeTransform() = default;
    ConstSizeTransform(ConstSizeTransform const &) = default;
    ~ConstSizeTransform() override;

    /// Registers the two functions below with IntersectAction, once all types exist.
    static void initMethod(TypeBase::InitPhase phase);
    /// Transform the ray of an IntersectAction by the inverse of `transform`, and back.
    ActionBase::ResultE intersectEnter(Action *action);
    ActionBase::ResultE intersectLeave(Action *action);

    friend Pattern;
};
} // namespace OSG
