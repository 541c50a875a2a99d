// Brings the scene graph up around the tests of a program.

#include "TestMain.h"

#include "OSGSystem.h"

namespace OSG::Test
{
bool before_all_tests() { return startUp(); }
void after_all_tests() { shutDown(); }
} // namespace OSG::Test
