#include "Viewer.h"

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <utility>

#include "Gui.h"
#include "OSGFrameImage.h"
#include "OSGGLErrors.h"
#include "OSGGLObjectStore.h"
#include "OSGKeptFrame.h"
#include "OSGLog.h"
#include "Panels.h"
#include "Session.h"
#include "Stopwatch.h"
#include "ViewerCommands.h"
#include "ViewerInput.h"
#include "ViewerWindow.h"
#include "WritePicture.h"

namespace Viewer
{
namespace
{
/// The loop between the window and the session.
class Viewer
{
  public:
    Viewer(ViewerWindow &window, Settings const &settings, Tool::ViewerOptions const &options,
           Tool::Streams streams);
    ~Viewer();
    Viewer(Viewer const &) = delete;
    Viewer &operator=(Viewer const &) = delete;

    int run();

  private:
    std::optional<double> waitSeconds() const;
    void turn();
    void showTitle();
    void draw(bool hasSceneChanged);
    void goOnWithErrand();
    bool saveScreenshot(std::string const &target);
    bool isEnding();
    void saveSettings();
    bool arePanelsStale(double now) const;
    void noteDrawn(double frameSeconds);
    void logTimes() const;
    double seconds() const;

    ViewerWindow &_window;
    Tool::ViewerOptions const &_options;
    Tool::Streams _streams;
    Session _session;
    double _lastTurn = 0;
    double _lastEvent = 0;
    Gui _gui;
    OpenPanels _open;
    Commands _commands;
    Panels _panels;
    ViewerInput _input;
    OSG::KeptFrame _kept;
    int _panelFrames = 0; // to be drawn before the panels have settled
    std::string _drawnMessage;
    bool _drewReading = false;
    double _lastDraw = 0;
    Settings _savedSettings;
    Timing _drawn;
    std::string _titled;
    int _status = Tool::Success;
    bool _mayEnd = false; // the user does not mind unsaved changes
    /// How far what the command line asks for has come.
    enum class Errand : OSG::UInt8
    {
        Read,
        Play,
        Done
    };
    Errand _errand = Errand::Read;
    std::chrono::steady_clock::time_point _begin = std::chrono::steady_clock::now();
};

// Panels need another frame or two until they have settled after an event.
constexpr int SettlingFrames = 3;
// Waits that are longer are none of a moving scene's, in seconds.
constexpr double LongestStep = 0.1;

Viewer::Viewer(ViewerWindow &window, Settings const &settings, Tool::ViewerOptions const &options,
               Tool::Streams streams)
    : _window(window)
    , _options(options)
    , _streams(streams)
    , _session(streams)
    , _commands(make_commands(_session, _open, [&window] { window.close(); }))
    , _panels(_session, _commands, _open)
    , _input(window, _gui, _session, _commands)
{
    _session.settings = settings;
    _savedSettings = settings;
    _session.engines.setDesktop(_window.makeDesktop(), _window.getHandle());
    _session.events.setPointerQuery(
        [this](double &x, double &y)
        {
            _window.getPointer(x, y);
            return true;
        });
    _session.useEngine(options.engine.empty() ? settings.engine : options.engine);
    _session.applySettings();
}

Viewer::~Viewer()
{
    _kept.release();
    OSG::GLObjectStore::releaseCurrent();
}

double Viewer::seconds() const
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - _begin).count();
}

int Viewer::run()
{
    if(!_options.report.empty() && !_session.report.open(_options.report))
    {
        Tool::complain(_streams, "cannot write " + _options.report);
        return Tool::Failed;
    }
    _panelFrames = SettlingFrames;
    if(!_options.exit)
        turn(); // what is shown is fitted between the panels
    if(!_options.file.empty())
        _session.open(_options.file);
    while(!isEnding())
    {
        std::optional<double> const wait = waitSeconds();
        if(!wait || *wait > LongestStep)
            _session.engines.rest();
        if(_window.handleEvents(wait))
        {
            _panelFrames = SettlingFrames;
            _lastEvent = seconds();
        }
        _session.engines.wake();
        turn();
        goOnWithErrand();
        saveSettings();
    }
    if(_options.exit && _session.report.hasFailed())
        _status = Tool::Failed;
    logTimes();
    return _status;
}

