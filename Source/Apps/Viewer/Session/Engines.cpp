#include "Engines.h"

#include <utility>

#include "OSGNamedEngine.h"

namespace Viewer
{
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
    _window->setHwnd(window);
    if(desktop == nullptr)
        return;
    _resting = std::make_shared<OSG::WatchedDesktop>(std::move(desktop));
    _clock = std::make_unique<OSG::RestingClock>(_resting);
    _desktop = std::make_shared<OSG::WatchedDesktop>(_resting);
    OSG::Desktop::setCurrent(_desktop);
}

void Engines::rest()
{
    if(_clock != nullptr)
        _clock->rest();
}

void Engines::wake()
{
    if(_clock != nullptr)
        _clock->wake();
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
    if((name == "walk" && !walkMissing().empty()) || !make(name))
        return false;
    if(_walk != nullptr)
        _guard = std::make_unique<OSG::WalkFocusGuard>(_view.getNavigator(), *_walk, _desktop);
    _events.setWalkGuard(_guard.get());
    return true;
}

bool Engines::make(std::string const &name)
{
    OSG::UnrecordedRefPtr<OSG::NavigatorEngine> const engine(OSG::make_engine(name));
    if(engine == nullptr)
        return false;
    _events.setWalkGuard(nullptr);
    _guard.reset();
    _view.setEngine(engine);
    _walk = dynamic_cast<OSG::WASDWalkEngine *>(engine.get());
    _events.setIdlesInDrags(_walk != nullptr);
    _name = name;
    fitStep();
    return true;
}

std::shared_ptr<OSG::ScriptedDesktop>
Engines::beginReplay(std::optional<OSG::Int64> const &ticksPerSecond)
{
    constexpr OSG::Int64 Milliseconds = 1000; // where no frame is recorded, any will do
    auto desktop = std::make_shared<OSG::ScriptedDesktop>(ticksPerSecond.value_or(Milliseconds));
    desktop->setWindow(getWindow(), {0, 0}, {_window->getWidth(), _window->getHeight()});
    desktop->setFocus(getWindow());
    OSG::Desktop::setCurrent(desktop);
    make(_name);
    return desktop;
}

void Engines::endReplay()
{
    OSG::Desktop::setCurrent(_desktop);
    if(!choose(_name))
        choose("cad");
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
