#include "OSGCameraView.h"

#include "OSGCamera.h"
#include "OSGNode.h"

namespace OSG
{
namespace
{
// The inverse of the beacon's matrix before it was rounded; that of a camera which views otherwise
// is taken as it is.
Matrix4d exact_viewing(Camera const &camera, Matrix const &viewing)
{
    Matrix4d exact;
    bool const hasInverse = camera.getBeacon() != nullptr &&
                            exact.invertFrom(Matrix4d(camera.getBeacon()->getToWorld()));
    return hasInverse && Matrix(exact) == viewing ? exact : Matrix4d(viewing);
}
} // namespace

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
    env.setView(cameraToWorld, exact_viewing(camera, viewing), projection * translation, pixels);
}
} // namespace OSG
