#include "Picking.h"

#include <utility>

#include "OSGSimpleMaterial.h"
#include "Stopwatch.h"

namespace Viewer
{
namespace
{
OSG::UnrecordedRefPtr<OSG::Material> colored(OSG::Color3f const &color)
{
    OSG::UnrecordedRefPtr<OSG::SimpleMaterial> const material(OSG::SimpleMaterial::create());
    material->setDiffuse(color);
    material->setAmbient(color);
    return OSG::UnrecordedRefPtr<OSG::Material>(material);
}
} // namespace

Picking::Picking(OSG::SceneView &view)
    : _view(view)
    , _picker(view)
    , _hoverHighlight(_hovered, view.getRenderAction()->editAppearances(),
                      colored(OSG::Color3f(0.35f, 0.65f, 1.f)))
    , _highlight(_selection, view.getRenderAction()->editAppearances(),
                 colored(OSG::Color3f(1.f, 0.5f, 0.05f)))
    , _hover([this](OSG::Pnt2f const &pixel) { return hovered(pixel); })
{
}

Picking::~Picking() = default;

void Picking::click(OSG::PointerTool::Event const &click)
{
    Question question{Question::Kind::Pick, _view.getView(), {click.pixel}};
    question.radius = OSG::DefaultPickRadius * click.scale;
    auto const region = _picker.regionAt(click.pixel, question.radius);
    _underClick =
        OSG::PickCycle(region ? _picker.results(*region) : std::vector<OSG::PickResult>());
    OSG::PickResult const *const foremost = _underClick.current();
    _clicked = foremost != nullptr ? std::optional(*foremost) : std::nullopt;
    select(question, region, _clicked ? std::vector{*_clicked} : std::vector<OSG::PickResult>(),
           click.modifiers);
}

void Picking::band(OSG::BandTool::Band const &band)
{
    OSG::PixelArea const &area = band.area;
    Question question{
        Question::Kind::Band, _view.getView(), {{area.left, area.top}, {area.right, area.bottom}}};
    question.enclosed = band.direction == OSG::BandTool::Direction::LeftToRight;
    auto const region = _picker.regionOf(area);
    select(question, region,
           region ? _picker.results(*region, question.enclosed) : std::vector<OSG::PickResult>(),
           band.modifiers);
}

void Picking::lasso(OSG::LassoTool::Lasso const &lasso)
{
    Question const question{Question::Kind::Lasso, _view.getView(), lasso.corners};
    auto const region = _picker.regionOf(lasso.corners);
    select(question, region, region ? _picker.results(*region) : std::vector<OSG::PickResult>(),
           lasso.modifiers);
}

void Picking::select(Question const &question, std::optional<OSG::PickRegion> const &region,
                     std::vector<OSG::PickResult> const &results, OSG::UInt16 modifiers)
{
    choose(results, modifiers);
    if(_answered)
        _answered(question, region);
}

// The look of the hover is not what is given back to a place that is no longer selected.
void Picking::choose(std::vector<OSG::PickResult> const &results, OSG::UInt16 modifiers)
{
    _hovered.clear();
    OSG::select(_selection, results, modifiers);
}

std::optional<OSG::Pnt3f> Picking::pointAt(OSG::PointerTool::Event const &click)
{
    auto const found = _picker.foremost(click.pixel, OSG::DefaultPickRadius * click.scale);
    return found ? std::optional(found->point) : std::nullopt;
}

void Picking::selectOther(int steps)
{
    for(; steps > 0; --steps)
        _underClick.next();
    for(; steps < 0; ++steps)
        _underClick.previous();
    OSG::PickResult const *const current = _underClick.current();
    if(current == nullptr)
        return;
    _clicked = *current;
    choose({*current}, 0);
}

void Picking::hoverAt(std::optional<OSG::Pnt2f> const &pixel)
{
    if(pixel)
        _hover.moveTo(*pixel);
    else
        _hover.leave();
}

std::optional<OSG::PickResult> Picking::hovered(OSG::Pnt2f const &pixel)
{
    Tool::Stopwatch const watch;
    std::optional<OSG::PickResult> found = _picker.foremost(pixel);
    _hoverTiming.add(watch.seconds());
    return found;
}

bool Picking::updateHover()
{
    if(!_hover.update(*_view.getViewport()))
        return false;
    auto const &found = _hover.getAnswer();
    // What is selected already keeps the colour of the selection.
    bool const shows = found && !_selection.contains(found->path);
    return shows ? _hovered.replace({{found->path, OSG::SelectionSet::AllKinds}})
                 : _hovered.clear();
}

void Picking::selectPath(OSG::NodePath const &path, OSG::UInt16 modifiers)
{
    OSG::PickResult result;
    result.path = path;
    choose({result}, modifiers);
}

void Picking::hideSelection()
{
    OSG::AppearanceTable &table = _view.getRenderAction()->editAppearances();
    for(OSG::NodePath const &path : _selection.getPaths())
        table.hide(path);
    _hovered.clear();
    _selection.clear();
}

void Picking::isolateSelection()
{
    if(!_selection.isEmpty())
        _view.getRenderAction()->editAppearances().isolate(_selection.getPaths());
}

void Picking::showAll()
{
    OSG::AppearanceTable &table = _view.getRenderAction()->editAppearances();
    table.endIsolation();
    std::vector<OSG::NodePath> hidden;
    table.forEach(
        [&hidden](OSG::NodePath const &path, OSG::Appearance const &appearance)
        {
            if(appearance.isHidden)
                hidden.push_back(path);
        });
    for(OSG::NodePath const &path : hidden)
        table.show(path);
}

bool Picking::isAnythingHidden() const
{
    OSG::AppearanceTable const &table = _view.getRenderAction()->getAppearances();
    bool isHidden = table.isIsolating();
    table.forEach([&isHidden](OSG::NodePath const &, OSG::Appearance const &appearance)
                  { isHidden = isHidden || appearance.isHidden; });
    return isHidden;
}

void Picking::forget()
{
    showAll();
    _hovered.clear();
    _selection.clear();
    _underClick = OSG::PickCycle();
    _clicked.reset();
    _measured.clear();
}
} // namespace Viewer
