#include "DrawnSceneView.h"
#include "OSGChangeList.h"
#include "OSGThread.h"

namespace OSG::Test
{
namespace
{
/// Squares have their edges in the middles of pixels: a square of 9.5 goes from pixel -10 to 9.
constexpr Real32 Half = 9.5f;

struct SceneViewEdges : DrawnSceneView
{
    NodePtr const square = make_square(Red, Half);
    NodePtr const other = make_square(Green, Half, Pnt3f(20, 0, 0));

    void SetUp() override
    {
        DrawnSceneView::SetUp();
        view.setScene(make_group({square, other}));
        view.showEdges(Color3f(0, 0, 1));
    }

    void drawAll()
    {
        Thread::getCurrentChangeList()->commitChanges();
        int frames = 0;
        do
        {
            draw();
            Thread::getCurrentChangeList()->commitChanges();
        } while(!view.isComplete() && ++frames < 10);
        EXPECT_LT(frames, 10);
    }
};

TEST_F(SceneViewEdges, AreDrawnOverTheFacesWithoutTheDiagonal)
{
    drawAll();
    EXPECT_EQ(at(0, 9), Blue);
    EXPECT_EQ(at(20, 9), Blue);
    EXPECT_EQ(at(9, 0), Blue);
    EXPECT_EQ(at(4, 4), Red);
    EXPECT_EQ(at(0, 15), White);
    EXPECT_GT(count(Blue), 140u);
    view.hideEdges();
    EXPECT_FALSE(view.hasEdges());
    draw();
    EXPECT_EQ(count(Blue), 0u);
    EXPECT_TRUE(view.isComplete());
}

TEST_F(SceneViewEdges, AreGoneWithAHiddenPartAndInsideASection)
{
    view.getRenderAction()->editAppearances().hide(NodePath(square));
    drawAll();
    EXPECT_EQ(at(0, 9), White);
    EXPECT_EQ(at(20, 9), Blue);
    view.getRenderAction()->editAppearances().clear();
    Plane const left[] = {Plane(Vec3f(-1, 0, 0), Pnt3f(-2, 0, 0))};
    view.getRenderAction()->editDrawEnv().setSections(left);
    drawAll();
    EXPECT_EQ(at(-5, 9), Blue);
    EXPECT_EQ(at(0, 9), White);
    EXPECT_EQ(at(20, 9), White);
}

TEST_F(SceneViewEdges, KeepTheirColourWhereAPartIsHighlightedOrTransparent)
{
    UnrecordedRefPtr<SimpleMaterial> const glass = unlit(Green);
    glass->setTransparency(0.5f);
    view.getRenderAction()->editAppearances().set(NodePath(square), glass);
    drawAll();
    EXPECT_EQ(at(0, 9), Blue);
    EXPECT_EQ(at(4, 4)[1], 255);
    EXPECT_NEAR(at(4, 4)[0], 128, 1);
}

TEST_F(SceneViewEdges, BehindAFaceAreHidden)
{
    view.setScene(make_group({square, make_square(Green, 15.5f, Pnt3f(0, 0, 3))}));
    drawAll();
    EXPECT_EQ(at(0, 9), Green);
    EXPECT_EQ(at(0, 15), Blue);
}

TEST_F(SceneViewEdges, AreShownOverTheWiresOfEveryStyle)
{
    for(DrawStyle const style : {DrawStyle::ShadedWithWires, DrawStyle::Wires})
    {
        view.setStyle(style);
        drawAll();
        EXPECT_EQ(at(4, 4), style == DrawStyle::Wires ? Red : Black);
        EXPECT_EQ(at(-10, 0), Blue);
        EXPECT_EQ(at(0, 9), Blue);
    }
}

TEST_F(SceneViewEdges, OfALargePartComeLaterAndTheSceneIsDrawnMeanwhile)
{
    std::vector<Pnt3f> corners;
    for(int i = 0; i < 150000; ++i)
    {
        Real32 const x = static_cast<Real32>(i % 40) - 20;
        for(Pnt3f const &corner : {Pnt3f(x, -20, -9), Pnt3f(x + 1, -20, -9), Pnt3f(x, -21, -9)})
            corners.push_back(corner);
    }
    view.getScene()->addChild(make_shape(one_primitive(TrianglesPrimitive, corners), unlit(Green)));
    Thread::getCurrentChangeList()->commitChanges();
    draw();
    EXPECT_FALSE(view.isComplete());
    EXPECT_EQ(at(5, -5), Red);
    EXPECT_EQ(count(Blue), 0u);
    draw();
    EXPECT_FALSE(view.isComplete());
    drawAll();
    EXPECT_EQ(at(0, 9), Blue);
}
} // namespace
} // namespace OSG::Test
