#pragma once

#include "OSGActionBase.h"
#include "OSGConstSizeTransformBase.h"

namespace OSG
{
class Action;

/// Shows its subtree at a constant size on the screen, however far away it stands: markers,
/// handles.
///
/// The user's matrix (`matrix`) places the subtree and stays as it is. What rendering and picking
/// use is `transform`, computed for the view that was rendered last and the identity before; a core
/// that several nodes share has the one of the node rendered last. `distance` is the size in pixels
/// that one unit of the subtree has on the screen. The core is meant for places whose parents carry
/// no transform of their own.
class OSG_CONTRIBTOLVANITE_API ConstSizeTransform : public ConstSizeTransformBase
{
  public:
    static constexpr Replaced Replaces = Replaced::InitMethod;

    /// Multiplies `transform` from the right.
    void accumulateMatrix(Matrix &matrix) override;
    /// Makes the volume infinite: what size the subtree has in space is not known from the graph.
    void adjustVolume(Volume &volume) override;

  protected:
    ConstSizeTransform() = default;
    ConstSizeTransform(ConstSizeTransform const &) = default;
    ~ConstSizeTransform() override;

    /// Registers the functions below at the actions that know them, when all types are up.
    static void initMethod(TypeBase::InitPhase phase);
    /// Carry the ray of an IntersectAction through `transform` and back.
    ActionBase::ResultE intersectEnter(Action *action);
    ActionBase::ResultE intersectLeave(Action *action);

    friend Pattern;
};
} // namespace OSG
