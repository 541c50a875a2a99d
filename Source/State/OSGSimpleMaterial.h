#pragma once

#include "OSGSimpleMaterialBase.h"

namespace OSG
{
/// A material of plain colours, 0 to 1 each (not enforced).
class OSG_STATE_API SimpleMaterial : public SimpleMaterialBase
{
  protected:
    SimpleMaterial() = default;
    SimpleMaterial(SimpleMaterial const &) = default;
    ~SimpleMaterial() override;

    friend Pattern;
};
} // namespace OSG
