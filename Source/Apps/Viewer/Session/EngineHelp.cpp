#include "EngineHelp.h"

namespace Viewer
{
std::vector<HelpLine> help_of_engine(std::string const &name)
{
    if(name == "cad")
        return {{"Left drag", "turn the scene"},
                {"Middle drag", "move the scene sideways"},
                {"Right drag", "nearer and farther"},
                {"Wheel", "nearer and farther"},
                {"Up, Down", "nearer and farther"}};
    if(name == "fly")
        return {{"Pointer", "turn the head"},
                {"Left held", "fly forwards while the pointer moves"},
                {"Right held", "fly backwards while the pointer moves"},
                {"Wheel", "a step forwards or backwards"},
                {"Up, Down", "a step forwards or backwards"},
                {"Left, Right", "a step sideways"},
                {"Page Up, Page Down", "turn to the left, to the right"}};
    if(name == "copter")
        return {{"Left click", "fly forwards, or stop"},
                {"Right click", "fly backwards, or stop"},
                {"Pointer", "steer while flying"},
                {"Space", "next kind of flight: steer, orbit, turn, shift"},
                {"Enter, middle click", "next way to turn and to shift"},
                {"Wheel, + and -", "faster and slower"}};
    if(name == "walk")
        return {{"W, Up, left button", "forwards"},
                {"S, Down, right button", "backwards"},
                {"A, D, Left, Right", "sideways"},
                {"Q, Delete; E, End", "turn left; turn right"},
                {"X, Page Up; Y, Page Down", "up; down (not in walk mode)"},
                {"C", "look at the horizon"},
                {"Shift, Ctrl held", "faster, slower"},
                {"Space", "jump at the next step"},
                {"1, 2", "walk mode, god mode"},
                {"F2; F3 or 3", "game mode; with free look"},
                {"Escape", "leave game mode"},
                {"F7, F8", "field of view"},
                {"Wheel, + and -", "speed of steps"},
                {"Shift+wheel, * and _", "speed of turns"}};
    return {};
}

std::vector<HelpLine> help_of_tools()
{
    return {{"Click", "select; Shift adds, Ctrl toggles"},
            {"Band to the right", "select what lies wholly inside"},
            {"Band to the left", "select what it touches"},
            {"Lasso", "draw around what to select"},
            {"Distance", "click two points"},
            {"Angle", "click three points, the corner second"},
            {"Wheel over the list", "select what lies behind"},
            {"Escape", "end a drag without a result"},
            {"A dropped file", "is opened"}};
}
} // namespace Viewer
