#pragma once

/// \file
/// Vector code in each of its versions.

#include <cstdint>
#include <cstring>

#include <gtest/gtest.h>
#include <hwy/targets.h>

namespace OSG::Test
{
/// Whether two arrays of numbers have the same bits, not-a-number included.
inline bool have_same_bits(void const *a, void const *b, std::size_t bytes)
{
    return std::memcmp(a, b, bytes) == 0;
}

/// Calls `run` once for each of Highway's instruction sets that the machine has, with that set
/// alone in use, until something has failed.
template <class Run>
void for_each_instruction_set(Run const &run)
{
    int sets = 0;
    for(std::int64_t rest = hwy::SupportedTargets(); rest != 0; rest &= rest - 1)
    {
        std::int64_t const target = rest & -rest;
        SCOPED_TRACE(hwy::TargetName(target));
        hwy::SetSupportedTargetsForTest(target);
        hwy::GetChosenTarget().Update(hwy::SupportedTargets());
        ++sets;
        run();
        if(testing::Test::HasFailure())
            break;
    }
    hwy::SetSupportedTargetsForTest(0);
    hwy::GetChosenTarget().DeInit();
    EXPECT_GE(sets, 1);
    testing::Test::RecordProperty("InstructionSets", sets);
}
} // namespace OSG::Test
