#include "OSGOverlayDepths.h"

#include <algorithm>

#include "OSGPictureView.h"
#include "OSGSceneBounds.h"

namespace OSG
{
namespace
{
constexpr Real64 DeepestRatio = 10000;
constexpr Real64 RoomOfWindow = 0.1;

void widen(ViewDepths &depths, ViewDepths const &by)
{
    if(!by.isVisible())
        return;
    depths.farSide = std::max(depths.farSide, by.farSide);
    depths.nearSide =
        std::max(std::min(depths.nearSide, by.nearSide), depths.farSide / DeepestRatio);
}
} // namespace

ViewDepths with_overlay(ViewDepths const &depths, SceneBounds const &overlay,
                        WindowView const &view, Matrix const &camera)
{
    ViewDepths result = depths;
    if(!overlay.box.isEmpty())
        widen(result, picture_depths({overlay.box}, camera));
    BoxVolume origins;
    for(Pnt3f const &origin : overlay.infiniteOrigins)
        origins.extendBy(origin);
    if(origins.isEmpty())
        return result;
    ViewDepths kept = picture_depths({origins}, camera);
    kept.nearSide -= RoomOfWindow * shown_height(view, kept.nearSide);
    widen(result, kept);
    return result;
}
} // namespace OSG
