#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "OSGPickResult.h"
#include "OSGPickSelector.h"

namespace OSG
{
class SceneView;
class SelectionSet;

/// Selects in what a SceneView shows: places of its window stand for regions of its scene, cut by
/// its sections, and what its action hides is passed over.
///
///     auto const region = picker.regionAt(click.pixel, DefaultPickRadius * click.scale);
///     if(region)
///         select(selection, picker.results(*region), click.modifiers);
class OSG_TOLVANITEKIT_API ScenePicker
{
  public:
    /// Keeps a reference to the view, which has to outlive the picker.
    explicit ScenePicker(SceneView &view);
    ~ScenePicker();
    ScenePicker(ScenePicker const &) = delete;
    ScenePicker &operator=(ScenePicker const &) = delete;

    /// Bits of SelectionFunctor::SelectionType; triangles at first.
    void setKinds(UInt32 kinds) { _kinds = kinds; }
    UInt32 getKinds() const { return _kinds; }

    // --- regions, in device pixels of the window; none where there is no scene in the view ---
    /// The square around a pixel.
    std::optional<PickRegion> regionAt(Pnt2f const &pixel, Real32 radius = DefaultPickRadius) const;
    std::optional<PickRegion> regionOf(PixelArea const &area) const;
    std::optional<PickRegion> regionOf(std::vector<Pnt2f> const &lasso) const;

    // --- answers; the volumes of the scene are brought up to date ---
    /// See pick_results.
    std::vector<PickResult> results(PickRegion const &region, bool enclosed = false);
    /// What is in front at a pixel.
    std::optional<PickResult> foremost(Pnt2f const &pixel, Real32 radius = DefaultPickRadius);
    /// What is looked for, for a PickSelector.
    PickSettings settings(bool enclosed = false) const;
    /// In the scene as it is now. Null without one.
    PickSelector *selector();

  private:
    std::optional<PickRegion> cut(std::optional<PickRegion> region) const;

    SceneView &_view;
    UInt32 _kinds = SelectionFunctor::SelectTriangles;
    std::unique_ptr<PickSelector> _selector;
};

/// Makes results the selection: alone, added with Shift, toggled with Control (bits of
/// PointerTool::Modifier). Nothing at all with no modifier clears the selection.
OSG_TOLVANITEKIT_API void select(SelectionSet &selection, std::vector<PickResult> const &results,
                                 UInt16 modifiers);
} // namespace OSG
