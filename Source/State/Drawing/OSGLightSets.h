#pragma once

#include <vector>

#include "OSGDrawList.h"

namespace OSG
{
class LightSource;

/// Which lights shine on what, in one frame.
class OSG_STATE_API LightSets
{
  public:
    static constexpr UInt32 NoLight = 0xFFFFFFFF;
    /// As many as fixed-function OpenGL has at least.
    static constexpr std::size_t MaxLights = 8;

    struct Light
    {
        LightSource const *source;
        Matrix toEye; ///< from the space that it stands in
        UInt32 outer; ///< the one around it, which stands before it in the list, or NoLight
        UInt32 order; ///< in the tree; of equal ones the first in the list is the first
    };

    /// Set 0, `base`, shines where no light is around. The first lights of the tree that
    /// shine are chosen, the others are left out with one warning.
    void make(std::vector<Light> const &lights, LightSet const &base, std::vector<LightSet> &sets);
    /// For the innermost light around something.
    UInt32 setOf(UInt32 light) const { return light == NoLight ? 0 : _setOf[light]; }

  private:
    std::vector<bool> chooseLights(std::vector<Light> const &lights);

    std::vector<UInt32> _setOf; // by light
    bool _hasWarned = false;
};
} // namespace OSG
