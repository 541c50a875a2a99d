#pragma once

#include "OSGWindowBase.h"

namespace OSG
{
/// A window of `width` by `height` pixels and the views in it. It needs no desktop: this base is
/// enough wherever only the arithmetic of pixels counts.
class OSG_WINDOW_API Window : public WindowBase
{
  public:
    static constexpr Replaced Replaces = Replaced::ExecSync;

    void setSize(UInt16 width, UInt16 height);

    // --- views; the window is their one parent and counts them ---
    UInt32 getNPorts() const { return _mfPorts.size(); }
    Viewport *getPort(UInt32 index) const { return _mfPorts[index]; }
    /// Appends `port`, which leaves the window that it has. Null does nothing.
    void addPort(Viewport *port);
    /// Takes the view out; it loses a reference. One that is not here does nothing.
    void subPort(Viewport *port);

    bool unlinkChild(FieldContainer *child, UInt16 fieldId) override;
    void resolveLinks() override;
    void execSync(WindowBase *from, BitVector whichField, AspectOffsets &offsets,
                  BitVector syncMode, UInt32 syncInfo);

  protected:
    Window() = default;
    /// A copy has the size and no views.
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
