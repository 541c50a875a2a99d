// Of the library this source includes headers of Base and of the port alone, so that it compiles
// with nothing but a compiler for Windows.

#include "OSGWin32Desktop.h"

#ifdef _WIN32

#include <windows.h>

namespace OSG
{
namespace
{
Int64 ask_frequency()
{
    LARGE_INTEGER frequency;
    return QueryPerformanceFrequency(&frequency) != 0 ? frequency.QuadPart : 0;
}

Int64 const TimerFrequency = ask_frequency();

HWND handle_of(NativeWindow window) { return static_cast<HWND>(window); }
} // namespace

Win32Desktop::~Win32Desktop() = default;

bool Win32Desktop::isDown(Int16 code) { return GetAsyncKeyState(code) < 0; }

bool Win32Desktop::isFocused(NativeWindow window)
{
    return window != nullptr && GetFocus() == handle_of(window);
}

NativeWindow Win32Desktop::getCapture() { return GetCapture(); }

void Win32Desktop::setCapture(NativeWindow window) { SetCapture(handle_of(window)); }

void Win32Desktop::releaseCapture() { ReleaseCapture(); }

Desktop::Point Win32Desktop::getPointer()
{
    POINT position;
    return GetCursorPos(&position) != 0 ? Point{position.x, position.y} : Point{};
}

void Win32Desktop::setPointer(Point position) { SetCursorPos(position.x, position.y); }

void Win32Desktop::showPointer(bool visible) { ShowCursor(visible ? TRUE : FALSE); }

Desktop::Size Win32Desktop::getClientSize(NativeWindow window)
{
    RECT client;
    if(GetClientRect(handle_of(window), &client) == 0)
        return {};
    return {client.right - client.left, client.bottom - client.top};
}

Desktop::Point Win32Desktop::toScreen(NativeWindow window, Point client)
{
    POINT position{client.x, client.y};
    return ClientToScreen(handle_of(window), &position) != 0 ? Point{position.x, position.y}
                                                             : client;
}

Int64 Win32Desktop::getTicksPerSecond() { return TimerFrequency; }

Int64 Win32Desktop::getTicks()
{
    if(TimerFrequency > 0)
    {
        LARGE_INTEGER count;
        QueryPerformanceCounter(&count);
        return count.QuadPart;
    }
    FILETIME time;
    GetSystemTimeAsFileTime(&time);
    return static_cast<Int64>(static_cast<UInt64>(time.dwHighDateTime) << 32 | time.dwLowDateTime);
}

void Win32Desktop::writeDebugText(char const *text) { OutputDebugStringA(text); }
} // namespace OSG

#endif
