#include "Recordings.h"

#include <chrono>
#include <fstream>

#include "OSGChangeList.h"
#include "OSGThread.h"
#include "ReadRecording.h"
#include "ReplaceFile.h"

namespace Viewer
{
namespace
{
double now()
{
    using Clock = std::chrono::steady_clock;
    return std::chrono::duration<double>(Clock::now().time_since_epoch()).count();
}
} // namespace

Recordings::Recordings(OSG::SceneView &view, OSG::EventAdapter &events, Engines &engines,
                       ToolBox &tools)
    : _view(view)
    , _events(events)
    , _engines(engines)
    , _tools(tools)
{
}

Recordings::~Recordings() = default;

void Recordings::startRecording()
{
    if(isBusy())
        return;
    _engines.choose(_engines.getName());
    _view.update();
    _recorder = std::make_unique<OSG::InputRecorder>(
        _view.getNavigator(), now, _engines.isWalk() ? _engines.getDesktop() : nullptr, &_events);
}

void Recordings::noteMove()
{
    if(isRecording())
        _recorder->takePoseOfHost();
}

std::string Recordings::stopRecording(std::filesystem::path const &target)
{
    std::unique_ptr<OSG::InputRecorder> const recorder = std::move(_recorder);
    if(recorder == nullptr)
        return "nothing was recorded";
    std::error_code error;
    std::filesystem::create_directories(target.parent_path(), error);
    if(error)
        return error.message();
    return Tool::replace_file(target.string(),
                              [&recorder](std::string const &path)
                              {
                                  std::ofstream out(path, std::ios::binary);
                                  OSG::write_recording(out, recorder->getRecording());
                                  return bool(out.flush());
                              });
}

std::string Recordings::play(std::string const &file, Pace pace)
{
    if(isBusy())
        return "another recording is at work";
    OSG::RecordingResult read = Tool::read_recording_file(file);
    if(!read.recording)
        return read.complaint;
    _played = std::move(*read.recording);
    auto const desktop = _engines.beginReplay(_played.ticksPerSecond);
    OSG::WindowView const window = _view.getView();
    _view.setView(OSG::view_of(_played, window.width, window.height));
    _tools.take(ToolBox::Tool::Navigate); // a recording without tools has none of the user's
    OSG::InputReplay::Host host;
    host.takeTool = [this](std::string const &name) { return takeTool(name); };
    host.tool = _tools.getPointerTool();
    host.desktop = desktop;
    host.window = _engines.getWindow();
    _replay = std::make_unique<OSG::InputReplay>(_played, _view.getNavigator(), host);
    _pace = pace;
    _begin.reset();
    return {};
}

void Recordings::stopPlaying()
{
    if(!isPlaying())
        return;
    _replay.reset();
    _engines.endReplay();
}

bool Recordings::isDue(double seconds) const
{
    std::optional<OSG::Real64> const next = _replay->nextSeconds();
    return next && (_pace == Pace::AtOnce || *next <= seconds - *_begin);
}

void Recordings::update(double seconds)
{
    if(!isPlaying())
        return;
    _begin = _begin.value_or(seconds);
    while(isPlaying() && isDue(seconds))
    {
        _replay->step();
        _view.update();
        OSG::Thread::getCurrentChangeList()->commitChanges();
    }
    if(isPlaying() && _replay->isAtEnd())
        stopPlaying();
}

std::shared_ptr<OSG::PointerTool> Recordings::takeTool(std::string const &name)
{
    return _tools.takeNamed(name) ? _tools.getPointerTool() : nullptr;
}
} // namespace Viewer
