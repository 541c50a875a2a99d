#include "OSGWalkBody.h"

#include <gtest/gtest.h>

#include "RandomNumbers.h"
#include "SlowWalk.h"

using namespace OSG;
using namespace OSG::Test;

namespace
{
struct Body : ::testing::Test
{
    Frustum box(int type, Real32 distance) const
    {
        return WalkBody::box(static_cast<WalkBody::FrustumType>(type), Pnt3f(1, 2, 3), frame,
                             person, distance);
    }

    WalkFrame const frame{{0, 0, 1}, {-1, 0, 0}, {0, 1, 0}};
    WalkSettings const person;
};

std::vector<Pnt3f> corners_of(Frustum const &f)
{
    return {f.nlb(), f.nrb(), f.nrt(), f.nlt(), f.flb(), f.frb(), f.frt(), f.flt()};
}

TEST_F(Body, BoxesExtendFromThePersonIntoTheirDirection)
{
    struct
    {
        char const *name;
        Vec3f direction;
    } const rows[] = {{"forward", {0, 0, -1}}, {"backward", {0, 0, 1}}, {"left", {-1, 0, 0}},
                      {"right", {1, 0, 0}},    {"down", {0, -1, 0}},    {"up", {0, 1, 0}}};
    for(int type = 0; type < 6; ++type)
    {
        Real32 least = 9;
        Real32 most = -9;
        for(Pnt3f const &corner : corners_of(box(type, 10)))
        {
            least = std::min(least, (corner - Pnt3f(1, 2, 3)).dot(rows[type].direction));
            most = std::max(most, (corner - Pnt3f(1, 2, 3)).dot(rows[type].direction));
        }
        EXPECT_NEAR(least, 0, 1e-6) << rows[type].name;
        EXPECT_NEAR(most, 12, 1e-5) << rows[type].name;
    }
}

// The face through the person is the one that distances are measured from.
TEST_F(Body, AFaceThatDistancesCountFromGoesThroughThePerson)
{
    struct
    {
        UInt32 plane;
        Vec3f inwards;
    } const rows[] = {
        {SelectionFunctor::FarPlane, {0, 0, -1}},  {SelectionFunctor::FarPlane, {0, 0, 1}},
        {SelectionFunctor::NearPlane, {-1, 0, 0}}, {SelectionFunctor::NearPlane, {1, 0, 0}},
        {SelectionFunctor::TopPlane, {0, -1, 0}},  {SelectionFunctor::TopPlane, {0, 1, 0}}};
    for(int type = 0; type < 6; ++type)
    {
        Plane const plane = box(type, 10).Volume().getPlane(rows[type].plane);
        EXPECT_EQ(plane.getNormal(), rows[type].inwards) << type;
        EXPECT_NEAR(plane.distance(Pnt3f(1, 2, 3)), 0, 1e-6) << type;
        Pnt3f const middle = Pnt3f(1, 2, 3) + rows[type].inwards * 0.5f;
        EXPECT_TRUE(box(type, 10).Volume().intersect(middle)) << type;
    }
}

TEST_F(Body, AnUnknownDirectionGivesABoxAtTheOrigin)
{
    for(int const type : {-1, 6, 99})
    {
        for(Pnt3f const &corner : corners_of(box(type, 10)))
            EXPECT_EQ(corner, Pnt3f(0, 0, 0)) << type;
    }
}

TEST(WalkBody, CornersAreSumsInTheOrderBackLeftUp)
{
    RandomNumbers random(3);
    WalkedView view;
    for(int i = 0; i < 500; ++i)
    {
        Pnt3f const from = random.point(-100, 100);
        view.walk->set(from, from + random.vector(), random.vector());
        view.walk->setPersonDimensions(random.real(-1, 2), 1, random.real(-1, 2),
                                       random.real(-1, 2));
        SlowWalk const slow(*view.walk);
        Real32 const distance = random.real(-1, 10);
        for(int type = 0; type < 7; ++type)
        {
            EXPECT_EQ(
                corners_of(view.walk->getFrustum(static_cast<OpenWalk::FrustumType>(type), from,
                                                 slow.back, slow.left, slow.up, distance)),
                corners_of(slow.box(type, from, distance)))
                << type;
        }
    }
}

TEST(WalkBody, ViewsAndUpsWithoutLengthGiveShortDirections)
{
    WalkFrame const still = WalkBody::frame_of({1, 1, 1}, {1, 1, 1}, {0, 1, 0});
    EXPECT_EQ(still.back, Vec3f(0, 0, 0));
    EXPECT_EQ(still.left, Vec3f(0, 0, 0));
    EXPECT_EQ(still.up, Vec3f(0, 1, 0));
    WalkFrame const upright = WalkBody::frame_of({1, 1, 1}, {1, 5, 1}, {0, 1, 0});
    EXPECT_EQ(upright.back.length(), 0.f);
    WalkFrame const flat = WalkBody::frame_of({1, 1, 1}, {1, 1, 5}, {0, 0, 0});
    EXPECT_EQ(flat.back, Vec3f(0, 0, -1));
    EXPECT_EQ(flat.left, Vec3f(0, 0, 0));
}

TEST(WalkBody, TheTextForTheDebuggerHasAStepAndEightCorners)
{
    WalkedView view;
    Frustum const box({0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}, {0, 0, 2}, {1, 0, 2}, {1, 1, 2},
                      {0.5f, 1, 2});
    view.walk->test(box, Pnt3f(1, 2, 3), Pnt3f(4, 5, 6));
    EXPECT_EQ(view.desktop->getDebugText(), "from = (1, 2, 3)  --> to   = (4, 5, 6)\n"
                                            "nlb = (0, 0, 0)\n"
                                            "nrb = (1, 0, 0)\n"
                                            "nrt = (1, 1, 0)\n"
                                            "nlt = (0, 1, 0)\n"
                                            "\n"
                                            "flb = (0, 0, 2)\n"
                                            "frb = (1, 0, 2)\n"
                                            "frt = (1, 1, 2)\n"
                                            "flt = (0.5, 1, 2)\n"
                                            "\n");
}
} // namespace
