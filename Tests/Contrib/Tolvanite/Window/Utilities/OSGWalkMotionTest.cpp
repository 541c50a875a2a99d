// The moves in a space that a test makes up.
#include "OSGWalkMotion.h"

#include <cmath>

#include <gtest/gtest.h>

#include "MathPrinters.h"

using namespace OSG;

namespace
{
/// Answers every box, or every box before a number of them, by one obstacle.
struct MadeUpSpace : WalkSpace
{
    std::optional<WalkObstacle> box(Frustum const &, SelectionFunctor::PlaneType plane) override
    {
        planes.push_back(plane);
        if(planes.size() > refusedBoxes)
            return std::nullopt;
        return WalkObstacle{nullptr, {}, boxDistance, {0, 0, 1}};
    }
    std::optional<WalkObstacle> ray(Line const &line) override
    {
        rays.push_back(line);
        return std::nullopt;
    }

    std::size_t refusedBoxes = 0;
    Real32 boxDistance = 0;
    std::vector<SelectionFunctor::PlaneType> planes;
    std::vector<Line> rays;
};

struct Motion : ::testing::Test
{
    Motion() { pose.set({0, 1.65f, 0}, {0, 1.65f, -1}, {0, 1, 0}); }

    WalkSettings settings;
    EyePose pose;
    MadeUpSpace space;
    WalkMotion motion{settings, pose, space};
};
using Direction = WalkStep::Direction;
constexpr Real32 NaN = std::numeric_limits<Real32>::quiet_NaN();
constexpr Real32 Infinity = std::numeric_limits<Real32>::infinity();

TEST_F(Motion, AFreeStepAsksABoxAndALineThroughTheNewHead)
{
    WalkMotion::Result const result = motion.step(Direction::AlongView, -2, 1);
    ASSERT_TRUE(result.move);
    EXPECT_TRUE(result.move->first.equals(Pnt3f(0, 1.65f, -2), 1e-6f));
    EXPECT_TRUE(result.move->second.equals(Pnt3f(0, 1.65f, -3), 1e-6f));
    EXPECT_EQ(space.planes, std::vector{SelectionFunctor::FarPlane});
    ASSERT_EQ(space.rays.size(), 1u);
    EXPECT_TRUE(space.rays[0].getPosition().equals(Pnt3f(0, 1.8f, -2), 1e-6f));
    EXPECT_EQ(space.rays[0].getDirection(), Vec3f(0, -1, 0));
    EXPECT_EQ(result.step.queries, 2u);
}

TEST_F(Motion, AHitAtTheMarginBehindTheStepRefusesIt)
{
    settings.fatness = 0.5f;
    settings.width = 0.75f;
    settings.wallDistance = 0.25f; // a margin of 0.5 along the view
    settings.numStepLoop = 1;
    settings.jumpStaircaseStrength = 0;
    space.refusedBoxes = 99;
    space.boxDistance = 2.5f;
    EXPECT_FALSE(motion.tryStep(Direction::AlongView, 2, 0, motion.frame()));
    space.boxDistance = std::nextafter(2.5f, 3.f);
    EXPECT_TRUE(motion.tryStep(Direction::AlongView, 2, 0, motion.frame()));
    EXPECT_FALSE(motion.tryStep(Direction::Sideways, 2, 0, motion.frame())) << "a wider body";
}

TEST_F(Motion, StepsAndVerticalStepsMeasureFromTheirFaces)
{
    settings.walkMode = false;
    motion.step(Direction::AlongView, 1, 0);
    motion.step(Direction::AlongView, -1, 0);
    motion.step(Direction::Sideways, 1, 0);
    motion.step(Direction::Sideways, -1, 0);
    motion.stepVertically(1);
    motion.stepVertically(-1);
    using enum SelectionFunctor::PlaneType;
    EXPECT_EQ(space.planes,
              (std::vector{FarPlane, FarPlane, NearPlane, NearPlane, TopPlane, TopPlane}));
}

// The answer of a blocked step of length 0 is that of all passes.
TEST_F(Motion, EndsAsSoonAsAFurtherPassChangesNothing)
{
    settings.numStepLoop = 4000000000u;
    space.refusedBoxes = static_cast<std::size_t>(-1);
    for(Real32 const step : {0.f, -0.f, 1.f, -1e30f, 1e-40f, NaN, Infinity, -Infinity})
    {
        for(Real32 const jump : {0.f, 1.f, 1e30f, NaN, Infinity, -1.f})
        {
            EXPECT_FALSE(motion.step(Direction::AlongView, step, jump).move) << step << ' ' << jump;
            EXPECT_FALSE(motion.stepVertically(step).move) << step;
        }
    }
    for(Real32 const jump : {1.f, 1e30f, 1e-6f, NaN, Infinity})
        EXPECT_FALSE(motion.findRaise(jump)) << jump;
}

TEST_F(Motion, ManyTriesFindTheRoomToTheLastBit)
{
    struct Ceiling : MadeUpSpace
    {
        std::optional<WalkObstacle> box(Frustum const &, SelectionFunctor::PlaneType) override
        {
            return WalkObstacle{nullptr, {}, 0.75f, {}};
        }
    } ceiling;
    settings.wallDistance = 0.25f;
    settings.numStepLoop = 4000000000u;
    WalkMotion low(settings, pose, ceiling);
    boost::optional<Real32> const raise = low.findRaise(3);
    ASSERT_TRUE(raise);
    EXPECT_LT(*raise, 0.5f);
    EXPECT_NEAR(*raise, 0.5f, 1e-6);
}

TEST_F(Motion, AResultThatIsNotFiniteIsARefusalWithoutAnObstacle)
{
    for(Real32 const step : {NaN, Infinity})
    {
        WalkMotion::Result const result = motion.step(Direction::Sideways, step, 1);
        EXPECT_FALSE(result.move);
        EXPECT_EQ(result.step.outcome, WalkStep::Outcome::Refused);
        EXPECT_FALSE(result.step.obstacle);
    }
}

// A step that is too long for finite numbers becomes one by halving. No box is asked for, since it
// would not be finite.
TEST_F(Motion, ARefusalForItsSizeGoesOnToTheNextPass)
{
    settings.godMode = true;
    pose.set({0, 3e38f, 0}, {0, 3e38f, -1}, {0, 1, 0});
    WalkMotion::Result const result = motion.stepVertically(3e38f);
    ASSERT_TRUE(result.move);
    EXPECT_EQ(result.step.step, 3e38f / 8);
}

TEST_F(Motion, AStepWhoseBoxIsNotFiniteIsRefusedWithoutAQuery)
{
    settings.walkMode = false;
    settings.numStepLoop = 3;
    WalkMotion::Result const result = motion.stepVertically(1e25f);
    EXPECT_FALSE(result.move);
    EXPECT_EQ(result.step.queries, 0u);
    EXPECT_FALSE(result.step.obstacle);
}

TEST_F(Motion, ARefusedLevelTryAndARaisedOneTellTheObstacle)
{
    space.refusedBoxes = 1; // the level box; then there is room above and before
    WalkMotion::Result const result = motion.step(Direction::AlongView, -1, 0.5f);
    EXPECT_EQ(result.step.outcome, WalkStep::Outcome::Raised);
    EXPECT_EQ(result.step.raise, 0.5f);
    ASSERT_TRUE(result.step.obstacle);
    EXPECT_EQ(result.step.obstacle->normal, Vec3f(0, 0, 1));
    // The level box, one box above the head, the raised box, the line down.
    EXPECT_EQ(result.step.queries, 4u);
    EXPECT_TRUE(result.move->first.equals(Pnt3f(0, 2.15f, -1), 1e-6f));
}

TEST_F(Motion, AFallAsksFromTheEye)
{
    EXPECT_FALSE(motion.tryFall(motion.frame()));
    ASSERT_EQ(space.rays.size(), 1u);
    EXPECT_EQ(space.rays[0].getPosition(), Pnt3f(0, 1.65f, 0));
    EXPECT_TRUE(space.planes.empty());
}
} // namespace
