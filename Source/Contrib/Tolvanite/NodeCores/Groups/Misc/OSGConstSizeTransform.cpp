#include "OSGConstSizeTransform.h"

#include "OSGIntersectAction.h"
#include "OSGRenderAction.h"
#include "OSGScreenSize.h"

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

RenderPartition &partition_of(Action *action)
{
    return *dynamic_cast<RenderAction &>(*action).getActivePartition();
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
    RenderAction::registerEnterDefault(
        getClassType(), [](NodeCore *core, Action *action)
        { return static_cast<ConstSizeTransform *>(core)->renderEnter(action); });
    RenderAction::registerLeaveDefault(
        getClassType(), [](NodeCore *core, Action *action)
        { return static_cast<ConstSizeTransform *>(core)->renderLeave(action); });
}

void ConstSizeTransform::calcMatrix(Action *action)
{
    RenderPartition const &partition = partition_of(action);
    DrawEnv const &env = partition.getDrawEnv();
    Matrix matrix = partition.getCurrentMatrix().matrix;
    matrix.mult(getMatrix());
    matrix.multLeft(env.getCameraToWorld());
    Real32 const size = unit_on_screen(env, matrix * Pnt3f(0, 0, 0));
    Matrix scale;
    scale.setScale(getDistance() / size);
    matrix.mult(scale);
    if(matrix.equals(getTransform(), ScreenSizeEpsilon))
        return;
    setTransform(matrix);
    NodeCore::invalidateVolume();
}

ActionBase::ResultE ConstSizeTransform::renderEnter(Action *action)
{
    calcMatrix(action);
    dynamic_cast<RenderAction &>(*action).pushVisibility();
    partition_of(action).pushMatrix(getTransform());
    return ActionBase::Continue;
}

ActionBase::ResultE ConstSizeTransform::renderLeave(Action *action)
{
    partition_of(action).popMatrix();
    partition_of(action).popVisibility();
    return ActionBase::Continue;
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
