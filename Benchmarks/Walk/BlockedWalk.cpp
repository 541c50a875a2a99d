#include "BlockedWalk.h"

#include <map>

#include "Building.h"
#include "OSGChangeList.h"
#include "OSGNavigator.h"
#include "OSGPerspectiveCamera.h"
#include "OSGScriptedDesktop.h"
#include "OSGThread.h"
#include "OSGTransform.h"
#include "OSGWASDWalkEngine.h"
#include "OSGWIN32Window.h"
#include "SceneGraph.h"

namespace OSG::Bench
{
namespace
{
constexpr Int64 MillisecondsOfFrame = 16;
constexpr Real32 StepOfFrame = 0.032f;

// In the third room of the ground floor, nearer to its back wall than a person may come.
Pnt3f const From(0.5f * RoomSize[0] + 2 * RoomPitch[0], 1.65f, -RoomSize[2] + 0.15f);
Pnt3f const At = From + Vec3f(0, 0, -1);
Vec3f const Up(0, 1, 0);

void settle(Node *root)
{
    Thread::getCurrentChangeList()->commitChanges();
    root->updateVolume();
    Thread::getCurrentChangeList()->commitChanges();
}

class NotingSpace : public WalkSpace
{
  public:
    explicit NotingSpace(Node *world) { _scene.setWorld(world); }

    std::optional<WalkObstacle> box(Frustum const &frustum,
                                    SelectionFunctor::PlaneType plane) override
    {
        std::optional<WalkObstacle> hit = _scene.box(frustum, plane);
        queries.push_back({frustum, plane, hit.has_value()});
        return hit;
    }
    std::optional<WalkObstacle> ray(Line const &line) override { return _scene.ray(line); }

    std::vector<BoxQuery> queries;

  private:
    WalkScene _scene;
};

class CountingObserver : public WalkObserver
{
  public:
    void observe(WalkStep const &step) override { queries = step.queries; }

    UInt32 queries = 0;
};
} // namespace

Node *building_of(UInt32 triangles)
{
    bring_up();
    static std::map<UInt32, NodePtr> buildings;
    NodePtr &root = buildings[triangles];
    if(root == nullptr)
    {
        root = building(triangles);
        settle(root);
    }
    return root;
}

std::vector<BoxQuery> queries_of_frame(UInt32 triangles)
{
    NotingSpace space(building_of(triangles));
    WalkSettings const settings;
    EyePose pose;
    pose.set(From, At, Up);
    WalkMotion motion(settings, pose, space);
    WalkFrame const frame = motion.frame();
    Real32 step = -StepOfFrame;
    for(UInt32 pass = 0; pass < settings.numStepLoop; ++pass, step *= 0.5f)
    {
        for(Real32 const jump : {0.f, settings.height * settings.jumpStrength})
            motion.tryStep(WalkStep::Direction::AlongView, step, jump, frame);
    }
    return std::move(space.queries);
}

OurQueries::OurQueries(UInt32 triangles)
    : _queries(queries_of_frame(triangles))
{
    _scene.setWorld(building_of(triangles));
}

std::size_t OurQueries::frame()
{
    std::size_t hits = 0;
    for(BoxQuery const &query : _queries)
        hits += _scene.box(query.box, query.plane) ? 1 : 0;
    return hits;
}

struct BlockedWalk::Parts
{
    std::shared_ptr<ScriptedDesktop> desktop = std::make_shared<ScriptedDesktop>();
    UnrecordedRefPtr<WIN32Window> window{WIN32Window::create()};
    UnrecordedRefPtr<Viewport> viewport{Viewport::create()};
    UnrecordedRefPtr<PerspectiveCamera> camera{PerspectiveCamera::create()};
    NodePtr beacon = node_of(UnrecordedRefPtr<Transform>(Transform::create()));
    CountingObserver observer;
    UnrecordedRefPtr<WASDWalkEngine> walk;
    Navigator navigator;
};

BlockedWalk::BlockedWalk(UInt32 triangles)
{
    Node *const world = building_of(triangles);
    _parts = std::make_unique<Parts>();
    Parts &p = *_parts;
    p.desktop->setKey('W', true);
    Desktop::setCurrent(p.desktop);
    p.walk = WASDWalkEngine::create();
    Desktop::setCurrent(nullptr);
    p.walk->setWalkObserver(&p.observer);
    p.walk->set(From, At, Up);
    p.window->setSize(800, 600);
    p.window->addPort(p.viewport);
    p.desktop->show(*p.window);
    p.camera->setBeacon(p.beacon);
    p.viewport->setCamera(p.camera);
    p.viewport->setRoot(world);
    p.navigator.setEngine(p.walk);
    p.navigator.setViewport(p.viewport);
    p.navigator.moveTo(0, 0);
    settle(p.beacon);
}

BlockedWalk::~BlockedWalk() { _parts->navigator.setEngine(nullptr); }

bool BlockedWalk::frame()
{
    Parts &p = *_parts;
    p.walk->staircase_mode(false); // as Space does
    p.desktop->advance(MillisecondsOfFrame);
    p.navigator.updateCameraTransformation();
    return p.walk->getFrom() == From;
}

UInt32 BlockedWalk::queries() const { return _parts->observer.queries; }
} // namespace OSG::Bench
