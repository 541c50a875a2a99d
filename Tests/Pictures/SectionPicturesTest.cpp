// Scenes that are cut open by planes.

#include <gtest/gtest.h>

#include "LogCapture.h"
#include "PictureScenes.h"
#include "RandomScenes.h"
#include "RenderedPixels.h"

namespace OSG::Test
{
namespace
{
// From another stream of numbers than the scene.
void cut(ViewSetup &view, std::uint64_t seed)
{
    RandomNumbers random(seed + 1000);
    for(UInt32 i = 1 + random.below(3); i > 0; --i)
    {
        Plane plane;
        plane.setValue(random.vector() * random.real(0.1f, 5), random.real(-1, 0.5f));
        view.sections.push_back(plane);
    }
}

struct SectionPictures : testing::Test
{
    void SetUp() override
    {
        if(!missing_renderer().empty())
            GTEST_SKIP() << missing_renderer();
    }
};

TEST_F(SectionPictures, TheirPixelsAreThoseOfTheSlowRasterizer)
{
    LogCapture log; // of indices out of range
    UInt32 covered = 0;
    UInt32 changed = 0;
    for(std::uint64_t seed = 0; seed < 60; ++seed)
    {
        RandomScene scene = random_scene(seed, static_cast<RandomMaterials>(seed % 4));
        Pixels const whole = rendered_pixels(scene.root, scene.view);
        cut(scene.view, seed);
        SlowPicture const expected = slow_picture(scene.root, view_of(scene.view));
        PictureComparison const comparison =
            compare(expected, rendered_pixels(scene.root, scene.view));
        EXPECT_TRUE(comparison.isEqual())
            << "seed " << seed << ": " << testing::PrintToString(comparison);
        covered += comparison.covered;
        changed += compare(expected, whole).wrong > 100 ? 1 : 0;
    }
    EXPECT_GT(covered, 60u * 200 * 150 / 40);
    EXPECT_GT(changed, 30u);
}

TEST_F(SectionPictures, WhatIsInThePlaneIsKeptAndPlanesWithoutANormalAreLeftOut)
{
    UnrecordedRefPtr<SimpleMaterial> const red = plain_material(Color3f(1, 0, 0));
    NodePtr const root = make_node(square(0.5f, 0, red));
    ViewSetup view = square_view();
    view.sections.resize(2); // of normal zero
    view.sections.push_back(Plane(Vec3f(1, 0, 0), Pnt3f(-0.5f, 0, 0)));
    Pixels const whole = rendered_pixels(root, view);
    EXPECT_EQ(whole.at(25, 50)[1], 0);
    EXPECT_EQ(whole.at(74, 50)[1], 0);
    view.sections.push_back(Plane(Vec3f(1, 0, 0), Pnt3f(0, 0, 0)));
    Pixels const half = rendered_pixels(root, view);
    EXPECT_EQ(half.at(49, 50)[1], 255);
    EXPECT_EQ(half.at(50, 50)[1], 0);
}
} // namespace
} // namespace OSG::Test
