#include "OSGPointerTool.h"

#include "OSGToolObserver.h"

namespace OSG
{
PointerTool::~PointerTool() = default;
bool PointerTool::sharesDrag() const { return false; }
char const *PointerTool::getName() const { return "tool"; }

ToolObserver::~ToolObserver() = default;
} // namespace OSG
