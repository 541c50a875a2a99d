#include "OSGMoveManipulator.h"

namespace OSG
{
MoveManipulator::~MoveManipulator() = default;
} // namespace OSG
