#include "OSGScenePicker.h"

#include <utility>

#include "OSGPointerTool.h"
#include "OSGSceneView.h"
#include "OSGSelectionSet.h"

namespace OSG
{
ScenePicker::ScenePicker(SceneView &view)
    : _view(view)
{
}

ScenePicker::~ScenePicker() = default;

std::optional<PickRegion> ScenePicker::cut(std::optional<PickRegion> region) const
{
    if(region)
        region->cut(_view.getSections());
    return region;
}

std::optional<PickRegion> ScenePicker::regionAt(Pnt2f const &pixel, Real32 radius) const
{
    return cut(PickRegion::ofRectangle(_view.getView(), pixel_square(pixel[0], pixel[1], radius),
                                       _view.getBounds(), radius));
}

std::optional<PickRegion> ScenePicker::regionOf(PixelArea const &area) const
{
    return cut(PickRegion::ofRectangle(_view.getView(), area, _view.getBounds()));
}

std::optional<PickRegion> ScenePicker::regionOf(std::vector<Pnt2f> const &lasso) const
{
    return cut(PickRegion::ofLasso(_view.getView(), lasso, _view.getBounds()));
}

PickSettings ScenePicker::settings(bool enclosed) const
{
    PickSettings settings;
    settings.kinds = _kinds;
    settings.enclosed = enclosed;
    settings.appearances = &_view.getRenderAction()->getAppearances();
    return settings;
}

PickSelector *ScenePicker::selector()
{
    Node *const scene = _view.getScene();
    if(scene == nullptr)
        _selector.reset();
    else if(_selector == nullptr || _selector->getRoot() != scene)
        _selector = std::make_unique<PickSelector>(scene);
    if(scene != nullptr)
        scene->updateVolume();
    return _selector.get();
}

std::vector<PickResult> ScenePicker::results(PickRegion const &region, bool enclosed)
{
    PickSelector *const inScene = selector();
    return inScene != nullptr ? pick_results(*inScene, region, settings(enclosed))
                              : std::vector<PickResult>();
}

std::optional<PickResult> ScenePicker::foremost(Pnt2f const &pixel, Real32 radius)
{
    std::optional<PickRegion> const region = regionAt(pixel, radius);
    if(!region)
        return {};
    std::vector<PickResult> found = results(*region);
    return found.empty() ? std::nullopt : std::optional<PickResult>(std::move(found.front()));
}

void select(SelectionSet &selection, std::vector<PickResult> const &results, UInt16 modifiers)
{
    SelectionSet::Items items;
    items.reserve(results.size());
    for(PickResult const &result : results)
        items.push_back({result.path, static_cast<SelectionSet::Kinds>(result.kind)});
    if((modifiers & PointerTool::Control) != 0)
        selection.toggle(items);
    else if((modifiers & PointerTool::Shift) != 0)
        selection.add(items);
    else
        selection.replace(items);
}
} // namespace OSG
