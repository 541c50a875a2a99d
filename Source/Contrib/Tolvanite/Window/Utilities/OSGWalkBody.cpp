#include "OSGWalkBody.h"

#include <sstream>

#include "OSGNavigationMath.h"

namespace OSG
{
namespace WalkBody
{
using NavigationMath::unit;

WalkFrame frame_of(Pnt3f const &from, Pnt3f const &at, Vec3f const &up)
{
    Vec3f const backward = unit(from - at);
    WalkFrame frame;
    frame.up = unit(up);
    frame.back = unit(backward - backward.dot(frame.up) * frame.up);
    frame.left = unit(frame.back.cross(frame.up));
    return frame;
}

namespace
{
/// The vectors from the head point to the sides of a box.
struct Sides
{
    Vec3f deepBack, deepLeft, deepUp; // as long as the box is deep
    Vec3f chest;                      // half the depth of the body, along back
    Vec3f shoulder;                   // half the width, along left
    Vec3f body;                       // the whole height, along up
};

// The corners are sums in the order back, left, up: this order belongs to the result.

Frustum forward_box(Pnt3f const &p, Sides const &s)
{
    Pnt3f const deep = p - s.deepBack;
    return Frustum(deep - s.shoulder - s.body, deep + s.shoulder - s.body, deep + s.shoulder,
                   deep - s.shoulder, p - s.shoulder - s.body, p + s.shoulder - s.body,
                   p + s.shoulder, p - s.shoulder);
}

Frustum backward_box(Pnt3f const &p, Sides const &s)
{
    Pnt3f const deep = p + s.deepBack;
    return Frustum(deep + s.shoulder - s.body, deep - s.shoulder - s.body, deep - s.shoulder,
                   deep + s.shoulder, p + s.shoulder - s.body, p - s.shoulder - s.body,
                   p - s.shoulder, p + s.shoulder);
}

Frustum left_box(Pnt3f const &p, Sides const &s)
{
    Pnt3f const behind = p + s.chest;
    Pnt3f const before = p - s.chest;
    return Frustum(behind - s.body, before - s.body, before, behind, behind + s.deepLeft - s.body,
                   before + s.deepLeft - s.body, before + s.deepLeft, behind + s.deepLeft);
}

Frustum right_box(Pnt3f const &p, Sides const &s)
{
    Pnt3f const behind = p + s.chest;
    Pnt3f const before = p - s.chest;
    return Frustum(before - s.body, behind - s.body, behind, before, before - s.deepLeft - s.body,
                   behind - s.deepLeft - s.body, behind - s.deepLeft, before - s.deepLeft);
}

Frustum down_box(Pnt3f const &p, Sides const &s)
{
    Pnt3f const behind = p + s.chest;
    Pnt3f const before = p - s.chest;
    return Frustum(before - s.shoulder - s.deepUp, before + s.shoulder - s.deepUp,
                   before + s.shoulder, before - s.shoulder, behind - s.shoulder - s.deepUp,
                   behind + s.shoulder - s.deepUp, behind + s.shoulder, behind - s.shoulder);
}

Frustum up_box(Pnt3f const &p, Sides const &s)
{
    Pnt3f const behind = p + s.chest;
    Pnt3f const before = p - s.chest;
    return Frustum(before + s.shoulder + s.deepUp, before - s.shoulder + s.deepUp,
                   before - s.shoulder, before + s.shoulder, behind + s.shoulder + s.deepUp,
                   behind - s.shoulder + s.deepUp, behind - s.shoulder, behind + s.shoulder);
}
} // namespace

Frustum box(FrustumType type, Pnt3f const &position, WalkFrame const &frame,
            WalkSettings const &person, Real32 distance)
{
    // Rounding of the step must not leave a wall outside that the person would reach.
    constexpr Real32 DepthFactor = 1.2f;
    Real32 const depth = DepthFactor * distance;
    Sides const sides{depth * frame.back,
                      depth * frame.left,
                      depth * frame.up,
                      0.5f * person.fatness * frame.back,
                      0.5f * person.width * frame.left,
                      person.height * frame.up};
    switch(type)
    {
    case ForwardFrustum:
        return forward_box(position, sides);
    case BackwardFrustum:
        return backward_box(position, sides);
    case LeftFrustum:
        return left_box(position, sides);
    case RightFrustum:
        return right_box(position, sides);
    case DownFrustum:
        return down_box(position, sides);
    case UpFrustum:
        return up_box(position, sides);
    }
    return Frustum();
}

namespace
{
std::string text_of(Pnt3f const &point)
{
    std::ostringstream text;
    text << '(' << point[0] << ", " << point[1] << ", " << point[2] << ')';
    return text.str();
}
} // namespace

std::string text_of(Frustum const &box, Pnt3f const &from, Pnt3f const &to)
{
    std::string text = "from = " + text_of(from) + "  --> to   = " + text_of(to) + '\n';
    text += "nlb = " + text_of(box.nlb()) + "\nnrb = " + text_of(box.nrb()) +
            "\nnrt = " + text_of(box.nrt()) + "\nnlt = " + text_of(box.nlt()) + "\n\n";
    text += "flb = " + text_of(box.flb()) + "\nfrb = " + text_of(box.frb()) +
            "\nfrt = " + text_of(box.frt()) + "\nflt = " + text_of(box.flt()) + "\n\n";
    return text;
}
} // namespace WalkBody
} // namespace OSG
