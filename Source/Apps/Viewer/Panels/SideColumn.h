#pragma once

#include <set>
#include <string>

namespace Viewer
{
/// A column of panels at a side of the window, from the menus down to the line at the bottom. The
/// user may draw its edge.
class SideColumn
{
  public:
    enum class Side : unsigned char
    {
        Left,
        Right
    };

    SideColumn(char const *id, Side side)
        : _id(id)
        , _side(side)
    {
    }

    /// Begins a window of Dear ImGui, which has to be ended.
    void begin();
    /// Notes a panel that is drawn. Whether it was not drawn in the frame before.
    bool noteShown(std::string const &panel);
    /// Once per frame, after the panels. What the column has taken from the view; 0 where it was
    /// not begun.
    float endFrame();

  private:
    char const *_id;
    Side _side;
    float _share = 0.22f; // of the window's width
    float _width = 0;
    bool _wasSized = false;
    std::set<std::string> _shown;       // panels of this frame
    std::set<std::string> _shownBefore; // panels of the frame before
};
} // namespace Viewer
