#pragma once

/// \file
/// What a test program may add to the common main function.

namespace OSG::Test
{
/// Defined by a program that needs the system up: `before_all_tests` runs after the command line
/// was read and says whether the tests may run, `after_all_tests` follows the last test.
bool before_all_tests() __attribute__((weak));
void after_all_tests() __attribute__((weak));
} // namespace OSG::Test
