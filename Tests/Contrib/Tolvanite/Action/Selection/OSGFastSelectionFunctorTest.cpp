#include "OSGFastSelectionFunctor.h"

#include <gmock/gmock.h>

#include "MathPrinters.h"
#include "SelectionScenes.h"

namespace OSG::Test
{
namespace
{
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class FastSelectionFunctorTest : public testing::Test
{
  protected:
    Hits const &of(Node *root, SelectionFunctor::HitType type = SelectionFunctor::AllHits)
    {
        action->apply(root);
        return functor.hits(type);
    }

    ActionPtr action{SelectionAction::create(box_frustum())};
    FastSelectionFunctor functor{action};
};

TEST_F(FastSelectionFunctorTest, TakesTrianglesFromTheNearPlane)
{
    EXPECT_EQ(functor.getSelectionType(), 1u);
    EXPECT_EQ(functor.getPlaneType(), SelectionFunctor::NearPlane);
    EXPECT_EQ(action->getActor(), &functor);
}

TEST_F(FastSelectionFunctorTest, WithoutAnActionItFailsAtOnce)
{
    EXPECT_DEATH(FastSelectionFunctor(), "");
}

TEST_F(FastSelectionFunctorTest, AThousandTrianglesInsideGiveOneHitWithoutPlace)
{
    GeometryParts parts{{TrianglesPrimitive}, {3000}, {}};
    for(int i = 0; i < 1000; ++i)
    {
        for(Pnt3f const &corner : inner_triangle().positions)
            parts.positions.push_back(corner);
    }
    parts.normals.assign(3000, Vec3f(0, 0, 1));
    NodePtr const shape = make_node(make_geometry(parts));
    NodePtr const root = make_transform(translation(0.1f, 0, 0), {shape});
    Hits const &hits = of(root);
    ASSERT_THAT(hits, SizeIs(1));
    EXPECT_EQ(hits[0].node, shape);
    EXPECT_EQ(hits[0].index, -1);
    EXPECT_EQ(hits[0].distance, 0.f);
    EXPECT_EQ(hits[0].point, Pnt3f());
    EXPECT_EQ(hits[0].normal, Vec3f());
    EXPECT_EQ(hits[0].selectionType, 1u);
    EXPECT_EQ(hits[0].matrix, translation(0.1f, 0, 0));
}

TEST_F(FastSelectionFunctorTest, AGeometryThatIsVisitedTwiceGivesTwoRecordsAndOneFront)
{
    NodePtr const shared = make_node(make_geometry(inner_triangle()));
    NodePtr const first = make_visit(shared);
    NodePtr const second = make_visit(shared);
    NodePtr const root = make_group({first, second});
    EXPECT_THAT(of(root, SelectionFunctor::FrontHits), SizeIs(1));
    Hits const &hits = functor.hits(SelectionFunctor::AllHits);
    ASSERT_THAT(nodes(hits), ElementsAre(shared.get(), shared.get()));
    EXPECT_THAT(hits[0].visitSubTreeNodes, ElementsAre(second.get())); // each goes to the front
    EXPECT_THAT(hits[1].visitSubTreeNodes, ElementsAre(first.get()));
}

TEST_F(FastSelectionFunctorTest, AMaskWithoutTrianglesYieldsNothing)
{
    NodePtr const root = make_node(make_geometry(
        {{TrianglesPrimitive, LinesPrimitive},
         {3, 2},
         {{0.4f, 0.4f, -0.2f}, {0.6f, 0.4f, -0.3f}, {0.4f, 0.6f, -0.4f}, {0, 0, 0}, {1, 1, -1}}}));
    functor.setSelectionType(2);
    EXPECT_THAT(of(root), IsEmpty());
}

TEST_F(FastSelectionFunctorTest, LinesAndPointsAreNeverFound)
{
    functor.setSelectionType(7);
    NodePtr const root =
        make_node(make_geometry({{LinesPrimitive, PointsPrimitive},
                                 {2, 1},
                                 {{0.4f, 0.4f, -0.2f}, {0.6f, 0.4f, -0.3f}, {0.4f, 0.6f, -0.4f}}}));
    EXPECT_THAT(of(root), IsEmpty());
}

// Has a corner inside every half space, yet passes outside the corner of the box.
Pnt3f const PastTheCorner[3] = {{1.3f, 0.5f, -0.5f}, {0.9f, 1.3f, -0.5f}, {1.3f, 1.3f, -0.5f}};

TEST_F(FastSelectionFunctorTest, ATrianglePastTheCornerOfTheFrustumIsNoHit)
{
    Pnt3f const *p = PastTheCorner;
    ASSERT_TRUE(SelectionClipping::coarse_intersect(p, 3, box_planes().data(), 6));
    NodePtr const root = make_node(make_geometry(triangle(p[0], p[1], p[2])));
    EXPECT_THAT(of(root), IsEmpty());
}

TEST_F(FastSelectionFunctorTest, AfterSuchATriangleTheScanGoesOn)
{
    GeometryParts parts = inner_triangle();
    parts.positions.insert(parts.positions.begin(), PastTheCorner, PastTheCorner + 3);
    parts.lengths = {6};
    NodePtr const root = make_node(make_geometry(parts));
    EXPECT_THAT(of(root), SizeIs(1));
}

TEST_F(FastSelectionFunctorTest, ACrossingTriangleIsAHit)
{
    NodePtr const root = make_node(
        make_geometry(triangle({-100, -100, -0.5f}, {100, -100, -0.5f}, {0, 100, -0.5f})));
    EXPECT_THAT(nodes(of(root)), ElementsAre(root.get()));
}

TEST_F(FastSelectionFunctorTest, NodesStandInTheListsFromTheLastOneFoundToTheFirst)
{
    NodePtr const first = make_node(make_geometry(inner_triangle()));
    NodePtr const second = make_node(make_geometry(inner_triangle()));
    NodePtr const third = make_node(make_geometry(inner_triangle()));
    NodePtr const root = make_group({first, second, third});
    auto const expected = ElementsAre(third.get(), second.get(), first.get());
    EXPECT_THAT(nodes(of(root)), expected);
    EXPECT_THAT(nodes(functor.hits(SelectionFunctor::FrontHits)), expected);
    EXPECT_THAT(nodes(functor.hits(SelectionFunctor::BackHits)), expected);
}

TEST_F(FastSelectionFunctorTest, ATriangleWithACornerThatIsNoNumberIsNoHit)
{
    Real32 const nan = std::numeric_limits<Real32>::quiet_NaN();
    NodePtr const root =
        make_node(make_geometry(triangle({nan, nan, nan}, {nan, 0.5f, -0.5f}, {0.5f, nan, -0.5f})));
    EXPECT_THAT(of(root), IsEmpty());
}
} // namespace
} // namespace OSG::Test
