#pragma once

/// \file
/// For tests that draw.

#include <gtest/gtest.h>

/// Reports the test as not run, with the reason, on a machine where `context` cannot draw.
#define OSG_NEEDS_CONTEXT(context)                                                                 \
    if(!(context).missing().empty())                                                               \
    GTEST_SKIP() << (context).missing()
