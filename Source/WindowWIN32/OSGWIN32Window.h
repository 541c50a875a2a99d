#pragma once

#include <cstdint>

#include "OSGWIN32WindowBase.h"

namespace OSG
{
/// How the desktop names a window: an HWND where there are such, the number of an X11 window
/// elsewhere. Null names none.
using NativeWindow = void *;

/// A window of the desktop. The host makes the native window and keeps it; here is its handle.
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
