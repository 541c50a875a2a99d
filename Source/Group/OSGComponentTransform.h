#pragma once

#include "OSGComponentTransformBase.h"

namespace OSG
{
/// A transform that hosts set from parts. What is walked is its matrix.
class OSG_GROUP_API ComponentTransform : public ComponentTransformBase
{
  protected:
    ComponentTransform() = default;
    ComponentTransform(ComponentTransform const &) = default;
    ~ComponentTransform() override;

    friend Pattern;
};
} // namespace OSG
