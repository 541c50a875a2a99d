#pragma once

#include "OSGViewareaBase.h"

namespace OSG
{
class FrameBufferObject;
class RenderActionBase;
class Window;

/// A rectangle of a window.
///
/// Rows of the edges count from the bottom of the window, as OpenGL has it:
///
///     height-1 +-----------------------+   window
///              |    left        right  |
///          top |     +------------+    |   all four edges are pixels of the area: it has
///              |     |            |    |   right - left + 1 columns
///       bottom |     +------------+    |
///            0 +-----------------------+
///
/// Left 0, right 1, bottom 0, top 1, which is what a new area has, stand for the whole window,
/// whatever its size; there is nothing of it without a window. In a passive area they are pixels
/// like any others.
///
/// Fractions of pixels are cut off; an edge that is not a number is 0.
class OSG_WINDOW_API Viewarea : public ViewareaBase
{
  public:
    // --- virtual operations, in slot order ---
    /// Draws the area with `action`.
    virtual void render(RenderActionBase *action) = 0;
    /// True where somebody else has set the window system up: the area takes it as it finds it.
    virtual bool isPassive() const;
    /// What is drawn into in place of the window; null for the window.
    virtual FrameBufferObject *getTarget() const;
    /// The edges in pixels. Where there is nothing, right is left - 1, top is bottom - 1.
    virtual Int32 calcPixelLeft() const;
    virtual Int32 calcPixelRight() const;
    virtual Int32 calcPixelBottom() const;
    virtual Int32 calcPixelTop() const;
    /// Whether the area covers its window, pixel by pixel; false without a window.
    virtual bool calcIsFullWindow() const;

    // --- size in pixels; 0 where edges are crossed ---
    Int32 calcPixelWidth() const;
    Int32 calcPixelHeight() const;

    /// The window's pixel (x, y), counted from its left top corner, in the area: -1 is its left or
    /// bottom border, 1 the right or top one. Rows count from the top of the parent, or of the
    /// area where there is none. False, and (0, 0), where the area has no pixel.
    bool calcNormalizedCoordinates(Real32 &normX, Real32 &normY, Int32 x, Int32 y) const;

    /// The window that has the area among its ports; null for none.
    Window *getParent() const { return _parent; }

  protected:
    Viewarea() = default;
    /// A copy belongs to no window.
    Viewarea(Viewarea const &source)
        : ViewareaBase(source)
    {
    }
    ~Viewarea() override;

    friend Pattern;
    friend class Window;

  private:
    bool isWholeWindow() const;

    Window *_parent = nullptr; // takes itself out when it ends
};
} // namespace OSG
