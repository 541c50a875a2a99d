// Brings the scene graph up around the tests of a program.

#include "TestMain.h"

#include "OSGSystem.h"

namespace OSG::Test
{
bool beforeAllTests() { return startUp(); }
void afterAllTests() { shutDown(); }
} // namespace OSG::Test
