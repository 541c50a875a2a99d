#include "OSGSelectionBounds.h"

#include "OSGFinite.h"
#include "OSGPlaceMatrix.h"
#include "OSGSelectionSet.h"

namespace OSG
{
BoxVolume bounds_of(SelectionSet const &selection, Node const *root)
{
    BoxVolume bounds;
    selection.forEach(
        [&](NodePath const &path)
        {
            std::optional<Matrix> const place = place_of(path, root);
            if(!place)
                return;
            path.getNode()->updateVolume();
            BoxVolume box = path.getNode()->getVolume();
            if(box.isEmpty())
                return;
            box.transform(*place);
            if(!box.isInfinite() && is_finite(box.getMin()) && is_finite(box.getMax()))
                bounds.extendBy(box);
        });
    return bounds;
}
} // namespace OSG
