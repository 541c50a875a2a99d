#include "OSGSwitch.h"

namespace OSG
{
Switch::~Switch() = default;
} // namespace OSG
