#pragma once

/// \file
/// A person who stands before a wall in a room of the building and holds the forward key after
/// Space. Each frame tries the step ten times on its level and ten times raised. The ceiling is
/// lower than a jump, so that the raise is found by ten tries, once for all passes.

#include <memory>
#include <vector>

#include "OSGFrustum.h"
#include "OSGNode.h"
#include "OSGSelectionFunctor.h"
#include "OSGWalkScene.h"

namespace OSG::Bench
{
/// A building of `triangles` triangles, up to date and committed. It stays until the program ends.
Node *building_of(UInt32 triangles);

/// A box query of the person, and whether it has a hit.
struct BoxQuery
{
    Frustum box;
    SelectionFunctor::PlaneType plane = SelectionFunctor::NearPlane;
    bool hasHit = false;
};
/// The queries of one frame in their order, where every raised try looks for its raise.
std::vector<BoxQuery> queries_of_frame(UInt32 triangles);

/// Answers these as the engine does.
class OurQueries
{
  public:
    explicit OurQueries(UInt32 triangles);
    /// Number of queries with a hit.
    std::size_t frame();

  private:
    std::vector<BoxQuery> _queries;
    WalkScene _scene;
};

/// The frames of a host: the navigator, the engine and a desktop on which the key is down.
class BlockedWalk
{
  public:
    explicit BlockedWalk(UInt32 triangles);
    BlockedWalk(BlockedWalk const &) = delete;
    BlockedWalk &operator=(BlockedWalk const &) = delete;
    ~BlockedWalk();

    /// False where the person has moved.
    bool frame();
    /// Queries of the last frame.
    UInt32 queries() const;

  private:
    struct Parts;
    std::unique_ptr<Parts> _parts;
};
} // namespace OSG::Bench
