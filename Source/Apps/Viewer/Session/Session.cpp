#include "Session.h"

#include <cmath>

#include "LogLines.h"
#include "OSGChangeList.h"
#include "OSGSelectionBounds.h"
#include "OSGThread.h"
#include "OSGViewFit.h"

namespace Viewer
{
Session::Session(Tool::Streams streams)
    : _streams(streams)
{
    picking.getSelection().addObserver(&demand);
    picking.setAnswered(
        [this](Question const &question, std::optional<OSG::PickRegion> const &region) {
            report.answer(question, region, picking.getPicker(), files.getFile(),
                          files.isComplete());
        });
}

Session::~Session()
{
    picking.getSelection().removeObserver(&demand);
    events.setTool(nullptr);
}

void Session::setSize(OSG::UInt32 width, OSG::UInt32 height)
{
    view.setSize(width, height);
    engines.setSize(static_cast<OSG::UInt16>(width), static_cast<OSG::UInt16>(height));
}

void Session::applySettings()
{
    view.setBackground(settings.isDark ? OSG::Color3f(0.16f, 0.17f, 0.19f)
                                       : OSG::Color3f(0.93f, 0.94f, 0.96f));
    driver.setSceneUp(settings.sceneUp);
    view.getNavigator().setClickCenter(settings.clickCenters);
    if(settings.engine != engines.getName() && !engines.choose(settings.engine))
    {
        message = "no walk: " + engines.walkMissing();
        settings.engine = engines.getName().empty() ? "cad" : engines.getName();
        engines.choose(settings.engine);
    }
    demand.request();
}

void Session::save(std::string const &target)
{
    if(auto const saved = files.save(target, _streams))
        report.saved(*saved);
}

void Session::fitSelection()
{
    OSG::BoxVolume const box = OSG::bounds_of(picking.getSelection(), view.getScene());
    if(box.isEmpty())
        driver.fit();
    else
        driver.fit(box);
}

void Session::wheel(double steps, double x, double y)
{
    constexpr double StepMagnification = 1.2;
    if(!settings.zoomsToPointer || engines.getName() != "cad")
    {
        events.wheel(steps, x, y);
        return;
    }
    events.pointerMove(x, y);
    OSG::Pnt2f const pixel = events.getPointer();
    auto const found = picking.getPicker().foremost(pixel);
    driver.zoomAt(pixel, found ? std::optional(found->point) : std::nullopt,
                  static_cast<OSG::Real32>(std::pow(StepMagnification, steps)));
}

void Session::showScene()
{
    picking.forget();
    driver.forget();
    view.setScene(files.getScene());
    engines.fitStep();
    driver.jumpTo(
        OSG::fit(OSG::standard_view(view.getView(), OSG::StandardView::Isometric, settings.sceneUp),
                 view.getBounds()));
}

bool Session::frame(double seconds)
{
    if(files.update())
        showScene();
    std::string const told = files.takeMessage();
    if(!told.empty())
    {
        message = told;
        if(_streams.log != nullptr)
            _streams.log->print(); // nothing is read now
    }
    events.frame();
    driver.update(seconds, !events.isDragging());
    view.update();
    OSG::Thread::getCurrentChangeList()->commitChanges();
    picking.getSelection().prune(view.getScene());
    if(picking.updateHover())
        demand.request();
    OSG::WindowView const now = view.getView();
    _hasMoved = _lastView && !(now == *_lastView);
    _lastView = now;
    return demand.take(*view.getViewport());
}

bool Session::isMoving() const
{
    return _hasMoved || driver.isOnWay() || files.isReading() ||
           (events.isDragging() && engines.getName() != "cad");
}
} // namespace Viewer
