#pragma once

#include "OSGViewareaBase.h"

namespace OSG
{
class FrameBufferObject;
class RenderActionBase;
class Window;

/// A rectangle of a window.
///
/// Rows of the edges count from the bottom of the window, as in OpenGL:
///
///     height-1 +-----------------------+   window
///              |    left        right  |
///          top |     +------------+    |   all four edges are pixels of the area, so that
///              |     |            |    |   it has right - left + 1 columns
///       bottom |     +------------+    |
///            0 +-----------------------+
///
/// A new area has left 0, right 1, bottom 0 and top 1. These values stand for the whole window,
/// whatever its size; without a window the area then has no pixels. In a passive area they are
/// pixels like any others.
///
/// Fractions of pixels are cut off. An edge that is NaN counts as 0.
class OSG_WINDOW_API Viewarea : public ViewareaBase
{
  public:
    // --- virtual operations, in slot order ---
    /// Draws the area with `action`.
    virtual void render(RenderActionBase *action) = 0;
    /// True if the host has set up the OpenGL viewport and drawing has to leave it as it is.
    virtual bool isPassive() const;
    /// The frame buffer that is drawn into; null stands for the window.
    virtual FrameBufferObject *getTarget() const;
    /// The edges in pixels. For the whole of a window that is missing, right is left - 1 and top is
    /// bottom - 1.
    virtual Int32 calcPixelLeft() const;
    virtual Int32 calcPixelRight() const;
    virtual Int32 calcPixelBottom() const;
    virtual Int32 calcPixelTop() const;
    /// Whether the area covers its window, pixel by pixel; false without a window.
    virtual bool calcIsFullWindow() const;
    // The last three call OpenGL and want a current context.
    /// Makes the area the viewport of OpenGL, and cuts off what is drawn beyond it.
    virtual void activateSize();
    /// What drawing begins with: activateSize(), unless the area is passive.
    virtual void activate();
    /// What drawing ends with: nothing is cut off any more, unless the area is passive.
    virtual void deactivate();

    // --- size in pixels; 0 if the edges are in the wrong order ---
    Int32 calcPixelWidth() const;
    Int32 calcPixelHeight() const;

    /// Converts the window's pixel (x, y), counted from the window's left top corner, to normalised
    /// coordinates of the area: -1 is its left or bottom border, 1 its right or top border. Without
    /// a window, rows count from the top of the area. An area without pixels gives (0, 0) and
    /// false.
    bool calcNormalizedCoordinates(Real32 &normX, Real32 &normY, Int32 x, Int32 y) const;

    /// The window that has the area among its ports; null if there is none.
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

    Window *_parent = nullptr; // no reference; the window clears it when it is destroyed
};
} // namespace OSG
