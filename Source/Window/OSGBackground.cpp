#include "OSGBackground.h"

namespace OSG
{
Background::~Background() = default;

void Background::clear() {}
} // namespace OSG
