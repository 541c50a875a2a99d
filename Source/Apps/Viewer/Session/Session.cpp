#include "Session.h"

#include <cmath>
#include <utility>

#include "LogLines.h"
#include "OSGChangeList.h"
#include "OSGFileSuffix.h"
#include "OSGReachableNodes.h"
#include "OSGSelectionBounds.h"
#include "OSGThread.h"
#include "OSGViewFit.h"
#include "OSGViewMoves.h"
#include "Stopwatch.h"
#include "WriteScene.h"

namespace Viewer
{
Session::Session(Tool::Streams streams)
    : _streams(streams)
{
    picking.getSelection().addObserver(&demand);
    driver.setMoved([this] { recordings.noteMove(); });
    console.setMoved([this] { recordings.noteMove(); });
    picking.setAnswered(
        [this](Question const &question, std::optional<OSG::PickRegion> const &region)
        {
            report.answer(question, region, picking.getPicker(), document.getFile(),
                          document.wasComplete());
            checkReport();
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
    view.setStyle(settings.style);
    if(settings.showsEdges)
        view.showEdges();
    else
        view.hideEdges();
    document.setReloads(settings.reloads);
    driver.setSceneUp(settings.sceneUp);
    console.setUpward(OSG::standard_up(OSG::StandardView::Front, settings.sceneUp));
    view.getNavigator().setClickCenter(settings.clickCenters);
    demand.request();
}

bool Session::useEngine(std::string const &name)
{
    if(engines.choose(name))
        return true;
    complain("no walk: " + engines.walkMissing());
    if(engines.getName().empty())
        engines.choose("cad");
    return false;
}

void Session::save(std::string const &target)
{
    Tool::Stopwatch const watch;
    std::string reason;
    if(document.usesFiles())
        reason = "a file is being read";
    else if(document.getScene() == nullptr)
        reason = "there is no scene";
    else if(!Tool::is_written(OSG::file_suffix(target)))
        reason = "no format writes '" + OSG::file_suffix(target) + "'";
    else
        reason = Tool::write_scene(document.getScene(), target, _streams);
    if(!reason.empty())
    {
        complain("cannot write " + target + ": " + reason);
        return;
    }
    report.saved({document.getFile(), target, OSG::count_reachable_nodes(document.getScene()),
                  watch.seconds(), document.wasComplete(), operations.getUnsaved()});
    noteSaved(target);
    checkReport();
}

void Session::checkReport()
{
    if(report.hasFailed() && !std::exchange(_isReportTold, true))
        complain("cannot write the report");
}

void Session::noteSaved(std::string const &target)
{
    bool const holdsAll = OSG::file_suffix(target) == "osb";
    bool const needsSaving = document.needsSaving() && !holdsAll;
    if(holdsAll || target == document.getFile())
        document.setSaved(target);
    if(needsSaving)
        document.setNeedsSaving();
    operations.noteSaved();
    _shownFile = document.getFile();
    settings.noteFile(target);
    message = "saved " + target + (holdsAll ? "" : "; only an osb file holds marks and all nodes");
}

void Session::open(std::string const &file)
{
    auto const read = [this, file]
    {
        document.open(file);
        message.clear();
    };
    unsaved.before("another file is read", read);
}

// Also for who started the viewer at a terminal. While a file is read its thread writes to the log.
void Session::complain(std::string const &line)
{
    message = line;
    Tool::Streams streams = _streams;
    if(document.usesFiles())
        streams.log = nullptr;
    Tool::complain(streams, line);
}

void Session::fitSelection()
{
    OSG::BoxVolume const box = OSG::bounds_of(picking.getSelection(), view.getScene());
    if(box.isEmpty())
        driver.fit();
    else
        driver.fit(box);
}

void Session::addMark(std::string const &label)
{
    std::string const number = std::to_string(console.getMarkLabels().size() + 1);
    if(console.addMark(label.empty() ? "mark " + number : label))
        document.setNeedsSaving();
}

void Session::toggleWay()
{
    if(console.isRecording())
        console.stopRecording();
    else if(console.startRecording())
        document.setNeedsSaving();
}

std::string Session::freePictureName() const
{
    std::filesystem::path const file(document.getFile());
    std::string const stem = file.empty() ? "tolvanite" : file.stem().string();
    std::error_code error;
    for(int number = 1;; ++number)
    {
        std::string name = stem + '-' + std::to_string(number) + ".png";
        if(!std::filesystem::exists(name, error))
            return name;
    }
}

std::filesystem::path Session::recordingFile() { return state_folder() / "last.events"; }

void Session::toggleRecording()
{
    if(!recordings.isRecording())
    {
        recordings.startRecording();
        message = "recording";
        return;
    }
    std::string const file = recordingFile().string();
    std::string const reason = recordings.stopRecording(file);
    if(reason.empty())
        message = "saved " + file;
    else
        complain("cannot write " + file + ": " + reason);
}

bool Session::play(std::string const &file, Recordings::Pace pace)
{
    std::string const reason = recordings.play(file, pace);
    if(reason.empty())
        return true;
    complain(file + ": " + reason);
    return false;
}

void Session::wheel(double steps, double x, double y)
{
    constexpr double StepMagnification = 1.2;
    if(recordings.isPlaying())
        return;
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

void Session::moveBy(OSG::Vec3f const &push, OSG::Vec3f const &turn)
{
    constexpr OSG::Real32 TurnSpeed = 1.5f; // radians a second at a full deflection
    OSG::WindowView const now = view.getView();
    OSG::Real32 const reach = (now.at - now.from).length(); // a second goes as far
    if(recordings.isPlaying() || engines.isWalk())
        return;
    if(engines.getName() == "cad")
        driver.jumpTo(OSG::move_by(now, push * -reach, turn * -TurnSpeed, now.at));
    else
        driver.jumpTo(OSG::move_by(now, push * reach, turn * TurnSpeed));
}

void Session::showScene()
{
    message.clear();
    recordings.stopPlaying();
    picking.forget();
    driver.forget();
    view.setScene(document.getScene());
    console.setScene(document.getScene());
    engines.fitStep();
    if(!document.needsSaving()) // else it is an operation that was undone
        operations.forget();
    if(_shownFile == document.getFile())
        return; // the file was read again, or an operation undone: the user goes on looking
    _shownFile = document.getFile();
    settings.noteFile(_shownFile);
    sections.clear();
    operations.forget();
    driver.jumpTo(driver.fitted(
        OSG::standard_view(view.getView(), OSG::StandardView::Isometric, settings.sceneUp)));
}

bool Session::frame(double seconds)
{
    if(document.update(seconds))
        showScene();
    std::string const told = document.takeMessage();
    if(!told.empty())
        complain(told);
    recordings.update(seconds);
    if(!recordings.isPlaying())
    {
        console.update(seconds);
        events.frame();
        driver.update(seconds, !events.isDragging());
    }
    auto const measuring = tools.measuredSoFar();
    if(measureMarks.show(measuring.empty() ? picking.getMeasured() : measuring) ||
       !view.isComplete())
        demand.request();
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
    return _hasMoved || driver.isOnWay() || !view.isComplete() || document.isReading() ||
           console.isRecording() || console.isPlaying() || recordings.isPlaying() ||
           (events.isDragging() && engines.getName() != "cad");
}
} // namespace Viewer
