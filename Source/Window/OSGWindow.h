#pragma once

#include "OSGWindowBase.h"

namespace OSG
{
/// A window of `width` by `height` pixels and the viewports in it. It needs no desktop. This base
/// class is enough for programs that only compute with pixels.
class OSG_WINDOW_API Window : public WindowBase
{
  public:
    static constexpr Replaced Replaces = Replaced::ExecSync;

    void setSize(UInt16 width, UInt16 height);

    // --- viewports; a viewport has one window, which keeps a reference to it ---
    UInt32 getNPorts() const { return _mfPorts.size(); }
    Viewport *getPort(UInt32 index) const { return _mfPorts[index]; }
    /// Takes `port` out of the window that it is in and appends it here. Null does nothing.
    void addPort(Viewport *port);
    /// Takes the viewport out and gives its reference back. Does nothing if it is not in this
    /// window.
    void subPort(Viewport *port);

    bool unlinkChild(FieldContainer *child, UInt16 fieldId) override;
    void resolveLinks() override;
    void execSync(WindowBase *from, BitVector whichField, AspectOffsets &offsets,
                  BitVector syncMode, UInt32 syncInfo);

  protected:
    Window() = default;
    /// A copy has the size and no viewports.
    Window(Window const &source)
        : WindowBase(source)
    {
    }
    ~Window() override;

    friend Pattern;

  private:
    void orphanPorts();
    void syncPorts(Window const &source);
};
} // namespace OSG
