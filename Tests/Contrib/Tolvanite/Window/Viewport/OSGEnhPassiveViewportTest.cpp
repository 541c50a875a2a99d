#include "OSGEnhPassiveViewport.h"

#include <gmock/gmock.h>

#include "DriverState.h"
#include "LogCapture.h"
#include "NeedsContext.h"
#include "OSGGroup.h"
#include "OSGOffscreenContext.h"
#include "OSGPerspectiveCamera.h"

namespace OSG::Test
{
namespace
{
using testing::ElementsAre;

/// A viewport with an empty scene, and a context for it.
class PassiveViewport : public testing::Test
{
  protected:
    PassiveViewport()
    {
        root->setCore(UnrecordedRefPtr<Group>(Group::create()));
        viewport->setCamera(UnrecordedRefPtr<PerspectiveCamera>(PerspectiveCamera::create()));
        viewport->setBackground(UnrecordedRefPtr<Background>(Background::create()));
        viewport->setRoot(root);
    }

    std::array<Real32, 4> edges() const
    {
        return {viewport->getLeft(), viewport->getBottom(), viewport->getRight(),
                viewport->getTop()};
    }

    OffscreenContext context{200, 100};
    UnrecordedRefPtr<Node> root{Node::create()};
    UnrecordedRefPtr<EnhPassiveViewport> viewport{EnhPassiveViewport::create()};
};

TEST_F(PassiveViewport, TakesItsEdgesFromTheDriverAndGivesThemBack)
{
    OSG_NEEDS_CONTEXT(context);
    ASSERT_TRUE(context.makeCurrent());
    glViewport(10, 20, 100, 50);
    viewport->render(nullptr);
    EXPECT_THAT(edges(), ElementsAre(10, 20, 109, 69));
    EXPECT_THAT(driver_viewport(), ElementsAre(10, 20, 100, 50));
    glViewport(0, 0, 7, 7);
    viewport->activateSize();
    EXPECT_THAT(driver_viewport(), ElementsAre(10, 20, 100, 50));
    EXPECT_EQ(glGetError(), GLenum(GL_NO_ERROR));
    context.release();
}

TEST_F(PassiveViewport, FollowsTheDriverFromFrameToFrame)
{
    OSG_NEEDS_CONTEXT(context);
    ASSERT_TRUE(context.makeCurrent());
    viewport->render(nullptr);
    EXPECT_THAT(edges(), ElementsAre(0, 0, 199, 99));
    glViewport(-5, -6, 3, 4);
    viewport->render(nullptr);
    EXPECT_THAT(edges(), ElementsAre(-5, -6, -3, -3));
    EXPECT_EQ(glGetError(), GLenum(GL_NO_ERROR));
    context.release();
}

TEST_F(PassiveViewport, OfNoSizeHasItsRightEdgeBeforeItsLeftOne)
{
    OSG_NEEDS_CONTEXT(context);
    ASSERT_TRUE(context.makeCurrent());
    LogCapture log;
    glViewport(30, 40, 0, 0);
    viewport->render(nullptr);
    EXPECT_THAT(edges(), ElementsAre(30, 40, 29, 39));
    viewport->activateSize();
    EXPECT_THAT(driver_viewport(), ElementsAre(30, 40, 0, 0));
    EXPECT_THAT(log.texts(), ElementsAre());
    EXPECT_EQ(glGetError(), GLenum(GL_NO_ERROR));
    context.release();
}

TEST_F(PassiveViewport, WindowSizedEdgesAreNoOtherPixelsThanAnyOthers)
{
    OSG_NEEDS_CONTEXT(context);
    ASSERT_TRUE(context.makeCurrent());
    glViewport(0, 0, 2, 2);
    viewport->render(nullptr);
    EXPECT_THAT(edges(), ElementsAre(0, 0, 1, 1));
    glViewport(0, 0, 9, 9);
    viewport->activateSize();
    EXPECT_THAT(driver_viewport(), ElementsAre(0, 0, 2, 2));
    context.release();
}

TEST_F(PassiveViewport, TouchesNeitherTheScissorNorThePicture)
{
    OSG_NEEDS_CONTEXT(context);
    ASSERT_TRUE(context.makeCurrent());
    glClearColor(1, 0, 0, 1);
    glClear(GL_COLOR_BUFFER_BIT);
    glScissor(1, 2, 3, 4);
    glViewport(10, 20, 30, 40);
    viewport->render(nullptr);
    viewport->activateSize();
    ViewportNumbers scissor = {};
    glGetIntegerv(GL_SCISSOR_BOX, scissor.data());
    EXPECT_THAT(scissor, ElementsAre(1, 2, 3, 4));
    EXPECT_FALSE(glIsEnabled(GL_SCISSOR_TEST));
    std::vector<UInt8> const pixels = context.readPixels();
    for(std::size_t i = 0; i < pixels.size(); i += 3)
        ASSERT_EQ(pixels[i], 255) << i;
    EXPECT_EQ(glGetError(), GLenum(GL_NO_ERROR));
    context.release();
}

TEST_F(PassiveViewport, NamesTheFirstThatIsMissingAndKeepsItsEdges)
{
    OSG_NEEDS_CONTEXT(context);
    ASSERT_TRUE(context.makeCurrent());
    glViewport(10, 20, 100, 50);
    LogCapture log;
    viewport->setRoot(nullptr);
    viewport->render(nullptr);
    viewport->setBackground(nullptr);
    viewport->render(nullptr);
    viewport->setCamera(nullptr);
    viewport->render(nullptr);
    EXPECT_THAT(log.lines(), ElementsAre(testing::EndsWith("Viewport::render: no root!"),
                                         testing::EndsWith("Viewport::render: no background!"),
                                         testing::EndsWith("Viewport::render: no camera!")));
    EXPECT_EQ(log.texts(LOG_WARNING).size(), 3u);
    EXPECT_THAT(edges(), ElementsAre(0, 0, 1, 1));
    context.release();
}

TEST_F(PassiveViewport, WithoutAContextOnlyWarns)
{
    LogCapture log;
    viewport->render(nullptr);
    EXPECT_THAT(log.lines(),
                ElementsAre(testing::EndsWith(
                    "Viewport::render: no OpenGL context is current, nothing is drawn")));
    EXPECT_THAT(edges(), ElementsAre(0, 0, 1, 1));
}

TEST_F(PassiveViewport, IsPassiveWhateverItHolds)
{
    EXPECT_TRUE(viewport->isPassive());
    EXPECT_TRUE(UnrecordedRefPtr<EnhPassiveViewport>(EnhPassiveViewport::create())->isPassive());
}
} // namespace
} // namespace OSG::Test
