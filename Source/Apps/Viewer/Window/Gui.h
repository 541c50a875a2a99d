#pragma once

namespace Viewer
{
/// Dear ImGui in the window: its frames, its colours and what is the panels' of the input.
class Gui
{
  public:
    /// The window's context is current.
    Gui();
    ~Gui();
    Gui(Gui const &) = delete;
    Gui &operator=(Gui const &) = delete;

    void setStyle(bool isDark, float scale);
    void beginFrame();
    /// Ends the frame; render() draws it.
    void endFrame();
    void render();

    /// Whether a panel lies under this place of the window, in the toolkit's units. Asked at a
    /// press, since the pointer may have come there since the last frame.
    bool isOverPanel(double x, double y) const;
    /// Whether a panel has the pointer: it lies over one, or a drag began there.
    bool wantsPointer() const;
    bool wantsKeyboard() const;

  private:
    bool _isDark = true;
    float _scale = 0;
};
} // namespace Viewer
