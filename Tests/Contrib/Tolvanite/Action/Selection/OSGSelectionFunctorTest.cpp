#include "OSGSelectionFunctor.h"

#include <type_traits>

#include <gmock/gmock.h>

#include "MathPrinters.h"
#include "OSGMemManager.h"
#include "SelectionScenes.h"

namespace OSG::Test
{
namespace
{
using testing::ElementsAre;
using testing::IsEmpty;

static_assert(!std::is_copy_constructible_v<SelectionFunctor> &&
              !std::is_copy_assignable_v<SelectionFunctor>);
static_assert(std::has_virtual_destructor_v<SelectionFunctor>);

/// Gives the tests access to protected members, and adds hits by hand.
struct OpenFunctor : SelectionFunctor
{
    using SelectionFunctor::clip_polygon_at_polytop;
    using SelectionFunctor::ClipFirstMoved;
    using SelectionFunctor::coarse_intersect;
    using SelectionFunctor::containement;
    using SelectionFunctor::get_plane;
    using SelectionFunctor::line_intersect;
    using SelectionFunctor::Segment;
    using SelectionFunctor::segment_half_space_intersect;
    using SelectionFunctor::SegmentList;
    using SelectionFunctor::SelectionFunctor;

    void add(Node *node, Real32 distance, Int32 index = 0)
    {
        records().addVisit(node, getSelectionType(), Matrix(), {});
        records().addLast({distance, index, 0, false, Pnt3f(), Vec3f()});
    }
};

class SelectionFunctorTest : public testing::Test
{
  protected:
    Hits const &all() const { return functor.hits(SelectionFunctor::AllHits); }
    Hits const &front() const { return functor.hits(SelectionFunctor::FrontHits); }
    Hits const &back() const { return functor.hits(SelectionFunctor::BackHits); }

