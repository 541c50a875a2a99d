#include "OSGMultiCore.h"

namespace OSG
{
MultiCore::~MultiCore() = default;
} // namespace OSG
