#pragma once

/// \file
/// Who answers the queries of the selection benchmarks. A contender takes the queries over when it
/// is made, so that its time holds the answering alone. Its scene is made with it where it is new.

#include <memory>
#include <vector>

#include "Queries.h"

namespace OSG::Bench
{
/// What is asked of a volume.
enum class Mode
{
    Exact, ///< the places that are hit; our nearest and farthest one of each geometry
    Fast   ///< which geometries are hit
};

class VolumeContender
{
  public:
    virtual ~VolumeContender() = default;
    /// Answers the query and reads every record of the answer; the result depends on all of them.
    virtual Real64 ask(std::size_t query) = 0;
    /// The places, in the order of the walk, of the geometries that the last query hit; ascending.
    virtual std::vector<UInt32> shapes() = 0;
};

class RayContender
{
  public:
    virtual ~RayContender() = default;
    /// Distance of the nearest hit; negative where there is none.
    virtual Real64 ask(std::size_t query) = 0;
};

using VolumeContenderPtr = std::unique_ptr<VolumeContender>;
using RayContenderPtr = std::unique_ptr<RayContender>;

VolumeContenderPtr our_volumes(SceneName name, VolumeQuery query, Mode mode, bool useIndex);
RayContenderPtr our_rays(SceneName name, RayQuery query, bool useIndex);

#ifdef BENCHMARK_WITH_OPENSCENEGRAPH
VolumeContenderPtr peer_volumes(SceneName name, VolumeQuery query, Mode mode, bool useKdTree);
RayContenderPtr peer_rays(SceneName name, RayQuery query);
/// Builds the k-d tree of a terrain anew. Returns the bytes of its arrays.
std::size_t build_peer_tree(SceneName name);
#endif

#ifdef BENCHMARK_WITH_EMBREE
RayContenderPtr embree_rays(SceneName name, RayQuery query);
#endif
} // namespace OSG::Bench
