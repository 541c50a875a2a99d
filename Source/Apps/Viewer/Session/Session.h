#pragma once

#include <optional>
#include <string>

#include "Engines.h"
#include "MeasureMarks.h"
#include "OSGEventAdapter.h"
#include "OSGFrameDemand.h"
#include "OSGSceneDocument.h"
#include "OSGViewDriver.h"
#include "OSGWalkConsole.h"
#include "Picking.h"
#include "Recordings.h"
#include "Report.h"
#include "SceneOperations.h"
#include "Sections.h"
#include "Settings.h"
#include "Tool.h"
#include "ToolBox.h"
#include "UnsavedGuard.h"

namespace Viewer
{
/// What the viewer shows and does, put together, without a window and without panels. The parts are
/// public: panels show them and change them.
class Session
{
  public:
    explicit Session(Tool::Streams streams);
    ~Session();
    Session(Session const &) = delete;
    Session &operator=(Session const &) = delete;

    OSG::SceneView view;
    OSG::EventAdapter events{view.getNavigator()};
    OSG::FrameDemand demand;
    OSG::ViewDriver driver{view};
    Picking picking{view};
    ToolBox tools{events, picking, view, driver};
    Engines engines{view, events};
    OSG::SceneDocument document;
    Sections sections{view};
    MeasureMarks measureMarks{view};
    OSG::WalkConsole console{view.getNavigator()};
    SceneOperations operations{document, picking};
    UnsavedGuard unsaved{document};
    Recordings recordings{view, events, engines, tools};
    Report report;
    Settings settings;
    std::string message;          ///< for the line at the bottom
    bool wantsScreenshot = false; ///< the host saves one and takes it back

    /// In device pixels.
    void setSize(OSG::UInt32 width, OSG::UInt32 height);
    /// But for the engine.
    void applySettings();
    /// Takes that engine; false, and a line for the user, where there is none.
    bool useEngine(std::string const &name);

    // --- commands of more than one part ---
    /// Begins to read a file; what is shown stays until the scene is there. Asks before changes are
    /// lost.
    void open(std::string const &file);
    /// Writes the scene in the format of the suffix. Only the binary format holds all of it, so
    /// that changes count as unsaved after the others.
    void save(std::string const &target);
    void fitSelection();
    /// Marks where the camera stands, with a label of its number where none is given.
    void addMark(std::string const &label);
    /// Begins to record the way of the camera, or ends it.
    void toggleWay();
    /// Begins to record what the user does in the view, or ends it and writes the file.
    void toggleRecording();
    /// Plays a recording; false, and a line for the user, where it is none.
    bool play(std::string const &file, Recordings::Pace pace);
    /// A name for a picture in the current folder that no file has.
    std::string freePictureName() const;
    /// What toggleRecording() writes.
    static std::filesystem::path recordingFile();
    /// A wheel's step over the scene.
    void wheel(double steps, double x, double y);

    /// A 3D mouse pushes and turns, both in its axes, by units of its deflection times seconds. The
    /// trackball has the model in the hand; other engines have the camera.
    void moveBy(OSG::Vec3f const &push, OSG::Vec3f const &turn);

    /// A turn of the host's loop, at `seconds` of a clock: takes scenes over, moves the camera,
    /// hovers, commits. Whether the scene has to be drawn.
    bool frame(double seconds);
    /// Whether a frame has to follow soon, though no event comes.
    bool isMoving() const;

  private:
    void showScene();
    void complain(std::string const &line);
    void noteSaved(std::string const &target);
    void checkReport();

    Tool::Streams _streams;
    std::string _shownFile; // whose scene is shown
    bool _isReportTold = false;
    std::optional<OSG::WindowView> _lastView;
    bool _hasMoved = false;
};
} // namespace Viewer