// A run that ends by itself is no choice of the user's. Others are kept at once: a signal may end
// the program.
void Viewer::saveSettings()
{
    if(_options.exit || _session.settings == _savedSettings)
        return;
    _savedSettings = _session.settings;
    std::string const reason = _savedSettings.save();
    if(!reason.empty())
        Tool::complain(_streams, "cannot write the settings: " + reason);
}

bool Viewer::isEnding()
{
    if(!_window.isClosing())
        return false;
    if(_options.exit || _mayEnd || !_session.document.needsSaving())
        return true;
    _window.stay();
    _session.unsaved.before("the viewer ends",
                            [this]
                            {
                                _mayEnd = true;
                                _window.close();
                            });
    _panelFrames = SettlingFrames;
    return false;
}

// With --verbose the log tells what frames cost, and of errors of OpenGL.
void Viewer::noteDrawn(double frameSeconds)
{
    if(!_options.verbose)
        return;
    if(_session.view.getScene() != nullptr && _drawn.count == 0)
        OSG_LOG_PROGRESS("first picture after %.3f s\n", seconds());
    if(_session.view.getScene() != nullptr)
        _drawn.add(frameSeconds);
    std::string const errors = OSG::take_gl_errors();
    if(!errors.empty())
        OSG_LOG_WARNING("OpenGL: %s\n", errors.c_str());
}

void Viewer::logTimes() const
{
    Timing const &hovers = _session.picking.getHoverTiming();
    OSG_LOG_PROGRESS("%llu frames, %.6f s each, %llu hovers, %.9f s each, the longest %.9f s\n",
                     static_cast<unsigned long long>(_drawn.count), _drawn.mean(),
                     static_cast<unsigned long long>(hovers.count), hovers.mean(), hovers.longest);
}

// When the file is there: the recording, the screenshot, the end.
void Viewer::goOnWithErrand()
{
    if(_errand == Errand::Done || _session.document.isReading() || _session.recordings.isPlaying())
        return;
    bool const isShown = _options.file.empty() || _session.document.getScene() != nullptr;
    if(_errand == Errand::Read && isShown && !_options.play.empty())
    {
        _errand = Errand::Play;
        using Pace = Recordings::Pace;
        if(_session.play(_options.play, _options.exit ? Pace::AtOnce : Pace::AsRecorded))
            return;
        _status = Tool::Failed;
    }
    _errand = Errand::Done;
    bool const hasScreenshot =
        _options.screenshot.empty() || (isShown && saveScreenshot(_options.screenshot));
    if(!isShown || !hasScreenshot)
        _status = Tool::Failed;
    if(_options.exit)
        _window.close();
    else
        _status = Tool::Success; // whoever stays at the window has seen what is wrong
}

// The scene without the panels and the colour of the hover, when all its edges are found.
bool Viewer::saveScreenshot(std::string const &target)
{
    auto const [width, height] = _window.getPixels();
    auto const w = static_cast<OSG::UInt32>(width);
    auto const h = static_cast<OSG::UInt32>(height);
    std::string reason = Tool::refusal_of_size(w, h);
    if(reason.empty())
    {
        _session.picking.hoverAt(std::nullopt);
        _session.picking.updateHover();
        _session.view.getViewport()->activateSize();
        do
            _session.view.draw();
        while(!_session.view.isComplete());
        reason = Tool::write_picture(target, OSG::read_frame(w, h), w, h);
    }
    _session.message = reason.empty() ? "saved " + target : "no picture: " + reason;
    if(!reason.empty())
        Tool::complain(_streams, _session.message);
    return reason.empty();
}

