#pragma once

#include <boost/function.hpp>

#include "OSGInputRecording.h"
#include "OSGNavigator.h"

namespace OSG
{
/// Writes down what a navigator is told, while it lives.
///
///     InputRecorder recorder(navigator, seconds);
///     ...                               // events as ever
///     write_recording(file, recorder.getRecording());
///
/// The recording begins with the navigator's camera, pose and settings. For a replay that is equal
/// to the last bit the engine is given its own pose anew at that moment, which may round it, and
/// the pointer's place is the first event, a hover. What the engine has been set to beyond its pose
/// is not written down: a replay has an engine as it is created.
///
/// Events hold pixels of the window, and a replay shows the view in a window of its own: what is
/// recorded is a viewport that covers the whole window.
///
/// It takes the place of the navigator's observer, until it ends or another one comes.
class OSG_TOLVANITEKIT_API InputRecorder : public NavigatorObserver
{
  public:
    /// Seconds since any moment; it does not run backwards.
    using Clock = boost::function<Real64()>;

    /// The navigator has engine, viewport and a perspective or an orthographic camera, and outlives
    /// the recorder. The viewport covers its window.
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
