#include "OSGConstSizeTransform.h"

#include <sstream>

#include <gtest/gtest.h>

#include "CameraBuilders.h"
#include "GeometryBuilders.h"
#include "LogCapture.h"
#include "Marker.h"
#include "OSGChangeList.h"
#include "OSGFieldHandle.h"
#include "OSGFieldText.h"
#include "OSGIntersectAction.h"
#include "OSGNode.h"
#include "OSGRenderAction.h"
#include "OSGSelectionAction.h"
#include "OSGSimpleSelectionFunctor.h"
#include "OSGThread.h"
#include "SceneBuilders.h"

namespace OSG::Test
{
namespace
{
using CorePtr = UnrecordedRefPtr<ConstSizeTransform>;

TEST(ConstSizeTransform, DistanceStartsAtOneAndTheRenderedMatrixAsTheIdentity)
{
    CorePtr const core(ConstSizeTransform::create());
    EXPECT_EQ(core->getDistance(), 1.f);
    Matrix matrix;
    core->accumulateMatrix(matrix);
    EXPECT_TRUE(matrix.equals(Matrix(), 0.f));
}

TEST(ConstSizeTransform, BeforeRenderingTheUsersMatrixIsNotAccumulated)
{
    CorePtr const core(ConstSizeTransform::create());
    Matrix moved;
    moved.setTranslate(1.f, 2.f, 3.f);
    core->setMatrix(moved);
    Matrix matrix;
    core->accumulateMatrix(matrix);
    EXPECT_TRUE(matrix.equals(Matrix(), 0.f));
    EXPECT_TRUE(core->getMatrix().equals(moved, 0.f));
}

TEST(ConstSizeTransform, ItsVolumeIsInfiniteWhateverTheSubtreeHolds)
{
    UnrecordedRefPtr<Node> const node(Node::create());
    node->setCore(CorePtr(ConstSizeTransform::create()));
    node->updateVolume();
    EXPECT_TRUE(node->getVolume().isInfinite());
}

/// A triangle in the plane z = 0 about the origin, below a core whose rendered matrix doubles and
/// moves it to x = 10: the ray and the frustum have to go there.
class RenderedMarker : public testing::Test
{
  protected:
    RenderedMarker()
    {
        Matrix rendered;
        Matrix doubled;
        rendered.setTranslate(10.f, 0.f, 0.f);
        doubled.setScale(2.f);
        rendered.mult(doubled);
        std::ostringstream text;
        OutStream out(text);
        value_to_text(out, rendered);
        core->editField("transform")->pushIndexedValueFromCString(text.str().c_str(), 0);
        root->updateVolume();
    }

    CorePtr core{ConstSizeTransform::create()};
    GeometryPtr triangle = make_geometry(one_primitive(
        TrianglesPrimitive, {Pnt3f(-1.f, -1.f, 0.f), Pnt3f(1.f, -1.f, 0.f), Pnt3f(0.f, 1.f, 0.f)}));
    NodePtr leaf = make_node(triangle);
    NodePtr root = make_node(core, {leaf});
};

TEST_F(RenderedMarker, IsHitByARayAtItsRenderedPlace)
{
    UnrecordedRefPtr<IntersectAction> const ray(IntersectAction::create());
    ray->setLine(Line(Pnt3f(11.f, 0.f, 6.f), Vec3f(0.f, 0.f, -1.f)), 100.f);
    ray->apply(root);
    ASSERT_TRUE(ray->didHit());
    EXPECT_EQ(ray->getHitObject(), leaf);
    EXPECT_NEAR(ray->getHitDistance(), 6.f, 1e-5f);
    EXPECT_NEAR(ray->getMaxDist(), 100.f, 1e-4f);
    ray->setLine(Line(Pnt3f(0.f, 0.f, 6.f), Vec3f(0.f, 0.f, -1.f)), 100.f);
    ray->apply(root);
    EXPECT_FALSE(ray->didHit());
}

TEST_F(RenderedMarker, IsNotHitBeyondTheMaximumDistance)
{
    UnrecordedRefPtr<IntersectAction> const ray(IntersectAction::create());
    ray->setLine(Line(Pnt3f(11.f, 0.f, 6.f), Vec3f(0.f, 0.f, -1.f)), 5.9f);
    ray->apply(root);
    EXPECT_FALSE(ray->didHit());
}

TEST_F(RenderedMarker, IsSelectedAtItsRenderedPlace)
{
    UnrecordedRefPtr<SelectionAction> const action(SelectionAction::create());
    SimpleSelectionFunctor functor(action, 1, SelectionFunctor::NearPlane);
    auto const count_at = [&](Real32 x)
    {
        action->reinitialize();
        action->pushFrustum(Frustum(Pnt3f(x - 1.f, -1.f, 1.f), Pnt3f(x + 1.f, -1.f, 1.f),
                                    Pnt3f(x + 1.f, 1.f, 1.f), Pnt3f(x - 1.f, 1.f, 1.f),
                                    Pnt3f(x - 1.f, -1.f, -1.f), Pnt3f(x + 1.f, -1.f, -1.f),
                                    Pnt3f(x + 1.f, 1.f, -1.f), Pnt3f(x - 1.f, 1.f, -1.f)));
        action->apply(root);
        return functor.hits(SelectionFunctor::AllHits).size();
    };
    EXPECT_EQ(count_at(10.f), 1u);
    EXPECT_EQ(count_at(0.f), 0u);
}

/// A render action without a context, in a view of MarkerView.
class RenderedOnce : public testing::Test
{
  protected:
    Matrix projection() const
    {
        Matrix matrix;
        if(view.isOrthographic())
            make_orthographic(view.orthographicHeight, MarkerView::Near, MarkerView::Far)
                ->getProjection(matrix, MarkerView::Width, MarkerView::Height);
        else
            make_perspective(view.fieldOfView * Real32(M_PI) / 180, MarkerView::Near,
                             MarkerView::Far)
                ->getProjection(matrix, MarkerView::Width, MarkerView::Height);
        return matrix;
    }

