#pragma once

#include "OSGAction.h"
#include "OSGStateApi.h"

namespace OSG
{
/// Base of the traversals that draw: what a view hands its scene to.
class OSG_STATE_API RenderActionBase : public Action
{
  protected:
    RenderActionBase() = default;
    RenderActionBase(RenderActionBase const &) = default;
    ~RenderActionBase() override;
};
} // namespace OSG
