#include "OSGScaleManipulator.h"

namespace OSG
{
ScaleManipulator::~ScaleManipulator() = default;
} // namespace OSG
