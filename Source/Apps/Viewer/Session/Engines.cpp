#include "Engines.h"

#include <algorithm>

#include "OSGCadTrackballEngine.h"
#include "OSGCopterFlyEngine.h"
#include "OSGWASDFlyEngine.h"

namespace Viewer
{
namespace
{
using EnginePtr = OSG::UnrecordedRefPtr<OSG::NavigatorEngine>;

constexpr OSG::Real32 TrackballRadius = 0.8f;

EnginePtr make_engine(std::string const &name)
{
    if(name == "cad")
        return EnginePtr(OSG::CadTrackballEngine::create(TrackballRadius));
    if(name == "fly")
        return EnginePtr(OSG::WASDFlyEngine::create());
    if(name == "copter")
        return EnginePtr(OSG::CopterFlyEngine::create());
    if(name == "walk")
        return EnginePtr(OSG::WASDWalkEngine::create());
    return {};
}
} // namespace

Engines::Engines(OSG::SceneView &view, OSG::EventAdapter &events)
    : _view(view)
    , _events(events)
    , _window(OSG::WIN32Window::create())
{
    _window->addPort(_view.getViewport());
}

Engines::~Engines()
{
    _events.setWalkGuard(nullptr);
    _view.getNavigator().setEngine(nullptr);
    _window->subPort(_view.getViewport());
}

void Engines::setDesktop(std::shared_ptr<OSG::Desktop> desktop, OSG::NativeWindow window)
{
    _desktop = std::move(desktop);
    _window->setHwnd(window);
    OSG::Desktop::setCurrent(_desktop);
}

std::string Engines::walkMissing() const
{
    if(_desktop == nullptr)
        return "this desktop gives no keys";
    char const *const missing = _desktop->missing();
    return missing != nullptr ? missing : "";
}

bool Engines::choose(std::string const &name)
{
    if(name == "walk" && !walkMissing().empty())
        return false;
    EnginePtr const engine = make_engine(name);
    if(engine == nullptr)
        return false;
    _events.setWalkGuard(nullptr);
    _guard.reset();
    _view.setEngine(engine);
    _walk = dynamic_cast<OSG::WASDWalkEngine *>(engine.get());
    if(_walk != nullptr)
        _guard = std::make_unique<OSG::WalkFocusGuard>(_view.getNavigator(), *_walk, _desktop);
    _events.setWalkGuard(_guard.get());
    _events.setIdlesInDrags(_walk != nullptr);
    _name = name;
    fitStep();
    return true;
}

// A walking person measures in the scene's own units; the others in parts of the scene.
void Engines::fitStep()
{
    constexpr OSG::Real32 StepsAcross = 50;
    OSG::BoxVolume const box = _view.getBounds().box;
    OSG::Real32 const extent = box.isEmpty() ? 1 : (box.getMax() - box.getMin()).length();
    bool const isScaled = _walk == nullptr && extent > 0;
    _view.getNavigator().setMotionFactor(isScaled ? extent / StepsAcross : 1);
}
} // namespace Viewer
