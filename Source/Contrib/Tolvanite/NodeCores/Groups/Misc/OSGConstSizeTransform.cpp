#include "OSGConstSizeTransform.h"

#include "OSGIntersectAction.h"

namespace OSG
{
namespace
{
// A direction has no translation and no division by w, a position has both. The action's distances
// count in lengths of the direction, which the matrix may change, so the action is told the ratio.
void carry_ray(IntersectAction &action, Matrix const &matrix)
{
    Line const &line = action.getLine();
    Pnt3f position;
    Vec3f direction;
    matrix.multFull(line.getPosition(), position);
    Vec3f const &d = line.getDirection();
    for(UInt32 i = 0; i < 3; ++i)
        direction[i] = matrix[0][i] * d[0] + matrix[1][i] * d[1] + matrix[2][i] * d[2];
    action.setLine(Line(position, direction), action.getMaxDist());
    action.scale(direction.length());
}
} // namespace

ConstSizeTransform::~ConstSizeTransform() = default;

void ConstSizeTransform::accumulateMatrix(Matrix &matrix) { matrix.mult(getTransform()); }

void ConstSizeTransform::adjustVolume(Volume &volume)
{
    volume.transform(getMatrix());
    volume.setInfinite(true);
}

void ConstSizeTransform::initMethod(TypeBase::InitPhase phase)
{
    Transform::initMethod(phase);
    if(phase != TypeBase::SystemPost)
        return;
    IntersectAction::registerEnterDefault(
        getClassType(),
        [](NodeCore *core, Action *action)
        { return static_cast<ConstSizeTransform *>(core)->intersectEnter(action); },
        Action::HandlerPromise::KeepsScene);
    IntersectAction::registerLeaveDefault(
        getClassType(),
        [](NodeCore *core, Action *action)
        { return static_cast<ConstSizeTransform *>(core)->intersectLeave(action); },
        Action::HandlerPromise::KeepsScene);
}

ActionBase::ResultE ConstSizeTransform::intersectEnter(Action *action)
{
    Matrix inverse;
    inverse.invertFrom(getTransform());
    carry_ray(dynamic_cast<IntersectAction &>(*action), inverse);
    return ActionBase::Continue;
}

ActionBase::ResultE ConstSizeTransform::intersectLeave(Action *action)
{
    carry_ray(dynamic_cast<IntersectAction &>(*action), getTransform());
    return ActionBase::Continue;
}
} // namespace OSG
