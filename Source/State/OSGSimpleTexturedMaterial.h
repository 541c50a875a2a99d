#pragma once

#include "OSGSimpleTexturedMaterialBase.h"

namespace OSG
{
/// A simple material with one texture, which repeats.
class OSG_STATE_API SimpleTexturedMaterial : public SimpleTexturedMaterialBase
{
  public:
    /// Adds a texture and its environment in slot 0 where there is an image.
    void addTo(StateParts &parts) const override;

  protected:
    SimpleTexturedMaterial() = default;
    SimpleTexturedMaterial(SimpleTexturedMaterial const &) = default;
    ~SimpleTexturedMaterial() override;

    friend Pattern;
};
} // namespace OSG
