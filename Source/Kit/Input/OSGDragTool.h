#pragma once

#include "OSGPointerTool.h"

namespace OSG
{
/// What tools have in common that tell clicks from drags: a press is a click until the pointer has
/// been farther than ClickRadius from it.
class OSG_TOLVANITEKIT_API DragTool : public PointerTool
{
  public:
    /// In units of the toolkit.
    static constexpr Real32 ClickRadius = 3;

    void press(Event const &event) final;
    void drag(Event const &event) final;
    void release(Event const &event) final;
    void cancel() override;
    bool isBusy() const override { return _isDown; }

  protected:
    /// The button has come up. The tool is not busy any more, so that the host may do anything.
    virtual void finishClick(Event const &event) = 0;
    virtual void finishDrag(Event const &event) = 0;
    /// The drag is under way and has a new place. Does nothing in this class.
    virtual void follow(Event const &event);

    bool isDragging() const { return _isDown && _hasMoved; }
    Pnt2f const &getBegin() const { return _begin; }

  private:
    void note(Event const &event);

    Pnt2f _begin;
    bool _isDown = false;
    bool _hasMoved = false;
};
} // namespace OSG
