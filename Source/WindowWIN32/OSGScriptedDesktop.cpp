#include "OSGScriptedDesktop.h"

#include "OSGWIN32Window.h"

namespace OSG
{
ScriptedDesktop::ScriptedDesktop(Int64 ticksPerSecond)
    : _ticksPerSecond(ticksPerSecond)
{
}

ScriptedDesktop::~ScriptedDesktop() = default;

void ScriptedDesktop::setKey(Int16 code, bool isDown)
{
    if(isDown)
        _keysDown.insert(code);
    else
        _keysDown.erase(code);
}

void ScriptedDesktop::releaseAllKeys() { _keysDown.clear(); }

void ScriptedDesktop::setWindow(NativeWindow window, Point corner, Size size)
{
    _windows[window] = {corner, size};
}

void ScriptedDesktop::show(WIN32Window &window)
{
    NativeWindow const native = &window;
    window.setHwnd(native);
    setWindow(native, {0, 0}, {window.getWidth(), window.getHeight()});
    setFocus(native);
}

Desktop::Size ScriptedDesktop::getClientSize(NativeWindow window)
{
    auto const client = _windows.find(window);
    return client != _windows.end() ? client->second.size : Size{};
}

Desktop::Point ScriptedDesktop::toScreen(NativeWindow window, Point client)
{
    auto const place = _windows.find(window);
    if(place == _windows.end())
        return client;
    return {place->second.corner.x + client.x, place->second.corner.y + client.y};
}
} // namespace OSG
