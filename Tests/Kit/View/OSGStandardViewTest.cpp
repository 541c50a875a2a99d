#include "OSGStandardView.h"

#include <gtest/gtest.h>

#include "MathPrinters.h"
#include "SlowView.h"

using namespace OSG;
using namespace OSG::Test;

namespace
{
struct StandardCase
{
    char const *name;
    StandardView standard;
    SceneUp sceneUp;
    Vec3f back;
    Vec3f up;
};

class StandardViews : public testing::TestWithParam<StandardCase>
{
};

StandardCase const cases[] = {
    {"FrontY", StandardView::Front, SceneUp::Y, {0, 0, 1}, {0, 1, 0}},
    {"BackY", StandardView::Back, SceneUp::Y, {0, 0, -1}, {0, 1, 0}},
    {"LeftY", StandardView::Left, SceneUp::Y, {-1, 0, 0}, {0, 1, 0}},
    {"RightY", StandardView::Right, SceneUp::Y, {1, 0, 0}, {0, 1, 0}},
    {"TopY", StandardView::Top, SceneUp::Y, {0, 1, 0}, {0, 0, -1}},
    {"BottomY", StandardView::Bottom, SceneUp::Y, {0, -1, 0}, {0, 0, 1}},
    {"IsometricY", StandardView::Isometric, SceneUp::Y, {1, 1, 1}, {0, 1, 0}},
    {"FrontZ", StandardView::Front, SceneUp::Z, {0, -1, 0}, {0, 0, 1}},
    {"BackZ", StandardView::Back, SceneUp::Z, {0, 1, 0}, {0, 0, 1}},
    {"LeftZ", StandardView::Left, SceneUp::Z, {-1, 0, 0}, {0, 0, 1}},
    {"RightZ", StandardView::Right, SceneUp::Z, {1, 0, 0}, {0, 0, 1}},
    {"TopZ", StandardView::Top, SceneUp::Z, {0, 0, 1}, {0, 1, 0}},
    {"BottomZ", StandardView::Bottom, SceneUp::Z, {0, 0, -1}, {0, -1, 0}},
    {"IsometricZ", StandardView::Isometric, SceneUp::Z, {1, -1, 1}, {0, 0, 1}}};

INSTANTIATE_TEST_SUITE_P(All, StandardViews, testing::ValuesIn(cases),
                         [](auto const &row) { return std::string(row.param.name); });

TEST_P(StandardViews, LooksAtTheSamePointFromThatSide)
{
    RandomNumbers random(5);
    for(bool isOrthographic : {false, true})
    {
        WindowView const before = random_view(random, isOrthographic);
        WindowView const view = standard_view(before, GetParam().standard, GetParam().sceneUp);
        Real32 const distance = before.from.dist(before.at);
        EXPECT_NEAR(view.at.dist(before.at), 0, 1e-5);
        Vec3f const offset = view.from - view.at;
        EXPECT_NEAR(offset.length(), distance, 1e-4);
        Vec3f direction = GetParam().back;
        direction.normalize();
        EXPECT_NEAR((offset / offset.length() - direction).length(), 0, 1e-6);
        for(UInt32 i = 0; i < 3; ++i)
        {
            // Along an axis to the bit, and alike in the isometric view.
            EXPECT_EQ(GetParam().back[i] == 0, offset[i] == 0);
            if(GetParam().standard == StandardView::Isometric)
            {
                EXPECT_EQ(std::abs(offset[i]), std::abs(offset[0]));
            }
        }
        EXPECT_EQ(view.up, GetParam().up);
        EXPECT_EQ(view.orthographicHeight, before.orthographicHeight);
        EXPECT_EQ(view.fieldOfView, before.fieldOfView);
        EXPECT_EQ(standard_direction(GetParam().standard, GetParam().sceneUp), direction);
    }
}

TEST(StandardView, OfNoViewIsThatItself)
{
    WindowView const none{{1, 1, 1}, {1, 1, 1}, {0, 1, 0}, 45, 10, 10};
    EXPECT_EQ(standard_view(none, StandardView::Top, SceneUp::Y), none);
}
} // namespace
