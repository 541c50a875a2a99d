#pragma once

#include <cstdint>

#include "OSGDesktop.h"
#include "OSGWIN32WindowBase.h"

namespace OSG
{
/// A window of the desktop. The host creates and destroys the native window; this class only stores
/// its handle.
class OSG_WINDOWWIN32_API WIN32Window : public WIN32WindowBase
{
  public:
    NativeWindow getHwnd() const
    {
        return reinterpret_cast<NativeWindow>(static_cast<std::uintptr_t>(getHandle()));
    }
    void setHwnd(NativeWindow window) { setHandle(reinterpret_cast<std::uintptr_t>(window)); }

  protected:
    WIN32Window() = default;
    WIN32Window(WIN32Window const &) = default;
    ~WIN32Window() override;

    friend Pattern;
};
} // namespace OSG
