#pragma once

#include "OSGEyePose.h"
#include "OSGUserNavigatorEngine.h"

namespace OSG
{
/// Free flight without collision.
///
/// A move of the pointer turns the camera about its own position. While the left or the right
/// button is down, every move of the pointer also takes a step forwards or backwards. The wheel and
/// the keys take single steps.
///
/// A step is the navigator's motion factor long. A turn by a key is the navigator's rotation angle.
/// Both happen once per event; the engine has no clock. The camera starts in the origin and looks
/// along +z.
class OSG_CONTRIBTOLVANITE_API WASDFlyEngine : public UserNavigatorEngine
{
  public:
    static TransitPtr<WASDFlyEngine> create();
    static char const *getClassname() { return "WASDFlyEngine"; }

    // --- pose ---
    Pnt3f const &getFrom() override;
    Pnt3f const &getAt() override;
    Vec3f const &getUp() override;
    /// If `from` and `at` coincide or `up` is parallel to the view, the matrix of the last pose for
    /// which this was not so.
    Matrix const &getMatrix() override;
    /// Always 0.
    Real32 getDistance() override;
    void setFrom(Pnt3f from) override;
    void setAt(Pnt3f at) override;
    void setUp(Vec3f up) override;
    /// Puts `at` one unit in front of the camera.
    void set(Matrix const &matrix) override;
    void set(Pnt3f from, Pnt3f at, Vec3f up) override;
    /// Calls forward(): the camera takes a step, and no distance is stored.
    void setDistance(Real32 distance) override;

    // --- events ---
    /// The left button begins a flight forwards, the right button one backwards. The middle button
    /// only turns. The wheel takes a step.
    void buttonPress(Int16 button, Int16 x, Int16 y, Navigator *navigator) override;
    void buttonRelease(Int16 button, Int16 x, Int16 y, Navigator *navigator) override;
    /// Turns, whatever button is down. Then takes a step if a flight is under way.
    void moveTo(Int16 x, Int16 y, Navigator *navigator) override;
    void idle(Int16 button, Int16 x, Int16 y, Navigator *navigator) override;
    /// Knows the navigation keys. It does not know virtual-key codes.
    void keyPressEx(Int16 key, UInt16 modifiers, Int16 x, Int16 y, Navigator *navigator) override;
    void mouseMove(Int16 x, Int16 y, Navigator *navigator) override;
    void killFocus(Navigator *navigator) override;

    // --- motion ---
    /// Turns to the right by `deltaX` and down by `deltaY`, in radians. `up` does not change. The
    /// view may pass the vertical.
    virtual void rotate(Real32 deltaX, Real32 deltaY);
    /// A positive step moves the camera backwards, away from `at`. Returns 0.
    virtual Real32 forward(Real32 step);
    /// A positive step moves the camera to its left. Returns 0.
    virtual Real32 right(Real32 step);

  protected:
    /// The kind of flight that is under way, kept in `_state`.
    enum Flight : Int32
    {
        NoFlight = 0,
        RotateOnly = 1, ///< the engine treats it like NoFlight
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
