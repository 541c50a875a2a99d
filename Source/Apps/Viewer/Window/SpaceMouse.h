#pragma once

#include <memory>
#include <optional>

#include "OSGVector.h"

namespace Viewer
{
/// A 3D mouse, by the daemon that serves it. Without the daemon, and where its library was missing
/// when the viewer was built, there is none.
class SpaceMouse
{
  public:
    /// How the cap is held: pushed and turned along its axes, x to the right, y upwards, z towards
    /// the user, each from about -1 to 1.
    struct Deflection
    {
        OSG::Vec3f push;
        OSG::Vec3f turn;

        bool isAtRest() const { return push == OSG::Vec3f() && turn == OSG::Vec3f(); }
    };

    /// `wake` lets the host's wait for events return. It is called by another thread when there is
    /// something to read.
    explicit SpaceMouse(void (*wake)());
    ~SpaceMouse();
    SpaceMouse(SpaceMouse const &) = delete;
    SpaceMouse &operator=(SpaceMouse const &) = delete;

    bool isThere() const { return _listener != nullptr; }
    /// Reads what has come; the deflection now.
    Deflection const &read();

  private:
    class Listener;

    std::unique_ptr<Listener> _listener;
    Deflection _deflection;
};
} // namespace Viewer
