#pragma once

/// \file
/// The directions of a walking person and the boxes around its path.

#include <string>

#include "OSGContribTolvaniteApi.h"
#include "OSGFrustum.h"
#include "OSGWalkSettings.h"

namespace OSG
{
/// The directions of a person. They have length 1, or less where they come from a vector that is
/// shorter than 1e-6.
struct WalkFrame
{
    Vec3f back; ///< away from the point that is looked at, horizontal
    Vec3f left;
    Vec3f up;
};

namespace WalkBody
{
/// The direction in which a box extends from the person.
enum FrustumType : Int32
{
    ForwardFrustum = 0,  ///< along -back
    BackwardFrustum = 1, ///< along back
    LeftFrustum = 2,     ///< along left
    RightFrustum = 3,    ///< along -left
    DownFrustum = 4,     ///< along -up
    UpFrustum = 5        ///< along up
};

OSG_CONTRIBTOLVANITE_API WalkFrame frame_of(Pnt3f const &from, Pnt3f const &at, Vec3f const &up);

/// The box that the body passes on its way from the head point `position` into the direction of
/// `type`. It is 1.2 times as deep as `distance`.
///
/// One of its faces goes through `position`: the far one of a box forwards or backwards, the near
/// one of a box to the side, the top one of a box up or down. Distances of hits from this face are
/// distances from the person. An unknown type gives a box with all corners at the origin.
OSG_CONTRIBTOLVANITE_API Frustum box(FrustumType type, Pnt3f const &position,
                                     WalkFrame const &frame, WalkSettings const &person,
                                     Real32 distance);

/// The corners of a box and a step as lines of text, for a debugger.
OSG_CONTRIBTOLVANITE_API std::string text_of(Frustum const &box, Pnt3f const &from,
                                             Pnt3f const &to);
} // namespace WalkBody
} // namespace OSG
