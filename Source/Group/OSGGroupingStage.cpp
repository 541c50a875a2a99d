#include "OSGGroupingStage.h"

namespace OSG
{
GroupingStage::~GroupingStage() = default;
} // namespace OSG
