#include "OSGDrawStateTable.h"

#include <gtest/gtest.h>

#include "OSGSimpleMaterial.h"

namespace OSG::Test
{
namespace
{
UnrecordedRefPtr<SimpleMaterial> make_red(Real32 red)
{
    UnrecordedRefPtr<SimpleMaterial> const material(SimpleMaterial::create());
    material->setDiffuse(Color3f(red, 0, 0));
    return material;
}

TEST(DrawStateTable, NumbersThatAreNotInUseAreGivenOutAgain)
{
    auto const kept = make_red(0.1f);
    auto const passing = make_red(0.2f);
    auto const other = make_red(0.3f);
    DrawStateTable table;
    UInt32 const number = table.numberOf(kept, nullptr);
    for(int round = 0; round < 100; ++round)
    {
        table.numberOf(passing, nullptr);
        table.numberOf(other, nullptr);
        std::vector<bool> inUse(table.size(), false);
        inUse[number] = true;
        table.refresh(inUse);
        ASSERT_LE(table.size(), 3u);
    }
    EXPECT_EQ(table.numberOf(kept, nullptr), number);
    UInt32 const again = table.numberOf(other, nullptr);
    EXPECT_NE(again, number);
    EXPECT_EQ(table.getStates()[table.stateOf(again)]->surface.diffuse[0], 0.3f);
}

TEST(DrawStateTable, EqualValuesAreOneState)
{
    auto const one = make_red(0.1f);
    auto const same = make_red(0.1f);
    DrawStateTable table;
    UInt32 const a = table.numberOf(one, nullptr);
    UInt32 const b = table.numberOf(same, nullptr);
    EXPECT_NE(a, b);
    EXPECT_EQ(table.stateOf(a), table.stateOf(b));
    same->setDiffuse(Color3f(0.5f, 0, 0));
    table.refresh({true, true});
    EXPECT_NE(table.stateOf(a), table.stateOf(b));
}
} // namespace
} // namespace OSG::Test
