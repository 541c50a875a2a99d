#include "OSGComponentTransform.h"

namespace OSG
{
ComponentTransform::~ComponentTransform() = default;
} // namespace OSG
