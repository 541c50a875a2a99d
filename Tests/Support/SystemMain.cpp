// Starts the scene graph before the tests of a program and shuts it down after them.

#include "TestMain.h"

#include "OSGSystem.h"

namespace OSG::Test
{
bool before_all_tests() { return startUp(); }
void after_all_tests() { shutDown(); }
} // namespace OSG::Test
