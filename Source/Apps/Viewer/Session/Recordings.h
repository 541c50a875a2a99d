#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <string>

#include "Engines.h"
#include "OSGInputRecorder.h"
#include "OSGInputReplay.h"
#include "ToolBox.h"

namespace Viewer
{
/// Records what the user does in the view, and plays recordings there. Both begin with a new engine
/// of the kind in hand, since a recording holds nothing of its state but the pose.
class Recordings
{
  public:
    /// Keeps references, all of which have to outlive it.
    Recordings(OSG::SceneView &view, OSG::EventAdapter &events, Engines &engines, ToolBox &tools);
    ~Recordings();
    Recordings(Recordings const &) = delete;
    Recordings &operator=(Recordings const &) = delete;

    bool isRecording() const { return _recorder != nullptr; }
    bool isPlaying() const { return _replay != nullptr; }
    bool isBusy() const { return isRecording() || isPlaying(); }

    // --- recording ---
    void startRecording();
    /// The camera was moved neither by its engine nor by a recording.
    void noteMove();
    /// Writes the recording. Empty on success, otherwise the reason of the failure.
    std::string stopRecording(std::filesystem::path const &target);

    // --- playing ---
    enum class Pace : OSG::UInt8
    {
        AsRecorded,
        AtOnce ///< in one update()
    };
    /// Empty on success, otherwise what is wrong with the file.
    std::string play(std::string const &file, Pace pace);
    /// The user goes on from where the camera is.
    void stopPlaying();
    /// Plays the lines that are due at `seconds` of a clock.
    void update(double seconds);

  private:
    std::shared_ptr<OSG::PointerTool> takeTool(std::string const &name);
    bool isDue(double seconds) const;

    OSG::SceneView &_view;
    OSG::EventAdapter &_events;
    Engines &_engines;
    ToolBox &_tools;
    std::unique_ptr<OSG::InputRecorder> _recorder;
    OSG::InputRecording _played;
    std::unique_ptr<OSG::InputReplay> _replay;
    Pace _pace = Pace::AsRecorded;
    std::optional<double> _begin; // of the replay; unset until the next update
};
} // namespace Viewer
