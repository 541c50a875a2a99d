#include "OSGPointerTool.h"

namespace OSG
{
PointerTool::~PointerTool() = default;
bool PointerTool::sharesDrag() const { return false; }
} // namespace OSG
