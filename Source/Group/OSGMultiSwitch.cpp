#include "OSGMultiSwitch.h"

namespace OSG
{
MultiSwitch::~MultiSwitch() = default;
} // namespace OSG
