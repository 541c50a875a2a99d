#include "OSGWalkPointer.h"

#include <gtest/gtest.h>

#include "OSGScriptedDesktop.h"

using namespace OSG;

namespace
{
struct Pointer : ::testing::Test
{
    Pointer()
    {
        desktop->setWindow(window, {100, 50}, {801, 601});
        desktop->setPointer({3, 4});
    }

    int handles[2] = {};
    NativeWindow const window = &handles[0];
    std::shared_ptr<ScriptedDesktop> const desktop = std::make_shared<ScriptedDesktop>();
    WalkPointer pointer{desktop};
};

TEST_F(Pointer, ComesBackToWhereItVanished)
{
    pointer.hide(window);
    EXPECT_TRUE(pointer.isHidden());
    EXPECT_FALSE(desktop->isPointerVisible());
    EXPECT_EQ(desktop->getCapture(), window);
    desktop->setPointer({9, 9});
    pointer.hide(window); // the first place stays the saved one
    pointer.show();
    EXPECT_FALSE(pointer.isHidden());
    EXPECT_TRUE(desktop->isPointerVisible());
    EXPECT_EQ(desktop->getPointer().x, 3);
    EXPECT_EQ(desktop->getPointer().y, 4);
    EXPECT_EQ(desktop->getCapture(), nullptr);
}

TEST_F(Pointer, IsNotMovedByASecondShow)
{
    pointer.hide(window);
    pointer.show();
    desktop->setPointer({9, 9});
    pointer.show();
    EXPECT_EQ(desktop->getPointer().x, 9);
}

TEST_F(Pointer, WithoutAWindowIsHiddenWithoutCapture)
{
    pointer.hide(nullptr);
    EXPECT_FALSE(desktop->isPointerVisible());
    EXPECT_EQ(desktop->getCapture(), nullptr);
}

TEST_F(Pointer, ReleasesOnlyItsOwnCapture)
{
    pointer.hide(window);
    desktop->setCapture(&handles[1]);
    pointer.show();
    EXPECT_EQ(desktop->getCapture(), &handles[1]);
}

TEST_F(Pointer, KeepsACaptureThatItHad)
{
    pointer.keepCapture(window);
    EXPECT_EQ(desktop->getCapture(), nullptr);
    pointer.hide(window);
    desktop->loseCapture();
    pointer.keepCapture(window);
    EXPECT_EQ(desktop->getCapture(), window);
}

TEST_F(Pointer, GoesToTheMiddleOfTheClientArea)
{
    Desktop::Point const middle = pointer.center(window);
    EXPECT_EQ(middle.x, 400);
    EXPECT_EQ(middle.y, 300);
    EXPECT_EQ(desktop->getPointer().x, 500);
    EXPECT_EQ(desktop->getPointer().y, 350);
}
} // namespace
