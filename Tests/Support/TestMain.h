#pragma once

/// \file
/// What a test program may add to the common main function.

namespace OSG::Test
{
/// Defined by a program that needs the system up: `beforeAllTests` runs after the command line was
/// read and says whether the tests may run, `afterAllTests` follows the last test.
bool beforeAllTests() __attribute__((weak));
void afterAllTests() __attribute__((weak));
} // namespace OSG::Test
