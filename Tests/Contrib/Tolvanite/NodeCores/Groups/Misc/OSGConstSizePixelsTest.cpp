// What a ConstSizeTransform measures on the screen, and that rays and selection find it there.

#include "OSGConstSizeTransform.h"

#include <gmock/gmock.h>

#include "Marker.h"
#include "NeedsContext.h"
#include "OSGIntersectAction.h"
#include "OSGPickVolume.h"
#include "OSGSelectionAction.h"
#include "OSGSimpleSelectionFunctor.h"

namespace OSG::Test
{
namespace
{
constexpr Real32 Distance = 40;

/// A view with perspective and one without.
class MarkerPixels : public testing::TestWithParam<bool>
{
  protected:
    MarkerPixels()
    {
        if(GetParam())
            view.orthographicHeight = 12;
    }

    OffscreenContext context{MarkerView::Width, MarkerView::Height};
    MarkerView view;
};

INSTANTIATE_TEST_SUITE_P(ConstSizeTransform, MarkerPixels, testing::Bool(),
                         [](testing::TestParamInfo<bool> const &row)
                         { return row.param ? "Orthographic" : "Perspective"; });

TEST_P(MarkerPixels, AUnitOnTheAxisMeasuresHalfOfDistanceWhereverItStands)
{
    OSG_NEEDS_CONTEXT(context);
    for(Real32 const depth : {1.f, 2.f, 3.5f, 5.f, 10.f, 20.f, 50.f, 100.f, 300.f, 1000.f})
    {
        Marker const marker(translation(0, 0, 10 - depth), Distance);
        Covered const covered(context, view, marker.root);
        // Two units of 20 pixels each.
        EXPECT_EQ(covered.inRow(50), 40u) << depth;
        EXPECT_EQ(covered.inColumn(100), 40u) << depth;
    }
}

TEST_P(MarkerPixels, OffTheAxisTheFormulaSaysTheSize)
{
    OSG_NEEDS_CONTEXT(context);
    for(Vec3f const &place : {Vec3f(4, 1, 0), Vec3f(-6, -2, -4), Vec3f(5, 2, 1)})
    {
        Marker const marker(translation(place[0], place[1], place[2]), Distance);
        Covered const covered(context, view, marker.root);
        Vec3d const origin(place[0], place[1], place[2]);
        Real64 const scale = view.scale(origin, Distance);
        Real64 const left = view.normalised({origin[0] - scale, origin[1], origin[2]})[0];
        Real64 const right = view.normalised({origin[0] + scale, origin[1], origin[2]})[0];
        auto const row = static_cast<UInt32>((1 - view.normalised(origin)[1]) / 2 * 100);
        EXPECT_NEAR(covered.inRow(row), (right - left) / 2 * MarkerView::Width, 1.01) << place[0];
    }
}

TEST_P(MarkerPixels, RaysAndSelectionFindItWhereItIsSeen)
{
    OSG_NEEDS_CONTEXT(context);
    Marker const marker(translation(2, 1, -3), Distance);
    Covered const covered(context, view, marker.root);
    Matrix const camera = view.camera();
    Real32 const pixel =
        view.isOrthographic()
            ? view.orthographicHeight / MarkerView::Height
            : 2 * std::tan(view.fieldOfView * Real32(M_PI) / 360) / MarkerView::Height;
    UInt32 hits = 0;
    for(UInt32 y = 0; y < MarkerView::Height; ++y)
    {
        for(UInt32 x = 0; x < MarkerView::Width; ++x)
        {
            Real32 const right = (Real32(x) + 0.5f - 100) * pixel;
            Real32 const upwards = (50 - Real32(y) - 0.5f) * pixel;
            Pnt3f const start =
                camera * (view.isOrthographic() ? Pnt3f(right, upwards, 0) : Pnt3f(0, 0, 0));
            Vec3f const way =
                camera * (view.isOrthographic() ? Vec3f(0, 0, -1) : Vec3f(right, upwards, -1));
            UnrecordedRefPtr<IntersectAction> const ray(IntersectAction::create());
            ray->setLine(Line(start, way), 10000);
            ray->apply(marker.root);
            EXPECT_EQ(ray->didHit(), covered.at(x, y)) << x << ' ' << y;
            hits += ray->didHit() ? 1 : 0;
        }
    }
    EXPECT_GT(hits, 1000u);
}

TEST(ConstSizePixels, SelectionFindsItWhereItIsSeen)
{
    MarkerView const view;
    OffscreenContext context(MarkerView::Width, MarkerView::Height);
    OSG_NEEDS_CONTEXT(context);
    Marker const marker(translation(2, 1, -3), Distance);
    Covered const covered(context, view, marker.root);
    WindowView const pickView{view.from,        view.at,           view.up,
                              view.fieldOfView, MarkerView::Width, MarkerView::Height};
    SceneBounds const bounds = bounds_of(marker.root);
    UnrecordedRefPtr<SelectionAction> const action(SelectionAction::create());
    SimpleSelectionFunctor functor(action, SelectionFunctor::SelectTriangles,
                                   SelectionFunctor::NearPlane);
    for(UInt32 y = 0; y < MarkerView::Height; y += 3)
    {
        for(UInt32 x = 0; x < MarkerView::Width; x += 3)
        {
            auto const volume = pick_volume(
                pickView, pixel_square(Real32(x) + 0.5f, Real32(y) + 0.5f, 0.01f), bounds, 0.01f);
            ASSERT_TRUE(volume);
            action->reinitialize();
            action->pushFrustum(*volume);
            action->apply(marker.root);
            EXPECT_EQ(functor.hits(SelectionFunctor::AllHits).empty(), !covered.at(x, y))
                << x << ' ' << y;
        }
    }
}
} // namespace
} // namespace OSG::Test
