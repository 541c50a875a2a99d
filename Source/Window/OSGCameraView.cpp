#include "OSGCameraView.h"

#include "OSGCamera.h"

namespace OSG
{
void set_camera_view(DrawEnv &env, Camera const &camera, DrawEnv::PixelBounds const &pixels)
{
    UInt32 const width = static_cast<UInt32>(pixels.width());
    UInt32 const height = static_cast<UInt32>(pixels.height());
    Matrix viewing;
    Matrix cameraToWorld;
    Matrix projection;
    Matrix translation;
    camera.getViewing(viewing, width, height);
    camera.getProjection(projection, width, height);
    camera.getProjectionTranslation(translation, width, height);
    cameraToWorld.invertFrom(viewing);
    env.setView(cameraToWorld, viewing, projection * translation, pixels);
}
} // namespace OSG
