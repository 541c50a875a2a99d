#include "OSGSimpleSelectionFunctor.h"

#include <gmock/gmock.h>

#include "LogCapture.h"
#include "MathPrinters.h"
#include "OSGMemManager.h"
#include "SelectionScenes.h"

namespace OSG::Test
{
namespace
{
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

// --- creation ---

TEST(SimpleSelectionFunctor, BecomesTheActorAndKeepsItsSettings)
{
    Selection const selection(box_frustum(), 5, SelectionFunctor::LeftPlane);
    EXPECT_EQ(selection.action->getActor(), &selection.functor);
    EXPECT_EQ(selection.functor.getSelectionType(), 5u);
    EXPECT_EQ(selection.functor.getPlaneType(), SelectionFunctor::LeftPlane);
}

TEST(SimpleSelectionFunctor, RegistersItsHandlersOnAnotherActionToo)
{
    Selection selection;
    ActionPtr const other(SelectionAction::create(box_frustum()));
    selection.functor.setAction(other);
    NodePtr const root = make_node(make_geometry(inner_triangle()));
    other->apply(root);
    EXPECT_THAT(selection.functor.hits(SelectionFunctor::AllHits), SizeIs(2));
}

TEST(SimpleSelectionFunctor, ItsHandlersStayOnTheFormerAction)
{
    Selection selection;
    ActionPtr const other(SelectionAction::create(box_frustum()));
    selection.functor.setAction(other);
    NodePtr const root = make_node(make_geometry(inner_triangle()));
    EXPECT_THAT(selection.of(root), SizeIs(2));
}

TEST(SimpleSelectionFunctor, WithoutAnActionNothingIsRegistered)
{
    Selection selection;
    selection.functor.setAction(nullptr);
    EXPECT_EQ(selection.functor.getAction(), nullptr);
}

// --- what is found ---

TEST(SimpleSelectionFunctor, TrianglesOutsideGiveNoHit)
{
    EXPECT_THAT(Selection().of(triangle({2, 2, 2}, {3, 2, 2}, {2, 3, 2})), IsEmpty());
}

TEST(SimpleSelectionFunctor, AnEmptyGeometryGivesNoHit)
{
    EXPECT_THAT(Selection().of({{}, {}, {}}), IsEmpty());
}

TEST(SimpleSelectionFunctor, AContainedTriangleGivesANearHitAtTheLocalOriginAndAFarCorner)
{
    Frustum frustum = box_frustum();
    frustum.multFull(scaling(10, 10, 10));
    Selection selection(frustum);
    NodePtr const shape = make_node(make_geometry(triangle({1, 1, -1}, {2, 1, -2}, {1, 2, -3})));
    Matrix const matrix = translation(2, 3, 0);
    NodePtr const root = make_transform(matrix, {shape});
    Hits const &hits = selection.of(root);
    ASSERT_THAT(distances(hits), ElementsAre(1, 3));
    EXPECT_EQ(hits[0].point, Pnt3f(2, 3, 0));
    EXPECT_EQ(hits[1].point, Pnt3f(3, 5, -3));
    for(HitT const &hit : hits)
    {
        EXPECT_EQ(hit.node, shape);
        EXPECT_EQ(hit.index, 0);
        EXPECT_EQ(hit.matrix, matrix);
        EXPECT_EQ(hit.selectionType, AllTypes);
        EXPECT_THAT(hit.visitSubTreeNodes, IsEmpty());
    }
}

TEST(SimpleSelectionFunctor, ACrossingTriangleGivesItsClippedCorners)
{
    // Runs out of the box through the near plane and through x = 1.
    Hits const hits =
        Selection().of(triangle({0.5f, 0.5f, -0.5f}, {2, 0.5f, -0.5f}, {0.5f, 0.5f, 1}));
    ASSERT_THAT(hits, SizeIs(2));
    EXPECT_EQ(hits[0].distance, 0.f);
    EXPECT_EQ(hits[1].distance, 0.5f);
    EXPECT_EQ(hits[0].point[2], 0.f);
    EXPECT_EQ(hits[1].point[2], -0.5f);
}

TEST(SimpleSelectionFunctor, ATriangleAroundTheWholeFrustumIsHit)
{
    Hits const hits =
        Selection().of(triangle({-100, -100, -0.5f}, {100, -100, -0.5f}, {0, 100, -0.5f}));
    ASSERT_THAT(hits, SizeIs(1)); // both places lie at one distance, and the last corner wins both
    EXPECT_EQ(hits[0].distance, 0.5f);
    EXPECT_GE(hits[0].point[0], 0.f);
    EXPECT_LE(hits[0].point[0], 1.f);
}

TEST(SimpleSelectionFunctor, ALineWithBothEndsOutsideIsHitWhereItPassesThrough)
{
    Hits const hits =
        Selection().of(one_primitive(LinesPrimitive, {{0.5f, 0.5f, 5}, {0.5f, 0.5f, -5}}));
    ASSERT_THAT(hits, SizeIs(2));
    EXPECT_EQ(hits[0].point, Pnt3f(0.5f, 0.5f, 0));
    EXPECT_EQ(hits[1].point, Pnt3f(0.5f, 0.5f, -1));
    EXPECT_EQ(hits[1].distance, 1.f);
}

TEST(SimpleSelectionFunctor, ALineBesideAnEdgeOfTheFrustumIsNot)
{
    EXPECT_THAT(
        Selection().of(one_primitive(LinesPrimitive, {{-1, 0.9f, -0.5f}, {0.9f, 3, -0.5f}})),
        IsEmpty());
}

TEST(SimpleSelectionFunctor, ABandThatMissesTheMiddleOfANodeStillFindsItsGeometry)
{
    // A flat band far from the centre of the node's box.
    Frustum frustum = box_frustum();
    frustum.multFull(translation(0, 40, 0) * scaling(100, 0.01f, 10));
    Selection selection(frustum);
    NodePtr const root = make_node(make_geometry(triangle({1, 0, -1}, {2, 0, -1}, {1, 50, -1})));
    root->updateVolume();
    EXPECT_THAT(nodes(selection.of(root)), ElementsAre(root.get()));
}

TEST(SimpleSelectionFunctor, AGeometryUnderSeveralNodesIsHitUnderEachWhereItLies)
{
    Selection selection;
    GeometryPtr const shared = make_geometry(inner_triangle());
    NodePtr const here = make_node(shared);
    NodePtr const there = make_node(shared);
    NodePtr const away = make_node(shared);
    NodePtr const root = make_group({here, make_transform(translation(0, 0, -0.1f), {there}),
                                     make_transform(translation(0, 0, -50), {away})});
    root->updateVolume();
    EXPECT_THAT(nodes(selection.of(root, SelectionFunctor::FrontHits)),
                ElementsAre(here.get(), there.get()));
}

TEST(SimpleSelectionFunctor, ASinglePointGivesOneHit)
{
    Hits const hits = Selection().of(one_primitive(PointsPrimitive, {{0.5f, 0.25f, -0.5f}}));
    ASSERT_THAT(distances(hits), ElementsAre(0.5f));
    EXPECT_EQ(hits[0].point, Pnt3f(0.5f, 0.25f, -0.5f));
}

TEST(SimpleSelectionFunctor, APointOnTheReferencePlaneGivesANearHitAlone)
{
    Hits const hits =
        Selection().of(one_primitive(PointsPrimitive, {{0.5f, 0.25f, 0}, {0.75f, 0.25f, 0}}));
    ASSERT_THAT(distances(hits), ElementsAre(0.f));
    EXPECT_EQ(hits[0].point, Pnt3f(0.75f, 0.25f, 0)); // of equal distances the last
}

TEST(SimpleSelectionFunctor, APointAtTheOriginLosesItsFarHitEvenWhereTheNearOneIsElsewhere)
{
    // The near point of a contained triangle reads as the origin, and so falls together with a far
    // corner that lies there.
    Selection selection(box_frustum(), AllTypes, SelectionFunctor::FarPlane);
    Hits const &hits =
        selection.of(triangle({0, 0, 0}, {0.5f, 0.25f, -0.5f}, {0.25f, 0.5f, -0.75f}));
    ASSERT_THAT(distances(hits), ElementsAre(0.25f));
}

TEST(SimpleSelectionFunctor, EachKindOfPrimitiveGivesItsOwnTwoHits)
{
    Selection selection;
    Hits const &hits = selection.of({{TrianglesPrimitive, LinesPrimitive, PointsPrimitive},
                                     {3, 2, 2},
                                     {{0.1f, 0.1f, -0.1f},
                                      {0.3f, 0.1f, -0.1f},
                                      {0.1f, 0.3f, -0.9f},
                                      {0.2f, 0.2f, -0.2f},
                                      {0.2f, 0.2f, -0.8f},
                                      {0.3f, 0.3f, -0.3f},
                                      {0.3f, 0.3f, -0.7f}}});
    EXPECT_THAT(distances(hits), ElementsAre(0.1f, 0.2f, 0.3f, 0.7f, 0.8f, 0.9f));
    EXPECT_EQ(hits[2].index, 2); // points name their primitive
    EXPECT_EQ(hits[1].index, 0); // lines are counted by themselves
}

struct MaskCase
{
    char const *name;
    UInt32 mask;
    std::vector<Real32> expected;
};

void PrintTo(MaskCase const &c, std::ostream *out) { *out << c.name; }

class SelectionMasks : public testing::TestWithParam<MaskCase>
{
};

TEST_P(SelectionMasks, DecideWhichKindsAreTested)
{
    Selection selection(box_frustum(), GetParam().mask);
    Hits const &hits = selection.of({{TrianglesPrimitive, LinesPrimitive, PointsPrimitive},
                                     {3, 2, 1},
                                     {{0.5f, 0.5f, -0.125f},
                                      {0.6f, 0.5f, -0.125f},
                                      {0.5f, 0.6f, -0.125f},
                                      {0.5f, 0.5f, -0.25f},
                                      {0.6f, 0.5f, -0.25f},
                                      {0.5f, 0.5f, -0.5f}}});
    std::vector<Real32> seen = distances(hits);
    seen.erase(std::unique(seen.begin(), seen.end()), seen.end());
    EXPECT_EQ(seen, GetParam().expected);
    for(HitT const &hit : hits)
        EXPECT_EQ(hit.selectionType, GetParam().mask);
}

INSTANTIATE_TEST_SUITE_P(SimpleSelectionFunctor, SelectionMasks,
                         testing::Values(MaskCase{"none", 0, {}},
                                         MaskCase{"triangles", 1, {0.125f}},
                                         MaskCase{"lines", 2, {0.25f}},
                                         MaskCase{"points", 4, {0.5f}},
                                         MaskCase{"trianglesAndPoints", 5, {0.125f, 0.5f}},
                                         MaskCase{"all", 7, {0.125f, 0.25f, 0.5f}}),
                         [](auto const &instance) { return std::string(instance.param.name); });

// --- distances ---

struct ReferenceCase
{
    char const *name;
    SelectionFunctor::PlaneType plane;
    Real32 distance;
};

void PrintTo(ReferenceCase const &c, std::ostream *out) { *out << c.name; }

class ReferencePlanes : public testing::TestWithParam<ReferenceCase>
{
};

TEST_P(ReferencePlanes, DistancesRunInwardsFromThem)
{
    Selection selection(box_frustum(), AllTypes, GetParam().plane);
    EXPECT_THAT(distances(selection.of(one_primitive(PointsPrimitive, {{0.25f, 0.125f, -0.375f}}))),
                ElementsAre(GetParam().distance));
}

INSTANTIATE_TEST_SUITE_P(
    SimpleSelectionFunctor, ReferencePlanes,
    testing::Values(ReferenceCase{"near", SelectionFunctor::NearPlane, 0.375f},
                    ReferenceCase{"far", SelectionFunctor::FarPlane, 0.625f},
                    ReferenceCase{"left", SelectionFunctor::LeftPlane, 0.25f},
                    ReferenceCase{"right", SelectionFunctor::RightPlane, 0.75f},
                    ReferenceCase{"top", SelectionFunctor::TopPlane, 0.875f},
                    ReferenceCase{"bottom", SelectionFunctor::BottomPlane, 0.125f}),
    [](auto const &instance) { return std::string(instance.param.name); });

TEST(SimpleSelectionFunctor, ANewReferencePlaneCountsFromTheNextWalkOn)
{
    Selection selection;
    NodePtr const root = make_node(make_geometry(one_primitive(PointsPrimitive, {{0, 0, -0.25f}})));
    EXPECT_THAT(distances(selection.of(root)), ElementsAre(0.25f));
    selection.functor.setPlaneType(SelectionFunctor::FarPlane);
    EXPECT_THAT(distances(selection.of(root)), ElementsAre(0.75f));
}

TEST(SimpleSelectionFunctor, DistancesUnderScalesAreThoseOfTheGeometry)
{
    Selection selection;
    NodePtr const shape = make_node(make_geometry(one_primitive(PointsPrimitive, {{5, 5, -5}})));
    NodePtr const root = make_transform(scaling(0.1f, 0.1f, 0.1f), {shape});
    Hits const &hits = selection.of(root);
    ASSERT_THAT(hits, SizeIs(1));
    EXPECT_NEAR(hits[0].distance, 5.f, 1e-5f);
    EXPECT_TRUE(hits[0].point.equals(Pnt3f(0.5f, 0.5f, -0.5f), 1e-6f));
}

// --- normals ---

GeometryParts with_normals(GeometryParts parts, std::vector<Vec3f> normals)
{
    parts.normals = std::move(normals);
    return parts;
}

TEST(SimpleSelectionFunctor, AContainedTriangleHasTheGeometrysNormalsAtItsCorners)
{
    Hits const hits =
        Selection().of(with_normals(inner_triangle(), {{1, 0, 0}, {0, 1, 0}, {0, 0.6f, 0.8f}}));
    ASSERT_THAT(hits, SizeIs(2));
    EXPECT_EQ(hits[0].normal, Vec3f(1, 0, 0));
    EXPECT_EQ(hits[1].normal, Vec3f(0, 0.6f, 0.8f));
}

TEST(SimpleSelectionFunctor, WithoutNormalsAContainedTriangleHasItsFaceNormal)
{
    Hits const hits =
        Selection().of(triangle({0.1f, 0.1f, -0.5f}, {0.9f, 0.1f, -0.5f}, {0.1f, 0.9f, -0.5f}));
    ASSERT_FALSE(hits.empty());
    EXPECT_EQ(hits[0].normal, Vec3f(0, 0, 1));
}

TEST(SimpleSelectionFunctor, ACrossingTriangleHasItsFaceNormalWhateverTheGeometryHas)
{
    Hits const hits =
        Selection().of(with_normals(triangle({-9, -9, -0.5f}, {9, -9, -0.5f}, {-9, 9, -0.5f}),
                                    {{1, 0, 0}, {1, 0, 0}, {1, 0, 0}}));
    ASSERT_FALSE(hits.empty());
    EXPECT_EQ(hits[0].normal, Vec3f(0, 0, 1));
}

TEST(SimpleSelectionFunctor, NormalsStayInTheSpaceOfTheGeometry)
{
    Selection selection;
    NodePtr const shape =
        make_node(make_geometry(with_normals(inner_triangle(), {{1, 0, 0}, {1, 0, 0}, {1, 0, 0}})));
    NodePtr const root = make_transform(translation(0.5f, 0.5f, 0) * rotation({0, 0, 1}, 1.57f) *
                                            translation(-0.5f, -0.5f, 0),
                                        {shape});
    Hits const &hits = selection.of(root);
    ASSERT_FALSE(hits.empty());
    EXPECT_EQ(hits[0].normal, Vec3f(1, 0, 0));
}

TEST(SimpleSelectionFunctor, LinesHaveTheNormalsOfTheirEndsAndNoOther)
{
    Hits const hits = Selection().of(
        with_normals(one_primitive(LinesPrimitive, {{0.5f, 0.5f, -0.25f}, {0.5f, 0.5f, -0.5f}}),
                     {{0, 1, 0}, {0, 0, 0}}));
    ASSERT_THAT(hits, SizeIs(2));
    EXPECT_EQ(hits[0].normal, Vec3f(0, 1, 0));
    EXPECT_EQ(hits[1].normal, Vec3f());
}

TEST(SimpleSelectionFunctor, PointsHaveTheNormalOfTheFirstOneOfTheirPrimitive)
{
    Hits const hits = Selection().of(with_normals(
        one_primitive(PointsPrimitive, {{9, 9, 9}, {0.5f, 0.5f, -0.25f}, {0.5f, 0.5f, -0.5f}}),
        {{0, 1, 0}, {1, 0, 0}, {0, 0, 1}}));
    ASSERT_THAT(hits, SizeIs(2));
    EXPECT_EQ(hits[0].normal, Vec3f(0, 1, 0));
    EXPECT_EQ(hits[1].normal, Vec3f(0, 1, 0));
    EXPECT_EQ(hits[1].index, 0);
}

TEST(SimpleSelectionFunctor, PointsInPrimitivesOfOtherTypesAreNoPoints)
{
    Selection selection(box_frustum(), SelectionFunctor::SelectPoints);
    EXPECT_THAT(selection.of(inner_triangle()), IsEmpty());
}

// --- memory ---

TEST(SimpleSelectionFunctor, AMillionCrossingTrianglesLeaveNoMemoryBehind)
{
    constexpr UInt32 count = 1000000;
    GeometryParts parts{
        {TrianglesPrimitive}, {3 * count}, {{-1, 0.5f, -0.5f}, {2, 0.2f, -0.2f}, {0.5f, 3, -0.7f}}};
    for(UInt32 i = 0; i < 3 * count; ++i)
        parts.index.push_back(i % 3);
    NodePtr const root = make_node(make_geometry(parts));
    NodePtr const nothing = make_group();
    Selection selection;
    selection.of(inner_triangle()); // a functor keeps room for a few hits
    selection.of(nothing);
    UInt64 const before = get_mem_bytes();
    reset_mem_peak();
    EXPECT_THAT(selection.of(root), SizeIs(2));
    EXPECT_LT(get_mem_peak_bytes(), before + 16384);
    selection.of(nothing);
    // Not equal: the allocator may give a few bytes more than it is asked for.
    EXPECT_LE(get_mem_bytes(), before);
}
} // namespace
} // namespace OSG::Test
