#pragma once

/// \file
/// Functions that a test program may add to the common main function.

namespace OSG::Test
{
/// For a program whose tests need the running system. `before_all_tests` runs after the command
/// line was read, and its result tells whether the tests may run. `after_all_tests` runs after the
/// last test.
bool before_all_tests() __attribute__((weak));
void after_all_tests() __attribute__((weak));
} // namespace OSG::Test
