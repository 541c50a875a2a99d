#include "OSGActionBase.h"

namespace OSG
{
ActionBase::~ActionBase() = default;
} // namespace OSG
