#include "OSGPicturePaths.h"

#include "OSGImageFileHandler.h"
#include "OSGSceneFileHandler.h"

namespace OSG
{
void find_pictures_beside_scenes()
{
    PathHandler const *const paths = SceneFileHandlerBase::the()->getPathHandler();
    ImageFileHandlerBase &images = *ImageFileHandlerBase::the();
    // A thread that reads may be asking.
    if(images.getPathHandler() != paths)
        images.setPathHandler(paths);
}
} // namespace OSG
