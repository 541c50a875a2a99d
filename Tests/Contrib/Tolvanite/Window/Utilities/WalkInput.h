#pragma once

/// \file
/// A person that gets input, for tests of the walk.

#include <gtest/gtest.h>

#include "WalkedView.h"

namespace OSG::Test
{
/// In empty space, with a log of the steps.
struct Input : ::testing::Test
{
    Input() { view.walk->setWalkObserver(&log); }

    WalkedView view;
    OpenWalk &walk = *view.walk;
    ScriptedDesktop &desktop = *view.desktop;
    Navigator &navigator = view.navigator;
    StepLog log;
};

inline constexpr Int16 Escape = 27;
inline constexpr Int16 Shift = 16;
inline constexpr Int16 Ctrl = 17;
inline constexpr Int16 Space = 32;
inline constexpr Int16 F2 = 113;
inline constexpr Int16 F3 = 114;
inline constexpr Int16 F7 = 118;
inline constexpr Int16 F8 = 119;
} // namespace OSG::Test
