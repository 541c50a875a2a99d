#include "OSGPrimitiveIndex.h"

#include <cstring>
#include <limits>
#include <memory>

#include <gmock/gmock.h>
#include <hwy/targets.h>

#include "GeometryBuilders.h"
#include "LogCapture.h"
#include "OSGBoxWalk.h"
#include "OSGGeometryIterators.h"
#include "OSGSpaceOrder.h"
#include "RandomNumbers.h"

namespace OSG::Test
{
namespace
{
using Order = PrimitiveIndex::Order;
using IndexPtr = std::unique_ptr<PrimitiveIndex>;

IndexPtr build(Geometry const &geometry, IndexedKind kind, Order order)
{
    return IndexPtr(build_primitive_index(geometry, kind, order == Order::Sorted));
}

/// Primitives of all types, some of them with indices out of range.
GeometryParts random_parts(RandomNumbers &random)
{
    GeometryParts parts;
    UInt32 const primitives = 1 + random.below(random.below(2) == 0 ? 4 : 200);
    UInt32 vertices = 0;
    bool const trianglesAlone = random.below(4) == 0;
    for(UInt32 i = 0; i < primitives; ++i)
    {
        parts.types.push_back(trianglesAlone ? UInt32(TrianglesPrimitive) : random.below(10));
        parts.lengths.push_back(trianglesAlone ? 3 * random.below(40) : random.below(40));
        vertices += parts.lengths.back();
    }
    UInt32 const points = 3 + random.below(vertices + 1);
    for(UInt32 i = 0; i < points; ++i)
        parts.positions.push_back(random.point(-3.f, 3.f));
    UInt32 const beyond = random.below(3) == 0 ? 2 : 0;
    for(UInt32 i = 0; i < vertices && random.below(400) != 0; ++i)
        parts.index.push_back(random.below(points + beyond));
    return parts;
}

template <class Rule, class Iterator>
std::vector<std::vector<Pnt3f>> corners_of(Iterator it, Iterator end)
{
    std::vector<std::vector<Pnt3f>> result;
    for(; it != end; ++it)
    {
        result.emplace_back();
        for(int c = 0; c < Rule::Corners; ++c)
            result.back().push_back(it.getPosition(c));
    }
    return result;
}

bool is_within(Pnt3f const &point, BoxNode const &node, UInt32 child)
{
    for(UInt32 axis = 0; axis < 3; ++axis)
        if(point[axis] < node.bound[axis][child] || point[axis] > node.bound[axis + 3][child])
            return false;
    return true;
}

/// Enters everything; checks each block against the boxes on the way to it.
struct EveryBox
{
    void test(BoxNode const &node, UInt32, BoxChoices &choices)
    {
        for(UInt32 child = 0; child < BoxNode::Width; ++child)
        {
            choices.key[child] = node.bound[0][child];
            choices.state[child] = 0;
        }
    }
    bool wants(Real32, UInt32) { return true; }
};

template <class Rule>
void expect_every_primitive_once(PrimitiveIndex const &index, Geometry const &geometry,
                                 std::vector<std::vector<Pnt3f>> const &expected)
{
    ASSERT_EQ(index.size(), expected.size());
    PartReader<Rule> reader(index, geometry);
    std::vector<int> seen(expected.size());
    auto const see = [&](UInt32 i)
    {
        Pnt3f corners[Rule::Corners];
        reader.read(i, corners);
        for(int c = 0; c < Rule::Corners; ++c)
            ASSERT_EQ(std::memcmp(&corners[c], &expected[i][std::size_t(c)], sizeof(Pnt3f)), 0);
        ++seen[i];
    };
    EveryBox boxes;
    walk_boxes(index, 0, boxes,
               [&](UInt32 block, UInt32)
               {
                   UInt32 const at = block * PrimitiveIndex::BlockSize;
                   BoxNode const *node = &index.level(0)[block / BoxNode::Width];
                   UInt32 child = block % BoxNode::Width;
                   for(UInt32 level = 0, path = block; level < index.levelCount(); ++level)
                   {
                       node = &index.level(level)[path / BoxNode::Width];
                       child = path % BoxNode::Width;
                       path /= BoxNode::Width;
                       for(UInt32 k = 0; k < index.blockSize(block); ++k)
                       {
                           UInt32 const i = index.primitiveAt(at + k);
                           EXPECT_LE(node->first[child], i);
                           EXPECT_GE(node->last[child], i);
                           for(Pnt3f const &corner : expected[i])
                               EXPECT_TRUE(is_within(corner, *node, child));
                       }
                   }
                   for(UInt32 k = 0; k < index.blockSize(block); ++k)
                       see(index.primitiveAt(at + k));
                   return true;
               });
    for(UInt32 place = index.untamedBegin(); place < index.size(); ++place)
        see(index.primitiveAt(place));
    EXPECT_THAT(seen, testing::Each(1));
}

TEST(PrimitiveIndex, HoldsEveryPrimitiveOnceWithinItsBoxes)
{
    RandomNumbers random(301);
    int built = 0;
    for(int round = 0; round < 400 && !testing::Test::HasFailure(); ++round)
    {
        SCOPED_TRACE(round);
        LogCapture log;
        GeometryParts parts = random_parts(random);
        Real32 const odd[] = {std::numeric_limits<Real32>::quiet_NaN(),
                              std::numeric_limits<Real32>::infinity(), 1e30f};
        if(random.below(3) == 0)
            parts.positions[random.below(static_cast<UInt32>(parts.positions.size()))][1] =
                odd[random.below(3)];
        GeometryPtr const geometry = make_geometry(parts);
        for(Order order : {Order::Runs, Order::Sorted})
        {
            if(IndexPtr const index = build(*geometry, IndexedKind::Triangles, order))
            {
                expect_every_primitive_once<TriangleRule>(
                    *index, *geometry,
                    corners_of<TriangleRule>(geometry->beginTriangles(), geometry->endTriangles()));
                ++built;
            }
            if(IndexPtr const index = build(*geometry, IndexedKind::Lines, order))
                expect_every_primitive_once<LineRule>(
                    *index, *geometry,
                    corners_of<LineRule>(geometry->beginLines(), geometry->endLines()));
        }
    }
    EXPECT_GT(built, 400);
}

TEST(PrimitiveIndex, NumbersThePointsOfPointPrimitives)
{
    GeometryParts parts;
    parts.types = {PointsPrimitive, LinesPrimitive, PointsPrimitive};
    parts.lengths = {40, 2, 3};
    parts.index.resize(45);
    for(UInt32 i = 0; i < 45; ++i)
    {
        parts.index[i] = i;
        parts.positions.push_back(Pnt3f(Real32(i), 0, 0));
    }
    parts.index[1] = 99;
    LogCapture log;
    GeometryPtr const geometry = make_geometry(parts);
    IndexPtr const index = build(*geometry, IndexedKind::Points, Order::Runs);
    ASSERT_EQ(index->size(), 42u);
    PartReader<PointRule> reader(*index, *geometry);
    Pnt3f point[1];
    reader.read(41, point);
    EXPECT_EQ(point[0], Pnt3f(44, 0, 0));
    EXPECT_EQ(reader.primitiveOf(41), 2u);
    EXPECT_EQ(reader.firstVertexOf(41), 42u);
    reader.read(1, point);
    EXPECT_EQ(point[0], Pnt3f(2, 0, 0));
    EXPECT_EQ(reader.primitiveOf(1), 0u);
}

TEST(PrimitiveIndex, ThereIsNoneWithoutPrimitives)
{
    GeometryPtr const geometry = make_geometry(one_primitive(LinesPrimitive, {{}, {1, 0, 0}}));
    EXPECT_EQ(build(*geometry, IndexedKind::Triangles, Order::Runs), nullptr);
    EXPECT_EQ(build(*geometry, IndexedKind::Points, Order::Sorted), nullptr);
}

TEST(PrimitiveIndex, KeepsPrimitivesWithNumbersThatAreNotFiniteBesideTheTree)
{
    GeometryParts parts = one_primitive(TrianglesPrimitive, {});
    for(int i = 0; i < 60; ++i)
        parts.positions.push_back(Pnt3f(Real32(i), Real32(i * i), 0));
    parts.positions[7][0] = std::numeric_limits<Real32>::quiet_NaN();
    parts.lengths = {60};
    IndexPtr const index = build(*make_geometry(parts), IndexedKind::Triangles, Order::Runs);
    ASSERT_NE(index, nullptr);
    EXPECT_EQ(index->getOrder(), Order::Sorted);
    EXPECT_EQ(index->untamedBegin(), 19u);
    EXPECT_EQ(index->primitiveAt(19), 2u);
}

TEST(PrimitiveIndex, ThereIsNoneWhereManyNumbersAreNotFinite)
{
    GeometryParts parts = one_primitive(TrianglesPrimitive, {});
    for(int i = 0; i < 60; ++i)
        parts.positions.push_back(Pnt3f(Real32(i), 1e30f, 0));
    EXPECT_EQ(build(*make_geometry(parts), IndexedKind::Triangles, Order::Sorted), nullptr);
}

TEST(PrimitiveIndex, StandsInRunsOnlyWhereNeighboursInOrderAreNeighboursInSpace)
{
    RandomNumbers random(305);
    GeometryParts parts = one_primitive(TrianglesPrimitive, {});
    for(int i = 0; i < 300; ++i)
        for(int corner = 0; corner < 3; ++corner)
            parts.positions.push_back(Pnt3f(Real32(i), 0, 0) + random.vector());
    parts.lengths = {900};
    EXPECT_EQ(build(*make_geometry(parts), IndexedKind::Triangles, Order::Runs)->getOrder(),
              Order::Runs);
    for(UInt32 i = 0; i < 900; i += 3)
    {
        UInt32 const other = 3 * random.below(300);
        for(UInt32 corner = 0; corner < 3; ++corner)
            std::swap(parts.positions[i + corner], parts.positions[other + corner]);
    }
    EXPECT_EQ(build(*make_geometry(parts), IndexedKind::Triangles, Order::Runs)->getOrder(),
              Order::Sorted);
}

// --- memory ---

GeometryPtr grid(UInt32 side)
{
    GeometryParts parts;
    for(UInt32 z = 0; z <= side; ++z)
        for(UInt32 x = 0; x <= side; ++x)
            parts.positions.push_back(Pnt3f(Real32(x), Real32(x * z % 7), Real32(z)));
    for(UInt32 z = 0; z < side; ++z)
        for(UInt32 x = 0; x < side; ++x)
        {
            UInt32 const at = z * (side + 1) + x;
            for(UInt32 corner : {at, at + 1, at + side + 2, at, at + side + 2, at + side + 1})
                parts.index.push_back(corner);
        }
    parts.types = {TrianglesPrimitive};
    parts.lengths = {static_cast<UInt32>(parts.index.size())};
    return make_geometry(parts);
}

TEST(PrimitiveIndex, TakesAtMostFifteenBytesForATriangleAndTwiceThatWhileItIsBuilt)
{
    GeometryPtr const geometry = grid(150);
    for(Order order : {Order::Runs, Order::Sorted})
    {
        UInt64 const before = get_mem_bytes();
        reset_mem_peak();
        IndexPtr const index = build(*geometry, IndexedKind::Triangles, order);
        UInt64 const held = get_mem_bytes() - before;
        EXPECT_LE(held, 45000u * 15);
        EXPECT_LE(get_mem_peak_bytes() - before, 2 * held);
        EXPECT_NEAR(double(index->getBytes()), double(held), 100.);
    }
}

TEST(PrimitiveIndex, LeavesNothingBehindWhereMemoryRunsOut)
{
    GeometryPtr const geometry = grid(20);
    UInt64 const before = get_mem_bytes();
    int failures = 0;
    for(UInt64 blocks = 0; blocks < 20; ++blocks)
    {
        set_mem_block_limit(blocks);
        try
        {
            IndexPtr const index = build(*geometry, IndexedKind::Triangles, Order::Sorted);
        }
        catch(std::bad_alloc const &)
        {
            ++failures;
        }
        set_mem_limit(0);
        EXPECT_EQ(get_mem_bytes(), before);
    }
    EXPECT_GE(failures, 4);
    EXPECT_LT(failures, 20);
}

// --- boxes and planes ---

Real32 odd_number(RandomNumbers &random)
{
    Real32 const scales[] = {0.f, 1e-40f, 1e-3f, 1.f, 1e5f, 1e18f};
    return random.real(-1.f, 1.f) * scales[random.below(6)];
}

void fill(RandomNumbers &random, BoxNode &node, BoxPlanes &planes)
{
    for(UInt32 child = 0; child < BoxNode::Width; ++child)
        for(UInt32 axis = 0; axis < 3; ++axis)
        {
            Real32 const a = odd_number(random);
            Real32 const b = odd_number(random);
            node.bound[axis][child] = std::min(a, b);
            node.bound[axis + 3][child] = std::max(a, b);
        }
    for(UInt32 k = 0; k < BoxPlanes::Capacity; ++k)
    {
        Plane plane;
        plane.setValue(random.below(4) == 0 ? Vec3f(0, -0.f, 1) : random.vector(),
                       odd_number(random));
        planes.set(k, plane, random.below(2) == 0 ? 0.f : 0.1f);
    }
}

void expect_same_bits(BoxGrades const &grades, BoxGrades const &expected)
{
    ASSERT_EQ(grades.outside, expected.outside);
    ASSERT_EQ(std::memcmp(grades.crossed, expected.crossed, sizeof(grades.crossed)), 0);
    ASSERT_EQ(std::memcmp(grades.nearest, expected.nearest, sizeof(grades.nearest)), 0);
    ASSERT_EQ(std::memcmp(grades.farthest, expected.farthest, sizeof(grades.farthest)), 0);
}

TEST(BoxGrades, HaveTheSameBitsWithEveryInstructionSetOfTheMachine)
{
    std::int64_t const all = hwy::SupportedTargets();
    int sets = 0;
    for(std::int64_t rest = all; rest != 0; rest &= rest - 1)
    {
        hwy::SetSupportedTargetsForTest(rest & -rest);
        hwy::GetChosenTarget().Update(hwy::SupportedTargets());
        RandomNumbers random(302);
        for(int round = 0; round < 3000 && !testing::Test::HasFailure(); ++round)
        {
            BoxNode node = {};
            BoxPlanes planes;
            fill(random, node, planes);
            UInt32 const mask = random.below(64);
            BoxGrades grades;
            BoxGrades expected;
            grade_boxes(node, planes, mask, grades);
            grade_boxes_slowly(node, planes, mask, expected);
            expect_same_bits(grades, expected);
        }
        ++sets;
    }
    hwy::SetSupportedTargetsForTest(0);
    hwy::GetChosenTarget().DeInit();
    EXPECT_GE(sets, 1);
    RecordProperty("InstructionSets", sets);
}

TEST(BoxGrades, SpeakForEveryPointInABox)
{
    RandomNumbers random(303);
    int outside = 0;
    int inside = 0;
    for(int round = 0; round < 20000; ++round)
    {
        BoxNode node = {};
        BoxPlanes planes;
        fill(random, node, planes);
        BoxGrades grades;
        grade_boxes(node, planes, 1, grades);
        UInt32 const child = random.below(8);
        Pnt3f point;
        for(UInt32 axis = 0; axis < 3; ++axis)
        {
            Real32 const low = node.bound[axis][child];
            Real32 const high = node.bound[axis + 3][child];
            point[axis] = random.below(2) == 0 ? low : std::clamp(odd_number(random), low, high);
        }
        auto const distance = [&](BoxPlanes::Entry const &entry)
        {
            Plane plane;
            plane.setValue(Vec3f(entry.normal[0], entry.normal[1], entry.normal[2]),
                           entry.distance);
            return plane.distance(point);
        };
        ASSERT_LE(grades.nearest[child], distance(planes.planes[6]));
        ASSERT_GE(grades.farthest[child], distance(planes.planes[6]));
        bool const isInside = distance(planes.planes[0]) >= 0.f;
        if((grades.outside >> child & 1u) != 0)
        {
            ASSERT_FALSE(isInside);
            ++outside;
        }
        else if(grades.crossed[child] == 0)
        {
            ASSERT_GE(distance(planes.planes[0]), planes.planes[0].margin);
            ++inside;
        }
    }
    EXPECT_GT(outside, 3000);
    EXPECT_GT(inside, 3000);
}

// --- order in space ---

TEST(SpaceOrder, PutsNeighboursInSpaceSideBySide)
{
    RandomNumbers random(304);
    constexpr UInt32 Count = 4096;
    std::vector<Pnt3f> points;
    SpaceOrder order(Count, Pnt3f(-1, -1, -1), Pnt3f(1, 1, 1));
    for(UInt32 i = 0; i < Count; ++i)
    {
        points.push_back(random.point(-1.f, 1.f));
        order.add(i, points.back());
    }
    MemArray<UInt32> const sorted = order.finish();
    std::vector<UInt32> numbers(sorted.data(), sorted.data() + Count);
    double steps = 0;
    for(UInt32 i = 1; i < Count; ++i)
        steps += (points[numbers[i]] - points[numbers[i - 1]]).length();
    // Random neighbours are 1.3 apart, those in a grid of 16 by 16 by 16 cells 0.125.
    EXPECT_LT(steps / Count, 0.25);
    std::sort(numbers.begin(), numbers.end());
    for(UInt32 i = 0; i < Count; ++i)
        ASSERT_EQ(numbers[i], i);
}

TEST(SpaceOrder, KeepsTheOrderOfPointsAtOnePlace)
{
    SpaceOrder order(5, Pnt3f(2, 2, 2), Pnt3f(2, 2, 2));
    for(UInt32 i = 0; i < 5; ++i)
        order.add(i, Pnt3f(2, 2, 2));
    MemArray<UInt32> const numbers = order.finish();
    for(UInt32 i = 0; i < 5; ++i)
        EXPECT_EQ(numbers[i], i);
}
} // namespace
} // namespace OSG::Test
