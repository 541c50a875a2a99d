#pragma once

#include "OSGLightBase.h"

namespace OSG
{
/// Shines on its subtree from the space of its beacon, a node that it does not count.
class OSG_GROUP_API Light : public LightBase
{
  protected:
    Light() = default;
    Light(Light const &) = default;
    ~Light() override;

    friend Pattern;
};
} // namespace OSG
