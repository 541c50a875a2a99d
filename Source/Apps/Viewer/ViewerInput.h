#pragma once

#include <set>

#include "Gui.h"
#include "MenuCommand.h"
#include "Session.h"
#include "SpaceMouse.h"
#include "ViewerWindow.h"

namespace Viewer
{
/// Between what a user does at the window and the session: panels come first, then commands, then
/// the tool in hand and the engine.
class ViewerInput : private WindowListener
{
  public:
    /// Keeps references, all of which have to outlive it. Listens to the window until it ends.
    ViewerInput(ViewerWindow &window, Gui const &gui, Session &session, Commands const &commands);
    ~ViewerInput() override;
    ViewerInput(ViewerInput const &) = delete;
    ViewerInput &operator=(ViewerInput const &) = delete;

    /// Once per turn, `passed` seconds after the last one: whose the pointer and the keyboard are,
    /// what is hovered over, what the 3D mouse does.
    void follow(double passed);
    /// Whether a key or the cap of the 3D mouse is held, so that frames have to follow.
    bool isHeld() const;

  private:
    struct Place
    {
        double x = 0;
        double y = 0;
    };
    Place placeOfEvent() const;
    void followSpaceMouse(double passed);

    void pointerMoved(double x, double y) override;
    void buttonPressed(OSG::Int16 button, OSG::UInt16 modifiers) override;
    void buttonReleased(OSG::Int16 button, OSG::UInt16 modifiers) override;
    void wheelTurned(double steps) override;
    void keyPressed(OSG::Int16 code, OSG::UInt16 modifiers) override;
    void keyReleased(OSG::Int16 code, OSG::UInt16 modifiers) override;
    void characterTyped(unsigned int character) override;
    void focusLost() override;
    void filesDropped(std::vector<std::string> const &files) override;

    ViewerWindow &_window;
    Gui const &_gui;
    Session &_session;
    Commands const &_commands;
    std::set<OSG::Int16> _keysDown;
    SpaceMouse _spaceMouse{ViewerWindow::wake};
    bool _isSpaceMouseHeld = false;
};
} // namespace Viewer
