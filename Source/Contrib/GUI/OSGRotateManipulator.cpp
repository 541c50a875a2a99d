#include "OSGRotateManipulator.h"

namespace OSG
{
RotateManipulator::~RotateManipulator() = default;
} // namespace OSG
