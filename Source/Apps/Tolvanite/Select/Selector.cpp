#include "Selector.h"

#include "Stopwatch.h"

namespace Tool
{
Selector::Selector(OSG::Node *root, bool usesIndex)
    : _bounds(OSG::bounds_of(root))
    , _selector(root, usesIndex)
{
}

Selection Selector::select(SelectionSettings const &settings, VolumeChoice const &choice)
{
    Selection result;
    result.eye = choice.eye();
    std::optional<OSG::PickRegion> const region = choice.inScene(_bounds);
    if(!region)
        return result;
    Stopwatch const watch;
    result.hits = &_selector.select(*region, settings);
    result.seconds = watch.seconds();
    result.isIndexed = _selector.wasIndexed();
    return result;
}
} // namespace Tool
