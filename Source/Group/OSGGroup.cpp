#include "OSGGroup.h"

namespace OSG
{
Group::~Group() = default;
} // namespace OSG
