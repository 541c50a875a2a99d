#pragma once

#include <memory>

#include "OSGContribTolvaniteApi.h"
#include "OSGDesktop.h"

namespace OSG
{
/// The pointer of the desktop, as a walk hides, captures and moves it.
class OSG_CONTRIBTOLVANITE_API WalkPointer
{
  public:
    explicit WalkPointer(std::shared_ptr<Desktop> desktop);
    WalkPointer(WalkPointer const &) = delete;
    WalkPointer &operator=(WalkPointer const &) = delete;
    /// Shows the pointer if it is hidden, and releases the capture if it is still the pointer's.
    /// Does not move the pointer.
    ~WalkPointer();

    bool isHidden() const { return _isHidden; }
    /// Remembers where the pointer is and hides it. Captures it for `window` if no window has
    /// captured it; null captures it for none. Does nothing if it is hidden.
    void hide(NativeWindow window);
    /// Puts a hidden pointer back to where it vanished, shows it, and releases the capture.
    void show();
    /// Captures the pointer again if it was captured and the system has taken the capture away.
    void keepCapture(NativeWindow window);
    /// Puts the pointer to the middle of the client area. The result is the place in this area.
    Desktop::Point center(NativeWindow window);

  private:
    void releaseCapture();

    std::shared_ptr<Desktop> _desktop;
    Desktop::Point _savedPlace; // on the screen
    NativeWindow _captureWindow = nullptr;
    bool _isHidden = false;
};
} // namespace OSG
