#include "OSGVolume.h"

#include <gmock/gmock.h>

#include "OSGBoxVolume.h"
#include "OSGFrustumVolume.h"

namespace
{
using namespace OSG;

TEST(Volume, FlagsAreReadAndWritten)
{
    BoxVolume box;
    EXPECT_TRUE(box.isValid());
    EXPECT_TRUE(box.isEmpty());
    EXPECT_FALSE(box.isInfinite());
    EXPECT_FALSE(box.isStatic());
    box.setValid(false);
    box.setStatic(true);
    EXPECT_FALSE(box.isValid());
    EXPECT_TRUE(box.isStatic());
    EXPECT_TRUE(box.isFixed());
}

TEST(Volume, InfiniteEndsEmptyAndTheOtherWayRound)
{
    BoxVolume box;
    box.setInfinite(true);
    EXPECT_FALSE(box.isEmpty());
    box.setEmpty(true);
    EXPECT_FALSE(box.isInfinite());
    box.setEmpty(false);
    EXPECT_FALSE(box.isInfinite());
}

TEST(Volume, BoxAndFrustumAnswerAlikeFromBothSides)
{
    BoxVolume const box(Pnt3f(0, 0, 0), Pnt3f(1, 1, 1));
    Plane const above(Vec3f(0, 0, 1), Pnt3f(0, 0, 2));
    FrustumVolume const far(above, above, above, above, above, above);
    FrustumVolume const everything;
    Volume const &volume = box;
    EXPECT_FALSE(volume.intersect(far));
    EXPECT_FALSE(far.intersect(volume));
    EXPECT_TRUE(volume.intersect(everything));
    EXPECT_TRUE(everything.intersect(volume));
    EXPECT_TRUE(everything.intersect(far));
}
} // namespace