    ActionPtr action{SelectionAction::create(box_frustum())};
    OpenFunctor functor{action, 7, SelectionFunctor::NearPlane};
    NodePtr a = make_group();
    NodePtr b = make_group();
    NodePtr c = make_group();
};

std::vector<Int32> indices(Hits const &hits)
{
    std::vector<Int32> result;
    for(HitT const &hit : hits)
        result.push_back(hit.index);
    return result;
}

// --- settings ---

TEST_F(SelectionFunctorTest, BecomesTheActorOfItsAction)
{
    EXPECT_EQ(action->getActor(), &functor);
    EXPECT_EQ(functor.getAction(), action);
}

TEST_F(SelectionFunctorTest, KeepsItsSettings)
{
    SelectionFunctor other(action, 3, SelectionFunctor::TopPlane);
    EXPECT_EQ(other.getSelectionType(), 3u);
    EXPECT_EQ(other.getPlaneType(), SelectionFunctor::TopPlane);
    EXPECT_TRUE(other.getContinueOnEmptyMultiSwitchChoices());
    other.setSelectionType(4);
    other.setPlaneType(SelectionFunctor::FarPlane);
    other.setContinueOnEmptyMultiSwitchChoices(false);
    EXPECT_EQ(other.getSelectionType(), 4u);
    EXPECT_EQ(other.getPlaneType(), SelectionFunctor::FarPlane);
    EXPECT_FALSE(other.getContinueOnEmptyMultiSwitchChoices());
}

TEST_F(SelectionFunctorTest, DoesNotDetachItselfAtItsEnd)
{
    SelectionFunctor *last = nullptr;
    {
        SelectionFunctor const other(action, 7, SelectionFunctor::NearPlane);
        last = action->getActor();
        EXPECT_EQ(last, &other);
    }
    EXPECT_EQ(action->getActor(), last);
}

TEST_F(SelectionFunctorTest, ServesAnotherActionOnRequest)
{
    ActionPtr const other(SelectionAction::create());
    functor.setAction(other);
    EXPECT_EQ(functor.getAction(), other);
    EXPECT_EQ(other->getActor(), &functor);
    EXPECT_EQ(action->getActor(), &functor);
}

TEST(SelectionFunctorDeathTest, WithoutAnActionItFailsAtOnce)
{
    EXPECT_DEATH(SelectionFunctor(), "");
    EXPECT_DEATH(SimpleSelectionFunctor(), "");
}

TEST_F(SelectionFunctorTest, LivesInTheMemoryOfTheSystem)
{
    UInt64 const before = get_mem_bytes();
    auto *const onHeap = new SelectionFunctor(action, 7, SelectionFunctor::NearPlane);
    EXPECT_GE(get_mem_bytes(), before + sizeof(SelectionFunctor));
    delete onHeap;
    EXPECT_EQ(get_mem_bytes(), before);
}

// --- planes ---

TEST_F(SelectionFunctorTest, GivesThePlaneOfItsType)
{
    for(Int32 type = 0; type < 6; ++type)
    {
        functor.setPlaneType(static_cast<SelectionFunctor::PlaneType>(type));
        EXPECT_EQ(functor.get_plane(), box_planes()[static_cast<std::size_t>(type)]) << type;
    }
}

TEST_F(SelectionFunctorTest, ATypeThatNamesNoPlaneMeansTheNearOne)
{
    for(Int32 type : {9, 6, -1})
    {
        functor.setPlaneType(static_cast<SelectionFunctor::PlaneType>(type));
        EXPECT_EQ(&functor.get_plane(), &action->frustumVolume().getPlane(0)) << type;
    }
}

// --- results ---

TEST_F(SelectionFunctorTest, WithoutAWalkAllListsAreEmpty)
{
    EXPECT_THAT(all(), IsEmpty());
    EXPECT_THAT(front(), IsEmpty());
    EXPECT_THAT(back(), IsEmpty());
}

TEST_F(SelectionFunctorTest, AnyOtherTypeOfHitsMeansAll)
{
    functor.add(a, 1);
    EXPECT_EQ(&functor.hits(static_cast<SelectionFunctor::HitType>(3)), &all());
    EXPECT_EQ(&functor.hits(static_cast<SelectionFunctor::HitType>(-1)), &all());
}

TEST_F(SelectionFunctorTest, FrontAndBackStayEmptyUntilTheStop)
{
    functor.add(a, 1);
    EXPECT_EQ(all().size(), 1u);
    EXPECT_THAT(front(), IsEmpty());
    EXPECT_THAT(back(), IsEmpty());
}

TEST_F(SelectionFunctorTest, ASingleHitStandsInAllLists)
{
    functor.add(a, 3);
    functor.stop();
    EXPECT_THAT(nodes(all()), ElementsAre(a.get()));
    EXPECT_THAT(nodes(front()), ElementsAre(a.get()));
    EXPECT_THAT(nodes(back()), ElementsAre(a.get()));
}

TEST_F(SelectionFunctorTest, EachNodeKeepsItsNearestAndItsFarthestHit)
{
    functor.add(b, 4);
    functor.add(a, 5);
    functor.add(a, 1);
    functor.add(b, 2);
    functor.stop();
    EXPECT_THAT(distances(all()), ElementsAre(1, 2, 4, 5));
    EXPECT_THAT(distances(front()), ElementsAre(1, 2));
    EXPECT_THAT(distances(back()), ElementsAre(5, 4));
    EXPECT_THAT(nodes(back()), ElementsAre(a.get(), b.get()));
}

TEST_F(SelectionFunctorTest, EqualDistancesKeepTheOrderOfDiscovery)
{
    for(Int32 i = 0; i < 100; ++i)
        functor.add(i % 2 == 0 ? a : b, static_cast<Real32>(i % 3), i);
    functor.stop();
    for(std::size_t i = 1; i < all().size(); ++i)
    {
        ASSERT_LE(std::pair(all()[i - 1].distance, all()[i - 1].index),
                  std::pair(all()[i].distance, all()[i].index));
    }
}

TEST_F(SelectionFunctorTest, OfEqualDistancesFrontTakesTheFirstAndBackTheLast)
{
    functor.add(a, 1, 10);
    functor.add(a, 1, 11);
    functor.add(a, 1, 12);
    functor.stop();
    EXPECT_THAT(indices(front()), ElementsAre(10));
    EXPECT_THAT(indices(back()), ElementsAre(12));
}

TEST_F(SelectionFunctorTest, NodesAtEqualDistancesStandAsInAllHitsWhateverTheirAddresses)
{
    // Tested with both orders of addresses. If addresses decided, one of them would fail.
    for(std::vector<Node *> const &order :
        {std::vector<Node *>{a, b, c}, std::vector<Node *>{c, b, a}})
    {
        functor.start();
        for(Node *node : order)
            functor.add(node, 2);
        functor.stop();
        EXPECT_EQ(nodes(front()), order);
        EXPECT_EQ(nodes(back()), order);
    }
}

/// Adds random hits and compares the three lists with an obvious way to make them.
void compare_with_slow_lists(OpenFunctor &functor, std::vector<NodePtr> const &many, UInt32 count,
                             RandomNumbers &random)
{
    functor.start();
    std::vector<HitT> expected;
    for(UInt32 i = 0; i < count; ++i)
    {
        HitT hit;
        hit.node = many[random.below(static_cast<UInt32>(many.size()))];
        hit.distance = static_cast<Real32>(random.below(count / 4 + 20)) - 3.f;
        hit.index = static_cast<Int32>(i);
        functor.add(hit.node, hit.distance, hit.index);
        expected.push_back(hit);
    }
    functor.stop();
    auto const key = [](HitT const &hit) { return std::pair(hit.distance, hit.index); };
    std::sort(expected.begin(), expected.end(),
              [&](HitT const &x, HitT const &y) { return key(x) < key(y); });
    std::vector<Int32> expectedAll, expectedFront;
    std::vector<HitT> farthest;
    for(std::size_t i = 0; i < expected.size(); ++i)
    {
        auto const same = [&](HitT const &hit) { return hit.node == expected[i].node; };
        expectedAll.push_back(expected[i].index);
        if(std::none_of(expected.begin(), expected.begin() + static_cast<long>(i), same))
            expectedFront.push_back(expected[i].index);
        if(std::none_of(expected.begin() + static_cast<long>(i) + 1, expected.end(), same))
            farthest.push_back(expected[i]);
    }
    std::sort(farthest.begin(), farthest.end(),
              [](HitT const &x, HitT const &y)
              { return std::pair(-x.distance, x.index) < std::pair(-y.distance, y.index); });
    ASSERT_EQ(indices(functor.hits(SelectionFunctor::AllHits)), expectedAll);
    ASSERT_EQ(indices(functor.hits(SelectionFunctor::FrontHits)), expectedFront);
    ASSERT_EQ(indices(functor.hits(SelectionFunctor::BackHits)),
              indices(Hits(farthest.begin(), farthest.end())));
}

std::vector<NodePtr> make_groups(int count)
{
    std::vector<NodePtr> groups;
    for(int i = 0; i < count; ++i)
        groups.push_back(make_group());
    return groups;
}

TEST_F(SelectionFunctorTest, TheListsEqualASlowWayOnRandomHits)
{
    RandomNumbers random(81);
    std::vector<NodePtr> const many = make_groups(30);
    for(int round = 0; round < 200; ++round)
        compare_with_slow_lists(functor, many, random.below(100), random);
}

TEST_F(SelectionFunctorTest, TheListsOfVeryManyHitsEqualTheSlowWayToo)
{
    RandomNumbers random(82);
    std::vector<NodePtr> const many = make_groups(1000);
    for(UInt32 count : {2047u, 2048u, 5000u})
        compare_with_slow_lists(functor, many, count, random);
}

TEST_F(SelectionFunctorTest, BothZerosAreTheSameDistance)
{
    functor.add(a, 0.f, 1);
    functor.add(b, -0.f, 2);
    functor.stop();
    EXPECT_THAT(indices(all()), ElementsAre(1, 2));
    EXPECT_THAT(indices(back()), ElementsAre(1, 2));
}

TEST_F(SelectionFunctorTest, StartClearsTheListsAndReleasesTheirMemory)
{
    UInt64 const before = get_mem_bytes();
    for(int i = 0; i < 1000; ++i)
        functor.add(a, static_cast<Real32>(i));
    functor.stop();
    EXPECT_GT(get_mem_bytes(), before);
    functor.start();
    EXPECT_THAT(all(), IsEmpty());
    EXPECT_THAT(front(), IsEmpty());
    EXPECT_THAT(back(), IsEmpty());
    EXPECT_LE(get_mem_bytes(), before);
}

TEST_F(SelectionFunctorTest, AsItStandsItWalksEverythingAndRecordsNothing)
{
    NodePtr const root = make_group({make_node(make_geometry(inner_triangle())), make_group()});
    EXPECT_EQ(action->apply(root), ActionBase::Continue);
    EXPECT_THAT(all(), IsEmpty());
}

// --- the tests of clipping as members ---

TEST_F(SelectionFunctorTest, TestsPointsAgainstPlanes)
{
    PlaneArray const planes = box_planes();
    Pnt3f points[2] = {{0.5f, 0.5f, -0.5f}, {0.5f, 0.5f, 5}};
    EXPECT_TRUE(functor.coarse_intersect(points, 2, planes.data(), 6));
    EXPECT_FALSE(functor.coarse_intersect(points + 1, 1, planes.data(), 6));
    EXPECT_TRUE(functor.containement(points, 1, planes.data(), 6));
    EXPECT_FALSE(functor.containement(points, 2, planes.data(), 6));
}

TEST_F(SelectionFunctorTest, ClipsSegmentsAndPolygons)
{
    PlaneArray const planes = box_planes();
    Pnt3f ends[2] = {{0.5f, 0.5f, -0.5f}, {0.5f, 0.5f, 5}};
    EXPECT_TRUE(functor.line_intersect(ends, planes.data(), 6));
    EXPECT_EQ(ends[1], Pnt3f(0.5f, 0.5f, 0));
    OpenFunctor::Segment segment({0.5f, 0.5f, 1}, {0.5f, 0.5f, -0.5f});
    EXPECT_EQ(functor.segment_half_space_intersect(segment, planes[0]),
              OpenFunctor::ClipFirstMoved);
    OpenFunctor::SegmentList polygon = {{{0.2f, 0.2f, 9}, {0.4f, 0.2f, 9}},
                                        {{0.4f, 0.2f, 9}, {0.2f, 0.4f, 9}},
                                        {{0.2f, 0.4f, 9}, {0.2f, 0.2f, 9}}};
    functor.clip_polygon_at_polytop(polygon, planes.data(), 6);
    EXPECT_TRUE(polygon.empty());
}
} // namespace
} // namespace OSG::Test
