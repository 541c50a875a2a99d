#pragma once

#ifdef BENCHMARK_WITH_OPENSCENEGRAPH

#include <memory>

#include "BlockedWalk.h"

namespace OSG::Bench
{
/// OpenSceneGraph's polytope intersector with the box queries of a frame, over a scene of the same
/// nodes and triangles.
class PeerQueries
{
  public:
    PeerQueries(UInt32 triangles, bool useKdTree);
    PeerQueries(PeerQueries const &) = delete;
    PeerQueries &operator=(PeerQueries const &) = delete;
    ~PeerQueries();

    /// Answers all queries. Returns how many have a hit.
    UInt32 frame();
    /// Whether each query has a hit exactly where ours has one.
    bool agrees();

  private:
    struct Parts;
    std::unique_ptr<Parts> _parts;
};
} // namespace OSG::Bench

#endif