    void render(Node *root) { render(root, projection()); }
    void render(Node *root, Matrix const &toScreen)
    {
        Matrix viewing;
        viewing.invertFrom(view.camera());
        UnrecordedRefPtr<RenderAction> const action(RenderAction::create());
        action->editDrawEnv().setView(view.camera(), viewing, toScreen, {0, 199, 0, 99});
        action->apply(root);
    }

    static Matrix rendered(Marker const &marker)
    {
        Matrix matrix;
        marker.core->accumulateMatrix(matrix);
        return matrix;
    }

    static void expectScale(Marker const &marker, Pnt3f const &place, Real64 scale)
    {
        Matrix wanted = translation(place[0], place[1], place[2]);
        wanted.mult(scaling(Real32(scale), Real32(scale), Real32(scale)));
        Matrix const found = rendered(marker);
        for(UInt32 column = 0; column < 4; ++column)
            for(UInt32 row = 0; row < 4; ++row)
                EXPECT_NEAR(found[column][row], wanted[column][row], 1e-4 * scale + 1e-5)
                    << column << ' ' << row;
    }

    MarkerView view;
};

TEST_F(RenderedOnce, PerspectiveScalesByTheFormula)
{
    view.from = Pnt3f(3, 4, 20);
    view.at = Pnt3f(1, 0, -1);
    for(Vec3f const &place : {Vec3f(1, 0, -1), Vec3f(7, -2, 3), Vec3f(-30, 9, -200)})
    {
        Marker const marker(translation(place[0], place[1], place[2]), 40);
        render(marker.root);
        expectScale(marker, Pnt3f(place[0], place[1], place[2]),
                    view.scale({place[0], place[1], place[2]}, 40));
    }
}

TEST_F(RenderedOnce, WithoutPerspectiveTheScaleIsTheSameEverywhere)
{
    view.from = Pnt3f(3, 4, 20);
    view.at = Pnt3f(1, 0, -1);
    view.orthographicHeight = 12;
    // The picture is 24 units wide, so a unit is 1 / 12 in normalised coordinates.
    for(Vec3f const &place : {Vec3f(1, 0, -1), Vec3f(7, -2, 3), Vec3f(-30, 9, -200)})
    {
        Marker const marker(translation(place[0], place[1], place[2]), 40);
        render(marker.root);
        expectScale(marker, Pnt3f(place[0], place[1], place[2]), 40 / (200 / 12.));
    }
}

TEST_F(RenderedOnce, TheUsersMatrixIsKeptAndItsRotationAndScaleCount)
{
    Matrix user = translation(1, 2, 3);
    user.mult(rotation(Vec3f(0, 0, 1), 0.5f));
    user.mult(scaling(2, 3, 4));
    Marker const marker(user, 40);
    render(marker.root);
    Matrix wanted = user;
    Real32 const scale = Real32(view.scale({1, 2, 3}, 40));
    wanted.mult(scaling(scale, scale, scale));
    EXPECT_TRUE(rendered(marker).equals(wanted, 1e-4f));
    EXPECT_TRUE(marker.core->getMatrix().equals(user, 0));
}

TEST_F(RenderedOnce, DistanceZeroCollapsesTheSubtree)
{
    LogCapture log;
    Marker const marker(translation(1, 2, 3), 0);
    render(marker.root);
    expectScale(marker, {1, 2, 3}, 0);
    EXPECT_TRUE(log.texts().empty());
}

TEST_F(RenderedOnce, AtTheCamerasOwnPlaceTheSizeIsTheSmallestOne)
{
    Marker const marker(translation(0, 0, 10), 1);
    LogCapture log; // the projection of the place has w 0
    render(marker.root);
    expectScale(marker, {0, 0, 10}, 1 / 1e-6);
}

TEST_F(RenderedOnce, AProjectionWithoutADivisionAndWithAnotherWTakesThePathOfPerspective)
{
    // It halves what it projects. The path without perspective would not: it leaves w out.
    Marker const marker(translation(0, 0, 0), 40);
    Matrix toScreen;
    toScreen[3][3] = 2;
    render(marker.root, toScreen);
    expectScale(marker, {0, 0, 0}, 40 / (200 * 0.5));
    toScreen[3][3] = 1;
    render(marker.root, toScreen);
    expectScale(marker, {0, 0, 0}, 40 / 200.);
}

TEST_F(RenderedOnce, ASingularProjectionWithoutPerspectiveIsLogged)
{
    Marker const marker(translation(0, 0, 0), 40);
    Matrix flat;
    flat[0][0] = 0;
    LogCapture log;
    render(marker.root, flat);
    EXPECT_EQ(log.count("TransformationMatrix<>::calcInverse: Singular matrix, no inverse!\n"), 1u);
}

TEST_F(RenderedOnce, BelowATransformTheParentsMatrixCountsTwice)
{
    Marker const marker(translation(0, 0, 0), 40);
    Matrix const parent = translation(1, 0, 0);
    NodePtr const root = make_transform(parent, {marker.node});
    render(root);
    // The core's own matrix holds the parent's, and is multiplied onto it.
    expectScale(marker, {1, 0, 0}, view.scale({1, 0, 0}, 40));
    EXPECT_NEAR(marker.leaf->getToWorld()[3][0], 2, 1e-5);
}

TEST_F(RenderedOnce, ACameraAtRestEditsNothing)
{
    Marker const marker(translation(1, 2, 3), 40);
    marker.root->updateVolume();
    render(marker.root);
    EXPECT_FALSE(marker.node->getVolume().isValid());
    marker.root->updateVolume();
    Thread::getCurrentChangeList()->commitChanges();
    render(marker.root);
    EXPECT_EQ(marker.core->getChangeMask(), 0u);
    EXPECT_TRUE(marker.node->getVolume().isValid());
    view.from = Pnt3f(0, 0, 10.1f);
    render(marker.root);
    EXPECT_EQ(marker.core->getChangeMask(), ConstSizeTransform::TransformFieldMask);
    EXPECT_FALSE(marker.node->getVolume().isValid());
}

TEST_F(RenderedOnce, ACoreOfTwoNodesHasTheMatrixOfTheOneRenderedLast)
{
    Marker const marker(translation(0, 0, 0), 40);
    NodePtr const second = make_transform(translation(4, 0, 0), {make_node(marker.core)});
    NodePtr const root = make_group({marker.root, second});
    render(root);
    expectScale(marker, {4, 0, 0}, view.scale({4, 0, 0}, 40));
}

TEST_F(RenderedOnce, TheMatrixStackIsBackWhereItWas)
{
    Marker const marker(translation(1, 2, 3), 40);
    UnrecordedRefPtr<RenderAction> const action(RenderAction::create());
    Matrix viewing;
    viewing.invertFrom(view.camera());
    action->editDrawEnv().setView(view.camera(), viewing, projection(), {0, 199, 0, 99});
    std::size_t inside = 0;
    UInt32 before = 0;
    action->registerEnterFunction(Geometry::getClassType(),
                                  [&](NodeCore *, Action *)
                                  {
                                      RenderPartition &partition = *action->getActivePartition();
                                      inside = partition.getMatrixStack().size();
                                      before = partition.getCurrentMatrix().id;
                                      EXPECT_EQ(before, partition.getMatrixIdCount());
                                      EXPECT_FALSE(partition.isModelMatrixValid());
                                      return ActionBase::Continue;
                                  });
    action->apply(marker.root);
    EXPECT_EQ(inside, action->getActivePartition()->getMatrixStack().size() + 1);
    EXPECT_NE(before, action->getActivePartition()->getCurrentMatrix().id);
}
} // namespace
} // namespace OSG::Test
