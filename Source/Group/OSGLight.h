#pragma once

#include "OSGLightBase.h"
#include "OSGLightSource.h"

namespace OSG
{
/// Shines on its subtree from the space of its beacon; without one, from the space of its node.
class OSG_GROUP_API Light : public LightBase, public LightSource
{
  public:
    static constexpr Replaced Replaces = Replaced::InitMethod;

    bool shines() const override { return getOn(); }
    Node const *findPlace() const override { return getBeacon(); }
    LightValues makeValues(Matrix const &toEye) const override;

  protected:
    Light() = default;
    Light(Light const &) = default;
    ~Light() override;

    /// Adds where the light stands, and how it falls off.
    virtual void addTo(LightValues &values, Matrix const &toEye) const = 0;

    static void initMethod(TypeBase::InitPhase phase);

    friend Pattern;
};
} // namespace OSG
