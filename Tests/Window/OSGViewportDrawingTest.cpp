#include "OSGViewport.h"

#include "DrawnView.h"
#include "LogCapture.h"

namespace OSG::Test
{
namespace
{
TEST_F(ViewportDrawing, ShowsTheSceneInFrontOfItsBackground)
{
    viewport->render(action);
    EXPECT_EQ(pixel(15, 15), redPixel);
    EXPECT_EQ(pixel(8, 8), redPixel);
    EXPECT_EQ(pixel(7, 8), bluePixel);
    EXPECT_EQ(pixel(23, 23), redPixel);
    EXPECT_EQ(pixel(24, 23), bluePixel);
}

TEST_F(ViewportDrawing, KeepsToItsAreaOfTheWindow)
{
    ViewportPtr const part = make_viewport(16, 16, 31, 31);
    furnish(part);
    part->render(action);
    EXPECT_EQ(pixel(24, 8), redPixel);
    EXPECT_EQ(pixel(16, 0), bluePixel);
    EXPECT_EQ(pixel(15, 0), blackPixel);
    EXPECT_EQ(pixel(16, 16), blackPixel);
}

TEST_F(ViewportDrawing, ABackgroundThatDrawsNothingLeavesWhatIsThere)
{
    viewport->setBackground(UnrecordedRefPtr<Background>(Background::create()));
    viewport->render(action);
    EXPECT_EQ(pixel(15, 15), redPixel);
    EXPECT_EQ(pixel(0, 0), blackPixel);
}

TEST_F(ViewportDrawing, EditsAreSeenInTheNextFrame)
{
    viewport->render(action);
    red->setDiffuse(Color3f(0, 1, 0));
    viewport->render(action);
    EXPECT_EQ(pixel(15, 15), (Rgb{0, 255, 0}));
    auto *const geometry = dynamic_cast<Geometry *>(root->getChild(0)->getCore());
    auto *const positions = dynamic_cast<GeoPnt3fProperty *>(geometry->getPositions());
    for(Pnt3f &position : positions->editValues())
        position[0] += 2;
    root->getChild(0)->getCore()->invalidateVolume();
    viewport->render(action);
    EXPECT_EQ(pixel(15, 15), bluePixel);
    EXPECT_EQ(pixel(24, 15), (Rgb{0, 255, 0}));
}

TEST_F(ViewportDrawing, APassiveViewStaysInTheViewportOfTheHost)
{
    UnrecordedRefPtr<PassiveViewport> const passive = PassiveViewport::make();
    furnish(passive);
    passive->setLeft(8);
    passive->setBottom(8);
    passive->setRight(23);
    passive->setTop(23);
    glViewport(8, 8, 16, 16);
    passive->render(action);
    EXPECT_EQ(pixel(15, 15), redPixel);
    EXPECT_EQ(pixel(12, 12), redPixel);
    EXPECT_EQ(pixel(11, 12), bluePixel);
    EXPECT_EQ(pixel(8, 8), bluePixel);
    EXPECT_EQ(pixel(7, 8), blackPixel);
}

// --- where there is nothing to draw with or into ---

TEST_F(ViewportDrawing, WithoutAContextItSaysSoOnceAndTheWalkIsHarmless)
{
    context().release();
    {
        LogCapture const log;
        viewport->render(action);
        EXPECT_EQ(log.texts(), (std::vector<std::string>{
                                   "Viewport::render: no OpenGL context is current, nothing is "
                                   "drawn\n"}));
        EXPECT_EQ(action->getDrawList().opaque.size(), 1u);
    }
    ASSERT_TRUE(context().makeCurrent());
    EXPECT_EQ(pixel(15, 15), blackPixel);
}

TEST_F(ViewportDrawing, AViewWithoutPixelsDrawsNothing)
{
    ViewportPtr const empty = make_viewport(5, 5, 4, 4);
    furnish(empty);
    LogCapture const log;
    empty->render(action);
    EXPECT_EQ(pixel(15, 15), blackPixel);
    EXPECT_TRUE(log.texts().empty());
}

TEST_F(ViewportDrawing, FullStacksOfAttributesAreNoPictureAndOneWarning)
{
    GLint most = 0;
    glGetIntegerv(GL_MAX_ATTRIB_STACK_DEPTH, &most);
    for(GLint i = 0; i < most; ++i)
        glPushAttrib(GL_CURRENT_BIT);
    {
        LogCapture const log;
        viewport->render(action);
        EXPECT_EQ(log.texts().size(), 1u);
    }
    for(GLint i = 0; i < most; ++i)
        glPopAttrib();
    EXPECT_EQ(pixel(15, 15), blackPixel);
}
} // namespace
} // namespace OSG::Test
