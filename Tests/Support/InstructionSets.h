#pragma once

#include <cstdint>

#include <gtest/gtest.h>
#include <hwy/targets.h>

namespace OSG::Test
{
/// Calls the function once with each of Highway's instruction sets that the machine has. Returns
/// their number.
template <class Function>
int for_each_instruction_set(Function const &function)
{
    int count = 0;
    for(std::int64_t rest = hwy::SupportedTargets(); rest != 0; rest &= rest - 1)
    {
        std::int64_t const set = rest & -rest;
        SCOPED_TRACE(hwy::TargetName(set));
        hwy::SetSupportedTargetsForTest(set);
        // The functions go on with the set that they have chosen until it is replaced.
        hwy::GetChosenTarget().Update(hwy::SupportedTargets());
        function();
        ++count;
    }
    hwy::SetSupportedTargetsForTest(0);
    hwy::GetChosenTarget().DeInit();
    return count;
}
} // namespace OSG::Test
