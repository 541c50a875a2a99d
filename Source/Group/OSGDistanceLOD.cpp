#include "OSGDistanceLOD.h"

#include <algorithm>

#include "OSGRenderHandlers.h"

namespace OSG
{
DistanceLOD::~DistanceLOD() = default;

namespace
{
// Eye coordinates may be scaled, so both points go back to world space.
Real64 eye_distance(RenderAction &action, Pnt3f const &center)
{
    Matrix4d const toWorld(action.getDrawEnv().getCameraToWorld());
    Matrix4d const toEye(action.getActivePartition()->getCurrentMatrix().matrix);
    Pnt3d const point = toWorld * (toEye * Pnt3d(center[0], center[1], center[2]));
    return (point - toWorld * Pnt3d(0., 0., 0.)).length();
}

void show_level(NodeCore &core, RenderAction &action)
{
    DistanceLOD const &levels = static_cast<DistanceLOD &>(core);
    if(action.getNNodes() == 0)
        return;
    Real64 const distance = eye_distance(action, levels.getCenter());
    auto const &range = *levels.getMFRange();
    auto const passed = std::count_if(range.begin(), range.end(),
                                      [distance](Real32 limit) { return limit <= distance; });
    show_child(action, std::min(static_cast<UInt32>(passed), action.getNNodes() - 1));
}
} // namespace

void DistanceLOD::initMethod(TypeBase::InitPhase phase)
{
    DistanceLODBase::initMethod(phase);
    if(phase == TypeBase::SystemPost)
        register_render_choice(getClassType(), &show_level, Action::HandlerPromise::KeepsScene);
}
} // namespace OSG
