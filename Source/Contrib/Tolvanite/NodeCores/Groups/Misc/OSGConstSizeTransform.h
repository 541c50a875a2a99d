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
/// Rendering and picking use the field `transform`, which each rendering computes for its view. It
/// is the identity before the first rendering. If several nodes share the core, it belongs to the
/// node that was rendered last.
///
/// One unit of the subtree measures `distance` / 2 pixels along the horizontal of the screen,
/// because it is compared with normalised coordinates, in which a picture is 2 wide.
///
/// The core is meant for nodes that have no other transform above them: `transform` holds the
/// matrix of the parent already, and rendering multiplies it by the parent's matrix again.
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

    /// Registers the four functions below with IntersectAction and RenderAction, once all types
    /// exist.
    static void initMethod(TypeBase::InitPhase phase);
    /// Computes `transform` for the view and the current matrix of a RenderAction: camera to world
    /// * current matrix * user's matrix * scale. Where one unit has no size on the screen, at the
    /// camera's own position, the size counts as 1e-6 pixels. A result that differs from
    /// `transform` by at most 1e-6 in each element is not stored, so that a camera at rest edits
    /// nothing.
    void calcMatrix(Action *action);
    /// Enter the space of `transform` in a RenderAction, and leave it.
    ActionBase::ResultE renderEnter(Action *action);
    ActionBase::ResultE renderLeave(Action *action);
    /// Transform the ray of an IntersectAction by the inverse of `transform`, and back.
    ActionBase::ResultE intersectEnter(Action *action);
    ActionBase::ResultE intersectLeave(Action *action);

    friend Pattern;
};
} // namespace OSG
