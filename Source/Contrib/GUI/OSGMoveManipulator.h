#pragma once

#include "OSGMoveManipulatorBase.h"

namespace OSG
{
/// A transform whose subtree a user moves with handles in the view.
class OSG_CONTRIBGUI_API MoveManipulator : public MoveManipulatorBase
{
  protected:
    MoveManipulator() = default;
    MoveManipulator(MoveManipulator const &) = default;
    ~MoveManipulator() override;

    friend Pattern;
};
} // namespace OSG
