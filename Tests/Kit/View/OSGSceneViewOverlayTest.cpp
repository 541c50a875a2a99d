#include <set>

#include <epoxy/gl.h>

#include "DrawnSceneView.h"
#include "LogCapture.h"
#include "OSGFrameImage.h"

namespace OSG::Test
{
namespace
{
/// The scene is a red square of 20 by 20 pixels in the plane z = 0.
struct SceneViewOverlay : DrawnSceneView
{
    NodePtr const square = make_square(Red, 10);
    NodePtr const scene = make_group({square});

    void SetUp() override
    {
        DrawnSceneView::SetUp();
        view.setScene(scene);
    }
};

TEST_F(SceneViewOverlay, IsDrawnInFrontOfWhatLiesDeeperAndBehindTheRest)
{
    NodePtr const deep = make_square(Green, 6);
    scene->addChild(make_transform(translation(0, 0, -50), {make_square(Red, 2)}));
    view.setOverlay(make_group({make_transform(translation(0, 0, 1), {make_square(Blue, 4)}),
                                make_transform(translation(0, 0, -1), {deep})}));
    draw();
    EXPECT_EQ(at(0, 0), Blue);
    EXPECT_EQ(at(5, 0), Red);
    EXPECT_EQ(at(15, 0), White);
    EXPECT_EQ(count(Blue), 64u);
}

TEST_F(SceneViewOverlay, FarInFrontOfTheSceneOrBehindItIsSeen)
{
    for(WindowView const &perspective :
        {view.getView(), WindowView{{0, 0, 100}, {0, 0, 0}, {0, 1, 0}, 45, Side, Side}})
    {
        view.setView(perspective);
        view.setOverlay(
            make_group({make_transform(translation(0, 0, 60), {make_square(Blue, 2)}),
                        make_transform(translation(0, 0, -900), {make_square(Green, 300)})}));
        draw();
        EXPECT_EQ(at(0, 0), Blue);
        EXPECT_EQ(at(6, 0), Red);
        EXPECT_EQ(at(15, 0), Green);
    }
}

TEST_F(SceneViewOverlay, InTheVeryPlaneOfAFaceIsSeen)
{
    view.setOverlay(make_square(Blue, 4));
    draw();
    EXPECT_EQ(count(Blue), 64u);
}

TEST_F(SceneViewOverlay, OnTopIsSeenThroughEverythingAndHidesItself)
{
    scene->addChild(make_transform(translation(0, 0, -50), {make_square(Red, 2)}));
    view.setOverlay(make_transform(translation(0, 0, -1), {make_square(Green, 9)}));
    view.setOverlayOnTop(
        make_group({make_transform(translation(0, 0, -2), {make_square(Blue, 2)}),
                    make_transform(translation(0, 0, -3), {make_square(Green, 4)})}));
    draw();
    EXPECT_EQ(at(0, 0), Blue);
    EXPECT_EQ(at(3, 0), Green);
    EXPECT_EQ(at(7, 0), Red);
    EXPECT_EQ(at(15, 0), White);
}

TEST_F(SceneViewOverlay, IsNoPartOfTheSceneAndOfItsBounds)
{
    SceneBounds const before = view.getBounds();
    view.setOverlay(make_square(Blue, 30));
    view.setOverlayOnTop(make_square(Blue, 30));
    EXPECT_EQ(view.getScene(), scene);
    EXPECT_EQ(view.getBounds().box.getMin(), before.box.getMin());
    EXPECT_EQ(view.getBounds().box.getMax(), before.box.getMax());
    EXPECT_EQ(view.getViewport()->getRoot(), scene);
}

TEST_F(SceneViewOverlay, IsNeitherCutNorHiddenNorShownInTheStyleOfTheScene)
{
    view.setOverlay(make_transform(translation(0, 0, 1), {make_square(Blue, 4)}));
    Plane const right[] = {Plane(Vec3f(1, 0, 0), Pnt3f(9, 0, 0))};
    view.getRenderAction()->editDrawEnv().setSections(right);
    view.getRenderAction()->editAppearances().isolate({NodePath(square)});
    view.setStyle(DrawStyle::Wires);
    draw();
    EXPECT_EQ(count(Blue), 64u);
}

TEST_F(SceneViewOverlay, ThatIsTakenBackIsGone)
{
    draw();
    std::vector<UInt8> const before = pixels();
    view.setOverlay(make_square(Blue, 4));
    view.setOverlayOnTop(make_square(Green, 2));
    draw();
    EXPECT_NE(pixels(), before);
    view.setOverlay(nullptr);
    view.setOverlayOnTop(nullptr);
    draw();
    EXPECT_EQ(pixels(), before);
}

TEST_F(SceneViewOverlay, TakesThePartOfTheWindowThatTheSceneTakes)
{
    glClearColor(0, 0, 0, 1);
    glClear(GL_COLOR_BUFFER_BIT);
    glViewport(32, 32, 32, 32);
    view.setOverlayOnTop(make_square(Blue, 40));
    draw();
    EXPECT_EQ(pixel(31, 31), Black);
    EXPECT_EQ(pixel(32, 31), Blue);
    EXPECT_EQ(count(Blue), 32u * 32);
}

TEST_F(SceneViewOverlay, IsDrawnWithoutAScene)
{
    draw();
    LogCapture log;
    view.setScene(nullptr);
    view.setOverlay(make_square(Blue, 4));
    draw();
    EXPECT_EQ(count(Blue), 64u);
    EXPECT_EQ(count(White), Side * Side - 64u);
    EXPECT_TRUE(log.lines().empty());
}

/// A frame buffer with four samples a pixel.
class SampledFrame
{
  public:
    explicit SampledFrame(GLsizei side)
    {
        glGetIntegerv(GL_FRAMEBUFFER_BINDING, &_former);
        glGenFramebuffers(1, &_frame);
        glGenRenderbuffers(2, _buffers);
        glBindFramebuffer(GL_FRAMEBUFFER, _frame);
        attach(GL_COLOR_ATTACHMENT0, GL_RGB8, _buffers[0], side);
        attach(GL_DEPTH_ATTACHMENT, GL_DEPTH_COMPONENT24, _buffers[1], side);
    }
    ~SampledFrame()
    {
        glBindFramebuffer(GL_FRAMEBUFFER, static_cast<GLuint>(_former));
        glDeleteFramebuffers(1, &_frame);
        glDeleteRenderbuffers(2, _buffers);
    }
    SampledFrame(SampledFrame const &) = delete;
    SampledFrame &operator=(SampledFrame const &) = delete;

