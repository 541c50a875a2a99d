#pragma once

#include "OSGScaleManipulatorBase.h"

namespace OSG
{
/// A transform whose subtree a user scales with handles in the view.
class OSG_CONTRIBGUI_API ScaleManipulator : public ScaleManipulatorBase
{
  protected:
    ScaleManipulator() = default;
    ScaleManipulator(ScaleManipulator const &) = default;
    ~ScaleManipulator() override;

    friend Pattern;
};
} // namespace OSG
