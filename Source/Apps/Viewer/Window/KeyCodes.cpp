#include "KeyCodes.h"

#include "OSGPointerTool.h"

#define GLFW_INCLUDE_NONE
#include <GLFW/glfw3.h>

namespace Viewer
{
namespace
{
struct Pair
{
    int glfw;
    OSG::Int16 code;
};

// The codes as in the documentation of virtual keys.
constexpr Pair Pairs[] = {
    {GLFW_KEY_BACKSPACE, 8},      {GLFW_KEY_TAB, 9},          {GLFW_KEY_ENTER, 13},
    {GLFW_KEY_LEFT_SHIFT, 16},    {GLFW_KEY_RIGHT_SHIFT, 16}, {GLFW_KEY_LEFT_CONTROL, 17},
    {GLFW_KEY_RIGHT_CONTROL, 17}, {GLFW_KEY_LEFT_ALT, 18},    {GLFW_KEY_RIGHT_ALT, 18},
    {GLFW_KEY_ESCAPE, 27},        {GLFW_KEY_SPACE, 32},       {GLFW_KEY_PAGE_UP, 33},
    {GLFW_KEY_PAGE_DOWN, 34},     {GLFW_KEY_END, 35},         {GLFW_KEY_HOME, 36},
    {GLFW_KEY_LEFT, 37},          {GLFW_KEY_UP, 38},          {GLFW_KEY_RIGHT, 39},
    {GLFW_KEY_DOWN, 40},          {GLFW_KEY_INSERT, 45},      {GLFW_KEY_DELETE, 46},
    {GLFW_KEY_KP_MULTIPLY, 106},  {GLFW_KEY_KP_ADD, 107},     {GLFW_KEY_KP_SUBTRACT, 109}};
} // namespace

OSG::Int16 virtual_key(int glfwKey)
{
    constexpr OSG::Int16 NumericPad0 = 96;
    constexpr OSG::Int16 F1 = 112;
    bool const isLetter = glfwKey >= GLFW_KEY_A && glfwKey <= GLFW_KEY_Z;
    bool const isDigit = glfwKey >= GLFW_KEY_0 && glfwKey <= GLFW_KEY_9;
    if(isLetter || isDigit)
        return static_cast<OSG::Int16>(glfwKey);
    if(glfwKey >= GLFW_KEY_KP_0 && glfwKey <= GLFW_KEY_KP_9)
        return static_cast<OSG::Int16>(NumericPad0 + glfwKey - GLFW_KEY_KP_0);
    if(glfwKey >= GLFW_KEY_F1 && glfwKey <= GLFW_KEY_F12)
        return static_cast<OSG::Int16>(F1 + glfwKey - GLFW_KEY_F1);
    for(Pair const &pair : Pairs)
        if(pair.glfw == glfwKey)
            return pair.code;
    return 0;
}

OSG::UInt16 tool_modifiers(int glfwModifiers)
{
    using Modifier = OSG::PointerTool::Modifier;
    int modifiers = 0;
    if((glfwModifiers & GLFW_MOD_SHIFT) != 0)
        modifiers |= Modifier::Shift;
    if((glfwModifiers & GLFW_MOD_CONTROL) != 0)
        modifiers |= Modifier::Control;
    if((glfwModifiers & GLFW_MOD_ALT) != 0)
        modifiers |= Modifier::Alt;
    return static_cast<OSG::UInt16>(modifiers);
}
} // namespace Viewer
