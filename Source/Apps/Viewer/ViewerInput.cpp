#include "ViewerInput.h"

#include "EngineKeys.h"
#include "OSGFileSuffix.h"

namespace Viewer
{
ViewerInput::ViewerInput(ViewerWindow &window, Gui const &gui, Session &session,
                         Commands const &commands)
    : _window(window)
    , _gui(gui)
    , _session(session)
    , _commands(commands)
{
    _window.setListener(this);
}

ViewerInput::~ViewerInput() { _window.setListener(nullptr); }

void ViewerInput::follow(double passed)
{
    bool const isInView = !_gui.wantsPointer() && !_session.events.isDragging();
    bool const isPlaying = _session.recordings.isPlaying();
    _session.events.setPointerTaken(_gui.wantsPointer() || isPlaying);
    _session.events.setKeyboardTaken(_gui.wantsKeyboard() || isPlaying);
    _session.picking.hoverAt(isInView ? std::optional(_session.events.getPointer()) : std::nullopt);
    followSpaceMouse(passed);
}

// The trackball moves with the events of keys alone.
bool ViewerInput::isHeld() const
{
    return _isSpaceMouseHeld || (!_keysDown.empty() && _session.engines.getName() != "cad");
}

void ViewerInput::followSpaceMouse(double passed)
{
    SpaceMouse::Deflection const &held = _spaceMouse.read();
    _isSpaceMouseHeld = !held.isAtRest();
    auto const time = static_cast<OSG::Real32>(passed);
    if(_isSpaceMouseHeld)
        _session.moveBy(held.push * time, held.turn * time);
}

ViewerInput::Place ViewerInput::placeOfEvent() const
{
    Place place;
    _window.getPointerOfEvent(place.x, place.y);
    return place;
}

void ViewerInput::pointerMoved(double x, double y) { _session.events.pointerMove(x, y); }

void ViewerInput::buttonPressed(OSG::Int16 button, OSG::UInt16 modifiers)
{
    auto const [x, y] = placeOfEvent();
    _session.events.setPointerTaken(_gui.isOverPanel(x, y) || _session.recordings.isPlaying());
    _session.events.buttonPress(button, x, y, modifiers);
}

void ViewerInput::buttonReleased(OSG::Int16 button, OSG::UInt16 modifiers)
{
    auto const [x, y] = placeOfEvent();
    _session.events.buttonRelease(button, x, y, modifiers);
}

void ViewerInput::wheelTurned(double steps)
{
    auto const [x, y] = placeOfEvent();
    if(!_gui.isOverPanel(x, y))
        _session.wheel(steps, x, y);
}

void ViewerInput::keyPressed(OSG::Int16 code, OSG::UInt16 modifiers)
{
    _keysDown.insert(code);
    KeyOwner const owner = _gui.wantsKeyboard()                  ? KeyOwner::Text
                           : _session.engines.getName() != "cad" ? KeyOwner::Engine
                                                                 : KeyOwner::Nobody;
    if(run_key(_commands, {code, modifiers}, owner))
        return;
    EngineKey const key = engine_key(_session.engines.getName(), code);
    _session.events.key(key.code, key.modifiers | OSG::NavigatorEvent::KeyDown);
}

void ViewerInput::keyReleased(OSG::Int16 code, OSG::UInt16)
{
    _keysDown.erase(code);
    EngineKey const key = engine_key(_session.engines.getName(), code);
    _session.events.key(key.code, key.modifiers | OSG::NavigatorEvent::KeyUp);
}

void ViewerInput::characterTyped(unsigned int character)
{
    if(!_gui.wantsKeyboard() && takes_character(_session.engines.getName(), character))
        _session.events.key(static_cast<OSG::Int16>(character), OSG::NavigatorEvent::KeyDown);
}

void ViewerInput::focusLost()
{
    _keysDown.clear();
    _session.events.focusLost();
}

void ViewerInput::filesDropped(std::vector<std::string> const &files)
{
    if(files.empty())
        return;
    if(OSG::file_suffix(files.front()) == "events")
        _session.play(files.front(), Recordings::Pace::AsRecorded);
    else
        _session.open(files.front());
}
} // namespace Viewer
