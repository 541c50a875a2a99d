#pragma once

#include <optional>

#include "OSGIntersectAction.h"
#include "OSGSelectionAction.h"
#include "OSGSimpleSelectionFunctor.h"
#include "OSGWalkObserver.h"

namespace OSG
{
/// What a walking person asks the space around it.
class OSG_CONTRIBTOLVANITE_API WalkSpace
{
  public:
    virtual ~WalkSpace();
    /// The triangle in a box that is nearest to one of its faces.
    virtual std::optional<WalkObstacle> box(Frustum const &frustum,
                                            SelectionFunctor::PlaneType plane) = 0;
    /// The triangle that a line meets first. Its visited nodes are not told.
    virtual std::optional<WalkObstacle> ray(Line const &line) = 0;
};

/// Asks a scene. Both actions are made once and serve every query.
class OSG_CONTRIBTOLVANITE_API WalkScene : public WalkSpace
{
  public:
    WalkScene();
    WalkScene(WalkScene const &) = delete;
    WalkScene &operator=(WalkScene const &) = delete;
    ~WalkScene() override;

    /// Not owned. Queries find nothing where it is null.
    Node *getWorld() const { return _world; }
    void setWorld(Node *world) { _world = world; }
    void setTravMask(UInt32 mask);

    std::optional<WalkObstacle> box(Frustum const &frustum,
                                    SelectionFunctor::PlaneType plane) override;
    std::optional<WalkObstacle> ray(Line const &line) override;

  private:
    UnrecordedRefPtr<IntersectAction> _intersectAction;
    UnrecordedRefPtr<SelectionAction> _selectionAction;
    SimpleSelectionFunctor _selectionFunctor;
    Node *_world = nullptr;
};
} // namespace OSG
