#include "OSGThumbnail.h"

#include "OSGOffscreenContext.h"
#include "OSGSceneBounds.h"

namespace OSG
{
Picture thumbnail_of(Node *root, UInt32 width, UInt32 height, Color3f const &background)
{
    OffscreenContext context(width, height);
    return thumbnail_of(context, root, background);
}

Picture thumbnail_of(OffscreenContext &context, Node *root, Color3f const &background)
{
    return draw_picture(context, root,
                        fitted_view(bounds_of(root), context.getWidth(), context.getHeight()),
                        background);
}
} // namespace OSG