// Nothing means until an event comes.
std::optional<double> Viewer::waitSeconds() const
{
    constexpr double FrameSeconds = 1. / 60;
    constexpr double FileSeconds = 1; // until a changed file is seen
    constexpr double KeySeconds = 0.5;
    if(_panelFrames > 0)
        return 0;
    if(_window.getPixels().width == 0)
        return FileSeconds; // an icon shows nothing that moves
    if(_session.isMoving() || _input.isHeld())
        return FrameSeconds;
    // No event tells when the system knows that the keys are up.
    if(_session.engines.isWaiting() && seconds() < _lastEvent + KeySeconds)
        return FrameSeconds;
    bool const looksAtFile = _session.settings.reloads && !_session.document.getFile().empty();
    return looksAtFile ? std::optional(FileSeconds) : std::nullopt;
}

void Viewer::turn()
{
    auto const [width, height] = _window.getPixels();
    _session.events.setContentScale(_window.getPixelScale());
    if(width > 0 && height > 0)
        _session.setSize(static_cast<OSG::UInt32>(width), static_cast<OSG::UInt32>(height));
    double const now = seconds();
    _input.follow(std::min(now - std::exchange(_lastTurn, now), LongestStep));
    bool const hasSceneChanged = _session.frame(now);
    if(width <= 0 || height <= 0)
    {
        _panelFrames = 0;
        return;
    }
    if(_options.exit)
    {
        _panelFrames = 0; // nobody looks: the screenshot draws for itself
        return;
    }
    if(arePanelsStale(now))
        _panelFrames = std::max(_panelFrames, 1);
    if(hasSceneChanged || _panelFrames > 0)
        draw(hasSceneChanged);
    showTitle(); // what the title names is on the screen
}

// What panels show has changed without an event.
bool Viewer::arePanelsStale(double now) const
{
    constexpr double ProgressSeconds = 0.1;
    bool const isReading = _session.document.isReading();
    bool const isBusy = isReading || _session.console.isRecording();
    return _session.message != _drawnMessage || isReading != _drewReading ||
           (isBusy && now > _lastDraw + ProgressSeconds);
}

void Viewer::showTitle()
{
    std::filesystem::path const file(_session.document.getFile());
    std::string const title = (_session.document.needsSaving() ? "*" : "") +
                              (file.empty() ? "" : file.filename().string() + " - ") + "Tolvanite";
    if(_titled != title)
        _window.setTitle(title);
    _titled = title;
}

void Viewer::draw(bool hasSceneChanged)
{
    auto const [width, height] = _window.getPixels();
    auto const w = static_cast<OSG::UInt32>(width);
    auto const h = static_cast<OSG::UInt32>(height);
    Tool::Stopwatch const watch;
    _gui.setStyle(_session.settings.isDark, _window.getContentScale());
    _drawnMessage = _session.message;
    _drewReading = _session.document.isReading();
    _lastDraw = seconds();
    _gui.beginFrame();
    _panels.draw(static_cast<float>(1 / _window.getPixelScale()));
    _gui.endFrame();
    if(std::exchange(_session.wantsScreenshot, false))
        saveScreenshot(_session.freePictureName());
    _session.view.getViewport()->activateSize();
    if(hasSceneChanged || !_kept.show(w, h))
    {
        _session.view.draw();
        _kept.keep(w, h);
    }
    _gui.render();
    _window.swap();
    if(hasSceneChanged)
        noteDrawn(watch.seconds());
    if(_panelFrames > 0)
        --_panelFrames;
}

} // namespace

int run_viewer(Tool::ViewerOptions const &options, Tool::Streams streams)
{
    Settings settings;
    std::string const complaint = settings.load();
    if(!complaint.empty())
        Tool::complain(streams, complaint);
    auto const [width, height] = Tool::window_size(options);
    std::string missing;
    auto const window = ViewerWindow::open({width, height}, settings.samples, missing);
    if(window == nullptr)
    {
        Tool::complain(streams, "no window: " + missing);
        return Tool::Failed;
    }
    Tool::LogLines log(streams.err,
                       options.quiet ? Tool::LogLines::Show::Nothing : Tool::LogLines::Show::Lines);
    Viewer viewer(*window, settings, options, {streams.out, streams.err, &log});
    return viewer.run();
}
} // namespace Viewer
