#include "OSGUserNavigatorEngine.h"

namespace OSG
{
UserNavigatorEngine::UserNavigatorEngine() = default;
UserNavigatorEngine::~UserNavigatorEngine() = default;
} // namespace OSG
