#include "Viewer.h"

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <set>
#include <utility>

#include "EngineKeys.h"
#include "Gui.h"
#include "OSGFileSuffix.h"
#include "OSGFrameImage.h"
#include "OSGGLErrors.h"
#include "OSGGLObjectStore.h"
#include "OSGKeptFrame.h"
#include "OSGLog.h"
#include "Panels.h"
#include "Session.h"
#include "SpaceMouse.h"
#include "Stopwatch.h"
#include "ViewerCommands.h"
#include "ViewerWindow.h"
#include "WritePicture.h"

namespace Viewer
{
namespace
{
/// The loop between the window and the session.
class Viewer : private WindowListener
{
  public:
    Viewer(ViewerWindow &window, Tool::ViewerOptions const &options, Tool::Streams streams);
    ~Viewer() override;

    int run();

  private:
    void pointerMoved(double x, double y) override;
    void buttonPressed(OSG::Int16 button, OSG::UInt16 modifiers) override;
    void buttonReleased(OSG::Int16 button, OSG::UInt16 modifiers) override;
    void wheelTurned(double steps) override;
    void keyPressed(OSG::Int16 code, OSG::UInt16 modifiers) override;
    void keyReleased(OSG::Int16 code, OSG::UInt16 modifiers) override;
    void characterTyped(unsigned int character) override;
    void focusLost() override;
    void filesDropped(std::vector<std::string> const &files) override;

    std::optional<double> waitSeconds() const;
    void turn();
    void followPointer();
    void followSpaceMouse();
    void showTitle();
    void draw(bool hasSceneChanged);
    void goOnWithErrand();
    bool saveScreenshot(std::string const &target);
    void noteDrawn(double frameSeconds);
    void logTimes() const;
    double seconds() const;

