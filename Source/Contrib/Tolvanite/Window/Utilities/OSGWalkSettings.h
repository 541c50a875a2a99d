#pragma once

#include "OSGContribTolvaniteApi.h"
#include "OSGVector.h"

namespace OSG
{
/// The settings of a walk: the person, what it may do, and how fast. Lengths are in the units of
/// the scene; the defaults take them for metres. No value is tested.
struct OSG_CONTRIBTOLVANITE_API WalkSettings
{
    static constexpr Real32 FieldOfViewFactor = 1.2f; ///< one step of a key or of the wheel
    static constexpr Real32 FieldOfViewMax = 120.f;
    static constexpr Real32 FieldOfViewMin = 30.f;

    // --- the person ---
    Real32 height = 1.75f;
    Real32 heightEye = 1.6f;             ///< of the eye above the feet
    Real32 width = 0.5f;                 ///< of the shoulders
    Real32 fatness = 0.2f;               ///< from the back to the chest
    Vec3f normal{1.f, 0, 0};             ///< kept for the host; no motion reads it
    Real32 groundDistance = 0.05f;       ///< kept free below the feet
    Real32 wallDistance = 0.1f;          ///< kept free before the body
    Real32 jumpStaircaseStrength = 0.3f; ///< the highest step of a stair, as a part of `height`
    Real32 jumpStrength = 1.5f;          ///< the highest jump, as a part of `height`
    bool walkMode = true;                ///< the feet stay on the floor
    bool godMode = false;                ///< walls do not stop the person
    bool staircaseMode = true;           ///< false for one step along the view, which may jump

    // --- steps and turns ---
    Real32 motionFactor = 0.2f;
    Real32 motionDelta = 2.f; ///< of one key, in percent
    Real32 motionMultiplier = 1.2f;
    Real32 motionMaxFactor = 10.f;
    Real32 fastMotionFactor = 5.f;
    Real32 slowMotionFactor = 0.2f;
    Real32 rotFactor = 0.2f;
    Real32 rotDelta = 2.f; ///< of one key, in percent
    Real32 rotMultiplier = 1.2f;
    Real32 rotMaxFactor = 10.f;
    Real32 fastRotFactor = 5.f;
    Real32 slowRotFactor = 0.2f;
    UInt32 numStepLoop = 10; ///< tries of a move, and of the search for room above the head

    // --- modes and the view ---
    bool outOfCameraConsole = true;
    bool godPerspectiveConsole = true;
    bool walkConsole = true; ///< console mode, not game mode
    bool rotateOnIdle = false;
    Real32 cameraFieldOfView = 45.f; ///< degrees

    /// The height of the head above the eye.
    Real32 head() const { return height - heightEye; }
    /// The height that a step along the view may rise.
    Real32 jump() const { return height * (staircaseMode ? jumpStaircaseStrength : jumpStrength); }
    void setFieldOfView(Real32 degrees);
};

/// A factor as it is shown to users: in percent of its maximum.
OSG_CONTRIBTOLVANITE_API Real32 percent_of_factor(Real32 factor, Real32 maximum);
/// The factor of a percentage. Negative ones count as 0; the factor is at most the maximum.
OSG_CONTRIBTOLVANITE_API Real32 factor_of_percent(Real32 percent, Real32 maximum);
/// A factor after one step of the wheel, not below 1e-6.
OSG_CONTRIBTOLVANITE_API Real32 decreased_factor(Real32 factor, Real32 multiplier);
/// A factor after one step of the wheel, in absolute value at most the maximum. Keeps its sign.
OSG_CONTRIBTOLVANITE_API Real32 increased_factor(Real32 factor, Real32 multiplier, Real32 maximum);
} // namespace OSG
