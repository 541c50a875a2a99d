#pragma once

#include "OSGAction.h"
#include "OSGStateApi.h"

namespace OSG
{
/// Base of the actions that draw a scene. A view applies one to its scene.
class OSG_STATE_API RenderActionBase : public Action
{
  protected:
    RenderActionBase() = default;
    RenderActionBase(RenderActionBase const &) = default;
    ~RenderActionBase() override;
};
} // namespace OSG
