#include "OSGConstantSizeTransform.h"

#include <gtest/gtest.h>

#include "GeometryBuilders.h"
#include "MarkerView.h"
#include "NeedsContext.h"
#include "OSGIntersectAction.h"

namespace OSG::Test
{
namespace
{
/// A square of 40 units in the plane z = 0 of a space that keeps its size, below a transform.
struct Handle
{
    explicit Handle(Matrix const &place)
        : root(make_transform(place, {make_node(core, {leaf})}))
    {
    }

    UnrecordedRefPtr<ConstantSizeTransform> core{ConstantSizeTransform::create()};
    NodePtr leaf = make_node(make_geometry(
        one_primitive(QuadsPrimitive, {{-20, -20, 0}, {20, -20, 0}, {20, 20, 0}, {-20, 20, 0}})));
    NodePtr root;
};

/// A view with perspective and one without.
class HandlePixels : public testing::TestWithParam<bool>
{
  protected:
    HandlePixels()
    {
        if(GetParam())
            view.orthographicHeight = 12;
    }

    OffscreenContext context{MarkerView::Width, MarkerView::Height};
    MarkerView view;
};

INSTANTIATE_TEST_SUITE_P(ConstantSizeTransform, HandlePixels, testing::Bool(),
                         [](testing::TestParamInfo<bool> const &row)
                         { return row.param ? "Orthographic" : "Perspective"; });

TEST_P(HandlePixels, AUnitIsAPixelAtAnyDepthAndUnderAnyScale)
{
    OSG_NEEDS_CONTEXT(context);
    for(Real32 const depth : {1.f, 10.f, 300.f})
    {
        for(Real32 const scale : {0.01f, 1.f, 50.f})
        {
            Matrix place = translation(0, 0, 10 - depth);
            place.mult(scaling(scale, 3 * scale, scale));
            Handle const handle(place);
            Covered const covered(context, view, handle.root);
            EXPECT_EQ(covered.inRow(50), 40u) << depth << ' ' << scale;
            EXPECT_EQ(covered.inColumn(100), 40u) << depth << ' ' << scale;
        }
    }
}

TEST_P(HandlePixels, ItStandsWhereItsSpaceStandsAndTurnsWithIt)
{
    OSG_NEEDS_CONTEXT(context);
    Matrix place = translation(2, 0, 0);
    place.mult(rotation(Vec3f(0, 0, 1), Real32(M_PI) / 4));
    Handle const handle(place);
    Covered const covered(context, view, handle.root);
    auto const center =
        static_cast<UInt32>((view.normalised({2, 0, 0})[0] + 1) / 2 * MarkerView::Width);
    EXPECT_TRUE(covered.at(center, 50));
    // A diagonal of the square lies along the row. The unit that is measured lies across the line
    // of sight, not in the plane of the square. The row's centre is half a pixel beside the
    // diagonal, where the square is a pixel narrower.
    Real64 const half = 20 * std::sqrt(2.) * view.scale({2, 0, 0}, 2);
    Real64 const left = view.normalised({2 - half, 0, 0})[0];
    Real64 const right = view.normalised({2 + half, 0, 0})[0];
    EXPECT_NEAR(covered.inRow(50), (right - left) / 2 * MarkerView::Width - 1, 1.01);
}

TEST_P(HandlePixels, RaysFindItWhereItIsSeen)
{
    OSG_NEEDS_CONTEXT(context);
    Handle const handle(translation(0, 0, -5));
    Covered const covered(context, view, handle.root);
    Real64 const unit =
        2 / (view.normalised({1, 0, -5})[0] - view.normalised({0, 0, -5})[0]) / MarkerView::Width;
    for(Real32 const pixels : {-21.f, -19.f, 0.f, 19.f, 21.f})
    {
        UnrecordedRefPtr<IntersectAction> const ray(IntersectAction::create());
        Real32 const x = pixels * Real32(unit);
        ray->setLine(Line(Pnt3f(x, 0, 0), Vec3f(0, 0, -1)), 100);
        ray->apply(handle.root);
        EXPECT_EQ(ray->didHit(), covered.at(static_cast<UInt32>(100 + pixels), 50)) << pixels;
    }
}

TEST(ConstantSizeTransform, ItsVolumeIsInfiniteWhateverTheSubtreeHolds)
{
    Handle const handle{Matrix()};
    handle.root->updateVolume();
    EXPECT_TRUE(handle.root->getVolume().isInfinite());
    NodePtr const empty =
        make_node(UnrecordedRefPtr<ConstantSizeTransform>(ConstantSizeTransform::create()));
    empty->updateVolume();
    EXPECT_TRUE(empty->getVolume().isInfinite());
}

TEST(ConstantSizeTransform, IsTheIdentityBeforeRendering)
{
    UnrecordedRefPtr<ConstantSizeTransform> const core(ConstantSizeTransform::create());
    Matrix matrix;
    core->accumulateMatrix(matrix);
    EXPECT_TRUE(matrix.equals(Matrix(), 0));
}
} // namespace
} // namespace OSG::Test
