#pragma once

#include "OSGDrawList.h"
#include "OSGStateApi.h"

namespace OSG
{
class Node;

/// A core that shines on what is below its nodes.
class OSG_STATE_API LightSource
{
  public:
    virtual bool shines() const = 0;
    /// Node in whose space the light stands; null for the node of the core.
    virtual Node const *findPlace() const = 0;
    /// `toEye` carries the space that the light stands in to the eye.
    virtual LightValues makeValues(Matrix const &toEye) const = 0;

  protected:
    LightSource() = default;
    LightSource(LightSource const &) = default;
    virtual ~LightSource();
};
} // namespace OSG
