#include "OSGViewportTranslateChunk.h"

#include <gtest/gtest.h>

namespace OSG
{
namespace
{
TEST(ViewportTranslateChunk, ItsClassIsKnownByNameSlotsAndPriority)
{
    StateChunkClass const &kind = *ViewportTranslateChunk::getStaticClass();
    EXPECT_STREQ(kind.getName(), "ViewportTranslate");
    EXPECT_EQ(kind.getNumSlots(), 1u);
    EXPECT_EQ(kind.getPriority(), 100u);
    EXPECT_EQ(ViewportTranslateChunk::getStaticClassId(), kind.getId());
    EXPECT_LT(kind.getId(), StateChunkClass::getTotalSlots());
}

TEST(ViewportTranslateChunk, OffsetsStartAtZeroAndAreSetOnTheirOwn)
{
    UnrecordedRefPtr<ViewportTranslateChunk> const chunk(ViewportTranslateChunk::create());
    EXPECT_EQ(chunk->getOffsetX(), 0);
    EXPECT_EQ(chunk->getOffsetY(), 0);
    chunk->setOffsetX(-7);
    chunk->editOffsetY() = 9;
    EXPECT_EQ(chunk->getOffsetX(), -7);
    EXPECT_EQ(chunk->getOffsetY(), 9);
}
} // namespace
} // namespace OSG
