#include "OSGBackground.h"

namespace OSG
{
Background::~Background() = default;
} // namespace OSG
