#include "OSGWalkScene.h"

#include "OSGFrustum.h"

namespace OSG
{
WalkSpace::~WalkSpace() = default;

WalkScene::WalkScene()
    : _intersectAction(IntersectAction::create())
    , _selectionAction(SelectionAction::create())
    , _selectionFunctor(_selectionAction, SelectionFunctor::SelectTriangles,
                        SelectionFunctor::NearPlane)
{
}

WalkScene::~WalkScene() = default;

void WalkScene::setTravMask(UInt32 mask)
{
    _intersectAction->setTravMask(mask);
    _selectionAction->setTravMask(mask);
}

std::optional<WalkObstacle> WalkScene::box(Frustum const &frustum,
                                           SelectionFunctor::PlaneType plane)
{
    _selectionFunctor.setPlaneType(plane);
    _selectionAction->reinitialize();
    _selectionAction->pushFrustum(frustum);
    _selectionAction->apply(_world);
    auto const &hits = _selectionFunctor.hits(SelectionFunctor::FrontHits);
    if(hits.empty())
        return std::nullopt;
    SelectionFunctor::HitT const &hit = hits.front();
    return WalkObstacle{hit.node, hit.visitSubTreeNodes, hit.distance, hit.normal};
}

std::optional<WalkObstacle> WalkScene::ray(Line const &line)
{
    constexpr Real32 AnyDistance = 1e30f; // larger than any scene
    _intersectAction->setLine(line, AnyDistance);
    _intersectAction->apply(_world);
    if(!_intersectAction->didHit())
        return std::nullopt;
    return WalkObstacle{_intersectAction->getHitObject(),
                        {},
                        _intersectAction->getHitDistance(),
                        _intersectAction->getHitNormal()};
}
} // namespace OSG
