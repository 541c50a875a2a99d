#include "OSGRenderActionBase.h"

namespace OSG
{
RenderActionBase::~RenderActionBase() = default;
} // namespace OSG
