#pragma once

#include "OSGStateTracker.h"

namespace OSG
{
/// The vertex arrays of the context. Begins with none switched on, and leaves what it has set.
class VertexArrays
{
  public:
    /// Vertices and indices come from `page` from now on.
    void bind(MeshPage const &page, StateTracker::VertexUse const &use);

  private:
    void enable(StateTracker::VertexUse const &use);
    void point(MeshPage const &page);

    MeshPage const *_page = nullptr;
    StateTracker::VertexUse _use;
    bool _hasPositions = false;
};
} // namespace OSG
