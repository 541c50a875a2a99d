#pragma once

#include <boost/function.hpp>

#include "OSGInputRecording.h"
#include "OSGNavigator.h"

namespace OSG
{
/// Records the events that a navigator handles, from its construction to its destruction.
///
///     InputRecorder recorder(navigator, seconds);
///     ...                               // the host passes events to the navigator as usual
///     write_recording(file, recorder.getRecording());
///
/// The recording begins with the navigator's camera, pose and settings. A replay shall give the
/// same poses to the last bit. So the constructor sets the engine to the engine's own pose, which
/// may round it, and records the place of the pointer as a first event, a hover. Settings of the
/// engine other than its pose are not recorded. A replay uses an engine as `create` makes it.
///
/// Events hold pixels of the window. The viewport has to cover its window, because a replay shows
/// the view in a window of its own.
///
/// The recorder is the navigator's observer until it is destroyed or another observer is set.
class OSG_TOLVANITEKIT_API InputRecorder : public NavigatorObserver
{
  public:
    /// Gives the seconds since a fixed moment. They must not decrease.
    using Clock = boost::function<Real64()>;

    /// The navigator must have an engine and a viewport with a perspective or an orthographic
    /// camera. It must live longer than the recorder.
    InputRecorder(Navigator &navigator, Clock clock);
    InputRecorder(InputRecorder const &) = delete;
    InputRecorder &operator=(InputRecorder const &) = delete;
    ~InputRecorder() override;

    void observe(NavigatorEvent const &event) override;

    InputRecording const &getRecording() const { return _recording; }

  private:
    void takeCamera();
    void takePose();

    Navigator &_navigator;
    Clock _clock;
    Real64 _begin;
    InputRecording _recording;
};
} // namespace OSG
