#pragma once

#include "OSGRotateManipulatorBase.h"

namespace OSG
{
/// A transform whose subtree a user rotates with handles in the view.
class OSG_CONTRIBGUI_API RotateManipulator : public RotateManipulatorBase
{
  protected:
    RotateManipulator() = default;
    RotateManipulator(RotateManipulator const &) = default;
    ~RotateManipulator() override;

    friend Pattern;
};
} // namespace OSG
