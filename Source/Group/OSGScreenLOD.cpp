#include "OSGScreenLOD.h"

#include <algorithm>

#include "OSGNode.h"
#include "OSGRenderHandlers.h"

namespace OSG
{
ScreenLOD::~ScreenLOD() = default;

namespace
{
/// Range of a normalised coordinate, within the picture.
struct Extent
{
    Real64 low = 1;
    Real64 high = -1;

    void extendBy(Real64 coordinate)
    {
        Real64 const clipped = std::clamp(coordinate, -1., 1.);
        low = std::min(low, clipped);
        high = std::max(high, clipped);
    }
    Real64 share() const { return std::max(0., (high - low) / 2); }
};

// Share of the picture that the box covers, which lies in a space that `toClip` leads out of.
Real64 covered_share(BoxVolume const &box, Matrix4d const &toClip)
{
    if(box.isEmpty())
        return 0;
    if(box.isInfinite())
        return 1;
    Extent x;
    Extent y;
    for(int corner = 0; corner < 8; ++corner)
    {
        Real64 clip[4];
        for(std::size_t r = 0; r < 4; ++r)
        {
            clip[r] = toClip[3][r];
            for(std::size_t c = 0; c < 3; ++c)
                clip[r] += toClip[c][r] * ((corner >> c & 1) != 0 ? box.getMax() : box.getMin())[c];
        }
        if(!(clip[2] >= -clip[3]) || !(clip[3] > 0))
            return 1;
        x.extendBy(clip[0] / clip[3]);
        y.extendBy(clip[1] / clip[3]);
    }
    return x.share() * y.share();
}

void show_level(NodeCore &core, RenderAction &action)
{
    ScreenLOD const &levels = static_cast<ScreenLOD &>(core);
    if(action.getNNodes() == 0)
        return;
    Matrix4d const toClip = Matrix4d(action.getDrawEnv().getCameraProjection()) *
                            Matrix4d(action.getActivePartition()->getCurrentMatrix().matrix);
    Real64 const share = covered_share(action.getActNode()->getVolume(), toClip);
    auto const &coverage = *levels.getMFCoverage();
    auto const above = std::count_if(coverage.begin(), coverage.end(),
                                     [share](Real32 limit) { return limit > share; });
    show_child(action, std::min(static_cast<UInt32>(above), action.getNNodes() - 1));
}
} // namespace

void ScreenLOD::initMethod(TypeBase::InitPhase phase)
{
    ScreenLODBase::initMethod(phase);
    if(phase == TypeBase::SystemPost)
        register_render_choice(getClassType(), &show_level, Action::HandlerPromise::KeepsScene);
}
} // namespace OSG
