#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "OSGBandTool.h"
#include "OSGHover.h"
#include "OSGLassoTool.h"
#include "OSGScenePicker.h"
#include "OSGSceneView.h"
#include "OSGSelectionHighlight.h"
#include "OSGSelectionSet.h"
#include "Timing.h"

namespace Viewer
{
/// What was asked of the scene, for a report.
struct Question
{
    enum class Kind : OSG::UInt8
    {
        Pick,
        Band,
        Lasso
    };

    Kind kind = Kind::Pick;
    OSG::WindowView view = {};
    std::vector<OSG::Pnt2f> corners = {}; ///< the pixel; two corners; the polygon
    OSG::Real32 radius = OSG::DefaultPickRadius;
    bool enclosed = false;
};

/// What is selected, hovered over, measured and hidden.
class Picking
{
  public:
    /// `answered` hears of each question with its region, if there is one, after it is answered.
    using Answered =
        std::function<void(Question const &question, std::optional<OSG::PickRegion> const &region)>;

    explicit Picking(OSG::SceneView &view);
    ~Picking();
    Picking(Picking const &) = delete;
    Picking &operator=(Picking const &) = delete;

    void setAnswered(Answered answered) { _answered = std::move(answered); }

    // --- what tools give ---
    void click(OSG::PointerTool::Event const &click);
    void band(OSG::BandTool::Band const &band);
    void lasso(OSG::LassoTool::Lasso const &lasso);
    /// The point under a click, for a measurement.
    std::optional<OSG::Pnt3f> pointAt(OSG::PointerTool::Event const &click);
    void measure(std::vector<OSG::Pnt3f> const &points) { _measured = points; }

    // --- what lies under the last click, to step through ---
    OSG::PickCycle const &getUnderClick() const { return _underClick; }
    /// Selects the one `steps` behind the current one; below 0 in front of it.
    void selectOther(int steps);

    // --- hover; without a pixel the pointer is elsewhere ---
    void hoverAt(std::optional<OSG::Pnt2f> const &pixel);
    /// Once a frame after the commit. Whether the picture has changed.
    bool updateHover();
    std::optional<OSG::PickResult> const &getHovered() const { return _hover.getAnswer(); }
    /// Of the questions that the hover has asked.
    Timing const &getHoverTiming() const { return _hoverTiming; }

    // --- selection ---
    OSG::SelectionSet &getSelection() { return _selection; }
    OSG::ScenePicker &getPicker() { return _picker; }
    void selectPath(OSG::NodePath const &path, OSG::UInt16 modifiers);
    /// What was clicked last, for the panel that shows it.
    std::optional<OSG::PickResult> const &getClicked() const { return _clicked; }
    std::vector<OSG::Pnt3f> const &getMeasured() const { return _measured; }

    // --- what is drawn ---
    void hideSelection();
    void isolateSelection();
    void showAll();
    bool isAnythingHidden() const;

    /// There is another scene: nothing of the one before is selected, hidden or measured.
    void forget();

  private:
    void choose(std::vector<OSG::PickResult> const &results, OSG::UInt16 modifiers);
    void select(Question const &question, std::optional<OSG::PickRegion> const &region,
                std::vector<OSG::PickResult> const &results, OSG::UInt16 modifiers);
    std::optional<OSG::PickResult> hovered(OSG::Pnt2f const &pixel);

    OSG::SceneView &_view;
    OSG::ScenePicker _picker;
    OSG::SelectionSet _selection;
    OSG::SelectionSet _hovered; // at most one
    OSG::SelectionHighlight _hoverHighlight;
    OSG::SelectionHighlight _highlight; // after that of the hover: it is shown where both are
    OSG::Hover<OSG::PickResult> _hover;
    Timing _hoverTiming;
    OSG::PickCycle _underClick;
    std::optional<OSG::PickResult> _clicked;
    std::vector<OSG::Pnt3f> _measured;
    Answered _answered;
};
} // namespace Viewer
