#pragma once

#include "OSGSimpleTexturedMaterialBase.h"

namespace OSG
{
/// A simple material with one texture.
class OSG_STATE_API SimpleTexturedMaterial : public SimpleTexturedMaterialBase
{
  protected:
    SimpleTexturedMaterial() = default;
    SimpleTexturedMaterial(SimpleTexturedMaterial const &) = default;
    ~SimpleTexturedMaterial() override;

    friend Pattern;
};
} // namespace OSG
