#pragma once

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
    /// What the column has taken from the view since the last call; 0 where it was not begun.
    float takeWidth();

  private:
    char const *_id;
    Side _side;
    float _share = 0.22f; // of the window's width
    float _width = 0;
    bool _wasSized = false;
};
} // namespace Viewer
