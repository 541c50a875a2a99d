#include "OSGVolume.h"

namespace OSG
{
Volume::~Volume() = default;
} // namespace OSG
