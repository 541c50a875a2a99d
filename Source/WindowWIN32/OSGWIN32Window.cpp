#include "OSGWIN32Window.h"

namespace OSG
{
WIN32Window::~WIN32Window() = default;
} // namespace OSG
