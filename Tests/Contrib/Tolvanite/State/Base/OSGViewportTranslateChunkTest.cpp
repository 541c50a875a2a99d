#include "OSGViewportTranslateChunk.h"

#include <limits>

#include <gmock/gmock.h>

#include "DriverState.h"
#include "NeedsContext.h"
#include "OSGBlendChunk.h"
#include "OSGOffscreenContext.h"

namespace OSG::Test
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

using ChunkPtr = UnrecordedRefPtr<ViewportTranslateChunk>;
using testing::ElementsAre;

ChunkPtr make_chunk(Int32 x, Int32 y)
{
    ChunkPtr chunk(ViewportTranslateChunk::create());
    chunk->setOffsetX(x);
    chunk->setOffsetY(y);
    return chunk;
}

/// A current context whose viewport is 640 by 480 pixels.
class ShiftedViewport : public testing::Test
{
  protected:
    void SetUp() override
    {
        OSG_NEEDS_CONTEXT(context);
        ASSERT_TRUE(context.makeCurrent());
        glViewport(0, 0, 640, 480);
    }
    void TearDown() override
    {
        if(!context.missing().empty())
            return;
        EXPECT_EQ(glGetError(), error);
        context.release();
    }

    OffscreenContext context{640, 480};
    GLenum error = GL_NO_ERROR; ///< the one that the test expects
};

TEST_F(ShiftedViewport, MovesAndGrowsByTheOffsetsUntilTheChunkIsDeactivated)
{
    ChunkPtr const chunk = make_chunk(10, 5);
    chunk->activate(nullptr);
    EXPECT_THAT(driver_viewport(), ElementsAre(10, 5, 650, 485));
    chunk->deactivate(nullptr, 3);
    EXPECT_THAT(driver_viewport(), ElementsAre(0, 0, 640, 480));
}

TEST_F(ShiftedViewport, StaysWhereItIsWithoutOffsets)
{
    ChunkPtr const chunk = make_chunk(0, 0);
    chunk->activate(nullptr);
    EXPECT_THAT(driver_viewport(), ElementsAre(0, 0, 640, 480));
    chunk->deactivate(nullptr);
    EXPECT_THAT(driver_viewport(), ElementsAre(0, 0, 640, 480));
}

TEST_F(ShiftedViewport, MovesTheOtherWayWhereNothingWasActive)
{
    make_chunk(10, -5)->deactivate(nullptr);
    EXPECT_THAT(driver_viewport(), ElementsAre(-10, 5, 630, 485));
}

TEST_F(ShiftedViewport, ChangesFromChunkToChunkByBothOperations)
{
    ChunkPtr const first = make_chunk(10, 5);
    ChunkPtr const second = make_chunk(-3, 40);
    first->activate(nullptr);
    second->changeFrom(nullptr, first);
    EXPECT_THAT(driver_viewport(), ElementsAre(-3, 40, 637, 520));
    second->changeFrom(nullptr, second);
    EXPECT_THAT(driver_viewport(), ElementsAre(-3, 40, 637, 520));
}

TEST_F(ShiftedViewport, IsChangedFromWhatIsInForceAndNotFromWhatWasFound)
{
    ChunkPtr const chunk = make_chunk(10, 5);
    chunk->activate(nullptr);
    glViewport(100, 100, 50, 50);
    chunk->deactivate(nullptr);
    EXPECT_THAT(driver_viewport(), ElementsAre(90, 95, 40, 45));
}

TEST_F(ShiftedViewport, OfANegativeSizeIsLeftToTheDriverWhichRefusesIt)
{
    error = GL_INVALID_VALUE;
    make_chunk(-641, 0)->activate(nullptr);
    EXPECT_THAT(driver_viewport(), ElementsAre(0, 0, 640, 480));
}

TEST_F(ShiftedViewport, SumsBeyond32BitsWrapAround)
{
    error = GL_INVALID_VALUE; // the width wraps to a negative number
    make_chunk(std::numeric_limits<Int32>::max(), 0)->activate(nullptr);
    EXPECT_THAT(driver_viewport(), ElementsAre(0, 0, 640, 480));
}

TEST(ViewportTranslateChunk, IsEqualToAnotherOfTheSameOffsetsButNotInOrder)
{
    ChunkPtr const chunk = make_chunk(10, 5);
    ChunkPtr const same = make_chunk(10, 5);
    ChunkPtr const other = make_chunk(10, 6);
    EXPECT_TRUE(*chunk == *same);
    EXPECT_FALSE(*chunk != *same);
    EXPECT_TRUE(*chunk == *chunk);
    EXPECT_FALSE(*chunk == *other);
    EXPECT_TRUE(*chunk != *other);
    EXPECT_FALSE(*chunk < *chunk);
    EXPECT_NE(*chunk < *same, *same < *chunk);
    EXPECT_EQ(*chunk < *same, chunk.get() < same.get());
}

TEST(ViewportTranslateChunk, IsNoChunkOfAnotherClass)
{
    UnrecordedRefPtr<BlendChunk> const blend(BlendChunk::create());
    StateChunk const &other = *blend;
    EXPECT_FALSE(*make_chunk(0, 0) == other);
    EXPECT_TRUE(*make_chunk(0, 0) != other);
}

TEST(ViewportTranslateChunk, ChangesCostNothing)
{
    ChunkPtr const chunk = make_chunk(10, 5);
    EXPECT_EQ(chunk->switchCost(make_chunk(1, 2)), 0);
    EXPECT_EQ(chunk->switchCost(chunk), 0);
    EXPECT_EQ(chunk->switchCost(nullptr), 0);
    EXPECT_FALSE(chunk->isTransparent());
}
} // namespace
} // namespace OSG::Test
