#pragma once

#include "OSGEyePose.h"
#include "OSGUserNavigatorEngine.h"

namespace OSG
{
/// Free flight: the pointer turns the camera about its own position, a held left or right button
/// flies on with every move of the pointer, the wheel and the keys take single steps.
///
/// Steps are the navigator's motion factor, turns its rotation angle, per event: there is no clock
/// and no collision. Starts in the origin, looking along +z.
class OSG_CONTRIBTOLVANITE_API WASDFlyEngine : public UserNavigatorEngine
{
  public:
    static TransitPtr<WASDFlyEngine> create();
    static char const *getClassname() { return "WASDFlyEngine"; }

    // --- pose ---
    Pnt3f const &getFrom() override;
    Pnt3f const &getAt() override;
    Vec3f const &getUp() override;
    /// Where `from` and `at` coincide or `up` runs along the view, the last one there was.
    Matrix const &getMatrix() override;
    /// Always 0.
    Real32 getDistance() override;
    void setFrom(Pnt3f from) override;
    void setAt(Pnt3f at) override;
    void setUp(Vec3f up) override;
    /// Looks at a point one unit in front of the camera.
    void set(Matrix const &matrix) override;
    void set(Pnt3f from, Pnt3f at, Vec3f up) override;
    /// The same as forward(): a step, no setting.
    void setDistance(Real32 distance) override;

    // --- events ---
    /// Left: fly forwards, right: backwards, middle: only turn; wheel: a step either way.
    void buttonPress(Int16 button, Int16 x, Int16 y, Navigator *navigator) override;
    void buttonRelease(Int16 button, Int16 x, Int16 y, Navigator *navigator) override;
    /// Turns, whatever button is down, then takes the step of a flight.
    void moveTo(Int16 x, Int16 y, Navigator *navigator) override;
    void idle(Int16 button, Int16 x, Int16 y, Navigator *navigator) override;
    /// Navigation keys; virtual-key codes are not known here.
    void keyPressEx(Int16 key, UInt16 modifiers, Int16 x, Int16 y, Navigator *navigator) override;
    void mouseMove(Int16 x, Int16 y, Navigator *navigator) override;
    void killFocus(Navigator *navigator) override;

    // --- motion ---
    /// Turns to the right by `deltaX` and down by `deltaY`, in radians. Up stays, and nothing
    /// stops the view at the vertical.
    virtual void rotate(Real32 deltaX, Real32 deltaY);
    /// Moves backwards, away from what is looked at, for positive steps. Returns 0.
    virtual Real32 forward(Real32 step);
    /// Moves to the camera's left for positive steps. Returns 0.
    virtual Real32 right(Real32 step);

  protected:
    /// What the drag does, in `_state`.
    enum Flight : Int32
    {
        NoFlight = 0,
        RotateOnly = 1, ///< the same as none
        Forwards = 10,
        Backwards = 11
    };

    WASDFlyEngine();
    ~WASDFlyEngine() override;

  private:
    EyePose _pose;
    Matrix _matrix;
};
} // namespace OSG
