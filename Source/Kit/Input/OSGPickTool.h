#pragma once

#include <boost/function.hpp>

#include "OSGDragTool.h"

namespace OSG
{
/// Gives clicks. A drag has no result.
class OSG_TOLVANITEKIT_API PickTool : public DragTool
{
  public:
    /// The place of the press, and the modifiers of the release.
    using OnClick = boost::function<void(Event const &click)>;

    explicit PickTool(OnClick onClick);
    char const *getName() const override { return "pick"; }

  protected:
    void finishClick(Event const &event) override;
    void finishDrag(Event const &event) override;

  private:
    OnClick _onClick;
};

/// Leaves the left button to the navigator and gives the clicks in which the pointer did not move.
class OSG_TOLVANITEKIT_API NavigateTool : public PickTool
{
  public:
    using PickTool::PickTool;
    bool sharesDrag() const override;
    char const *getName() const override { return "navigate"; }
};
} // namespace OSG
