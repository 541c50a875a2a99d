#include "OSGBeaconPose.h"

#include "OSGCamera.h"
#include "OSGTransform.h"

namespace OSG
{
bool pose_beacon(Camera const *camera, Matrix const &pose)
{
    Node *const beacon = camera != nullptr ? camera->getBeacon() : nullptr;
    auto *const transform =
        beacon != nullptr ? dynamic_cast<Transform *>(beacon->getCore()) : nullptr;
    if(transform == nullptr)
        return false;
    Matrix local = pose; // the matrix of the beacon's own transform
    Matrix const above =
        beacon->getParent() != nullptr ? beacon->getParent()->getToWorld() : Matrix();
    if(!(above == Matrix()))
    {
        Matrix below;
        if(!below.invertFrom(above))
            return false;
        local = below * pose;
    }
    // An unchanged matrix is not written: every edit would invalidate the volumes above.
    if(!(local == transform->getMatrix()))
        transform->setMatrix(local);
    return true;
}
} // namespace OSG