  private:
    static void attach(GLenum place, GLenum format, GLuint buffer, GLsizei side)
    {
        glBindRenderbuffer(GL_RENDERBUFFER, buffer);
        glRenderbufferStorageMultisample(GL_RENDERBUFFER, 4, format, side, side);
        glFramebufferRenderbuffer(GL_FRAMEBUFFER, place, GL_RENDERBUFFER, buffer);
    }

    GLint _former = 0;
    GLuint _frame = 0;
    GLuint _buffers[2] = {0, 0};
};

TEST_F(SceneViewOverlay, EdgesAreSmoothWhereAPixelHasSeveralSamples)
{
    SampledFrame const frame(Side);
    ASSERT_EQ(glCheckFramebufferStatus(GL_FRAMEBUFFER), GLenum(GL_FRAMEBUFFER_COMPLETE));
    view.setScene(make_transform(rotation({0, 0, 1}, 0.3f), {square}));
    view.setOverlay(make_transform(rotation({0, 0, 1}, 0.3f), {make_square(Green, 4)}));
    auto const colors = [this]
    {
        view.draw();
        std::vector<UInt8> const drawn = read_frame(Side, Side);
        std::set<Rgb> found;
        for(std::size_t i = 0; i < drawn.size(); i += 3)
            found.insert({drawn[i], drawn[i + 1], drawn[i + 2]});
        return found;
    };
    std::set<Rgb> const smooth = colors();
    EXPECT_TRUE(smooth.contains(Rgb{255, 128, 128}) || smooth.contains(Rgb{255, 127, 127}));
    EXPECT_TRUE(smooth.contains(Rgb{128, 128, 0}) || smooth.contains(Rgb{127, 127, 0}));
    view.setMultisampled(false);
    EXPECT_EQ(colors(), (std::set<Rgb>{White, Red, Green}));
}
} // namespace
} // namespace OSG::Test