    ViewerWindow &_window;
    Tool::ViewerOptions const &_options;
    Tool::Streams _streams;
    Session _session;
    SpaceMouse _spaceMouse{ViewerWindow::wake};
    bool _isSpaceMouseHeld = false;
    double _lastTurn = 0;
    double _lastEvent = 0;
    Gui _gui;
    OpenPanels _open;
    Commands _commands;
    Panels _panels;
    OSG::KeptFrame _kept;
    std::set<OSG::Int16> _keysDown;
    int _panelFrames = 0; // to be drawn before the panels have settled
    Timing _drawn;
    std::string _titled; // the file that the title names
    int _status = Tool::Success;
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

Viewer::Viewer(ViewerWindow &window, Tool::ViewerOptions const &options, Tool::Streams streams)
    : _window(window)
    , _options(options)
    , _streams(streams)
    , _session(streams)
    , _commands(make_commands(_session, _open, [&window] { window.close(); }))
    , _panels(_session, _commands, _open)
{
    _session.message = _session.settings.load();
    if(!options.engine.empty())
        _session.settings.engine = options.engine;
    _session.engines.setDesktop(_window.makeDesktop(), _window.getHandle());
    _session.events.setPointerQuery(
        [this](double &x, double &y)
        {
            _window.getPointer(x, y);
            return true;
        });
    _session.applySettings();
    _window.setListener(this);
}

Viewer::~Viewer()
{
    _window.setListener(nullptr);
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
    if(!_options.file.empty())
        _session.open(_options.file);
    _panelFrames = SettlingFrames;
    while(!_window.isClosing())
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
    }
    _session.settings.save();
    logTimes();
    return _status;
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
    OSG_LOG_PROGRESS("%llu frames, %.6f s each, %llu hovers, %.9f s each\n",
                     static_cast<unsigned long long>(_drawn.count), _drawn.mean(),
                     static_cast<unsigned long long>(hovers.count), hovers.mean());
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
    if(!isShown)
        _status = Tool::Failed;
    else if(!_options.screenshot.empty() && !saveScreenshot(_options.screenshot))
        _status = Tool::Failed;
    if(_options.exit)
        _window.close();
    else
        _status = Tool::Success; // whoever stays at the window has seen what is wrong
}

// The scene without the panels, when all its edges are found.
bool Viewer::saveScreenshot(std::string const &target)
{
    auto const [width, height] = _window.getPixels();
    auto const w = static_cast<OSG::UInt32>(width);
    auto const h = static_cast<OSG::UInt32>(height);
    std::string reason = Tool::refusal_of_size(w, h);
    if(reason.empty())
    {
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
    constexpr double BlinkSeconds = 0.25;
    constexpr double FileSeconds = 1; // until a changed file is seen
    constexpr double KeySeconds = 0.5;
    if(_panelFrames > 0)
        return 0;
    if(_session.isMoving() || !_keysDown.empty() || _isSpaceMouseHeld)
        return FrameSeconds;
    // No event tells when the system knows that the keys are up.
    if(_session.engines.isWaiting() && seconds() < _lastEvent + KeySeconds)
        return FrameSeconds;
    if(_gui.isAnimated())
        return BlinkSeconds;
    bool const looksAtFile = _session.settings.reloads && !_session.document.getFile().empty();
    return looksAtFile ? std::optional(FileSeconds) : std::nullopt;
}

void Viewer::turn()
{
    auto const [width, height] = _window.getPixels();
    _session.events.setContentScale(_window.getPixelScale());
    if(width > 0 && height > 0)
        _session.setSize(static_cast<OSG::UInt32>(width), static_cast<OSG::UInt32>(height));
    followPointer();
    followSpaceMouse();
    bool const hasSceneChanged = _session.frame(seconds());
    showTitle();
    if(width <= 0 || height <= 0)
    {
        _panelFrames = 0;
        return;
    }
    if(hasSceneChanged || _panelFrames > 0 || _gui.isAnimated())
        draw(hasSceneChanged);
}

void Viewer::followSpaceMouse()
{
    double const passed = std::min(seconds() - _lastTurn, LongestStep);
    _lastTurn = seconds();
    SpaceMouse::Deflection const &held = _spaceMouse.read();
    _isSpaceMouseHeld = !held.isAtRest();
    auto const time = static_cast<OSG::Real32>(passed);
    if(_isSpaceMouseHeld)
        _session.moveBy(held.push * time, held.turn * time);
}

void Viewer::showTitle()
{
    if(_titled == _session.document.getFile())
        return;
    _titled = _session.document.getFile();
    _window.setTitle(std::filesystem::path(_titled).filename().string() + " - Tolvanite");
}

void Viewer::followPointer()
{
    bool const isInView = !_gui.wantsPointer() && !_session.events.isDragging();
    _session.events.setPointerTaken(_gui.wantsPointer());
    _session.events.setKeyboardTaken(_gui.wantsKeyboard());
    _session.picking.hoverAt(isInView ? std::optional(_session.events.getPointer()) : std::nullopt);
}

void Viewer::draw(bool hasSceneChanged)
{
    auto const [width, height] = _window.getPixels();
    auto const w = static_cast<OSG::UInt32>(width);
    auto const h = static_cast<OSG::UInt32>(height);
    Tool::Stopwatch const watch;
    _gui.setStyle(_session.settings.isDark, _window.getContentScale());
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

void Viewer::pointerMoved(double x, double y) { _session.events.pointerMove(x, y); }

void Viewer::buttonPressed(OSG::Int16 button, OSG::UInt16 modifiers)
{
    double x = 0;
    double y = 0;
    _window.getPointerOfEvent(x, y);
    _session.events.setPointerTaken(_gui.isOverPanel(x, y));
    _session.events.buttonPress(button, x, y, modifiers);
}

void Viewer::buttonReleased(OSG::Int16 button, OSG::UInt16 modifiers)
{
    double x = 0;
    double y = 0;
    _window.getPointerOfEvent(x, y);
    _session.events.buttonRelease(button, x, y, modifiers);
}

void Viewer::wheelTurned(double steps)
{
    double x = 0;
    double y = 0;
    _window.getPointerOfEvent(x, y);
    if(!_gui.isOverPanel(x, y))
        _session.wheel(steps, x, y);
}

void Viewer::keyPressed(OSG::Int16 code, OSG::UInt16 modifiers)
{
    _keysDown.insert(code);
    KeyOwner const owner = _gui.wantsKeyboard()                  ? KeyOwner::Text
                           : _session.engines.getName() != "cad" ? KeyOwner::Engine
                                                                 : KeyOwner::Nobody;
    if(run_key(_commands, {code, modifiers}, owner))
        return;
    EngineKey const key = engine_key(_session.engines.getName(), code);
    _session.events.key(key.code, key.modifiers | OSG::NavigatorEvent::KeyDown);
}

void Viewer::keyReleased(OSG::Int16 code, OSG::UInt16)
{
    _keysDown.erase(code);
    EngineKey const key = engine_key(_session.engines.getName(), code);
    _session.events.key(key.code, key.modifiers | OSG::NavigatorEvent::KeyUp);
}

void Viewer::characterTyped(unsigned int character)
{
    if(!_gui.wantsKeyboard() && takes_character(_session.engines.getName(), character))
        _session.events.key(static_cast<OSG::Int16>(character), OSG::NavigatorEvent::KeyDown);
}

void Viewer::focusLost()
{
    _keysDown.clear();
    _session.events.focusLost();
}

void Viewer::filesDropped(std::vector<std::string> const &files)
{
    if(files.empty())
        return;
    if(OSG::file_suffix(files.front()) == "events")
        _session.play(files.front(), Recordings::Pace::AsRecorded);
    else
        _session.open(files.front());
}
} // namespace

int run_viewer(Tool::ViewerOptions const &options, Tool::Streams streams)
{
    Settings settings;
    settings.load();
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
    Viewer viewer(*window, options, {streams.out, streams.err, &log});
    return viewer.run();
}
} // namespace Viewer
