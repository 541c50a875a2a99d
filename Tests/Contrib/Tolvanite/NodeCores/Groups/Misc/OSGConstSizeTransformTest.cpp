#include "OSGConstSizeTransform.h"

#include <sstream>

#include <gtest/gtest.h>

#include "GeometryBuilders.h"
#include "OSGFieldHandle.h"
#include "OSGFieldText.h"
#include "OSGIntersectAction.h"
#include "OSGNode.h"
#include "OSGSelectionAction.h"
#include "OSGSimpleSelectionFunctor.h"
#include "SceneBuilders.h"

namespace OSG
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
    OSG::Test::GeometryPtr triangle = OSG::Test::make_geometry(OSG::Test::one_primitive(
        TrianglesPrimitive, {Pnt3f(-1.f, -1.f, 0.f), Pnt3f(1.f, -1.f, 0.f), Pnt3f(0.f, 1.f, 0.f)}));
    OSG::Test::NodePtr leaf = OSG::Test::make_node(triangle);
    OSG::Test::NodePtr root = OSG::Test::make_node(core, {leaf});
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
} // namespace
} // namespace OSG
