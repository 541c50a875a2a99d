#include "DrawnSceneView.h"
#include "OSGImage.h"
#include "OSGSimpleTexturedMaterial.h"

namespace OSG::Test
{
namespace
{
/// Squares have their edges in the middles of pixels: a square of 9.5 goes from pixel -10 to 9.
constexpr Real32 Half = 9.5f;
Rgb const Dark{0, 0, 51};

struct SceneViewStyle : DrawnSceneView
{
    NodePtr const square = make_square(Red, Half);

    void SetUp() override
    {
        DrawnSceneView::SetUp();
        view.setScene(square);
        view.setLineColor(Color3f(0, 0, 0.2f));
    }

    void draw(DrawStyle style)
    {
        view.setStyle(style);
        DrawnSceneView::draw();
    }

    /// The pixels of the last picture that are not white.
    std::vector<bool> covered() const
    {
        std::vector<bool> result;
        for(UInt32 y = 0; y < Side; ++y)
        {
            for(UInt32 x = 0; x < Side; ++x)
                result.push_back(pixel(x, y) != White);
        }
        return result;
    }
};

TEST_F(SceneViewStyle, ShadedHasNoWires)
{
    EXPECT_EQ(view.getStyle(), DrawStyle::Shaded);
    draw(DrawStyle::Shaded);
    EXPECT_EQ(count(Dark), 0u);
    EXPECT_EQ(at(5, -5), Red);
    EXPECT_EQ(at(8, 8), Red);
}

TEST_F(SceneViewStyle, WiresOverShadingAreTheEdgesOfTriangles)
{
    draw(DrawStyle::ShadedWithWires);
    EXPECT_EQ(at(0, 9), Dark);
    EXPECT_EQ(at(9, 0), Dark);
    EXPECT_EQ(at(-10, 0), Dark);
    EXPECT_EQ(at(4, 4), Dark); // the diagonal
    EXPECT_EQ(at(5, -5), Red);
    EXPECT_EQ(at(12, 0), White);
}

TEST_F(SceneViewStyle, WiresAloneHaveTheColourOfTheMaterial)
{
    draw(DrawStyle::Wires);
    EXPECT_EQ(at(0, 9), Red);
    EXPECT_EQ(at(4, 4), Red);
    EXPECT_EQ(at(5, -5), White);
    EXPECT_EQ(count(Dark), 0u);
}

TEST_F(SceneViewStyle, ShowsAPictureAsBeforeAfterAnother)
{
    draw(DrawStyle::Shaded);
    std::vector<UInt8> const before = pixels();
    draw(DrawStyle::ShadedWithWires);
    draw(DrawStyle::Wires);
    draw(DrawStyle::Shaded);
    EXPECT_EQ(pixels(), before);
}

TEST_F(SceneViewStyle, NoWireSinksIntoItsFace)
{
    NodePtr const band = make_shape(
        one_primitive(QuadStripPrimitive,
                      {{-9, 3, 0}, {-9, -3, 0}, {0, 5, 2}, {0, -2, 2}, {9, 3, 0}, {9, -3, 0}}),
        unlit(Red));
    for(Real32 const angle : {0.f, 0.9f, 1.3f, 1.5f})
    {
        view.setScene(make_transform(rotation({0.3f, 1, 0}, angle), {band}));
        for(bool const isOrthographic : {false, true})
        {
            WindowView wanted{{1, 2, 30}, {0, 0, 0}, {0, 1, 0}, 45, Side, Side};
            if(isOrthographic)
                wanted.orthographicHeight = 25;
            view.setView(wanted);
            draw(DrawStyle::Wires);
            std::vector<bool> const wires = covered();
            draw(DrawStyle::ShadedWithWires);
            std::size_t missing = 0;
            for(UInt32 i = 0; i < Side * Side; ++i)
                missing += wires[i] && pixel(i % Side, i / Side) != Dark ? 1 : 0;
            // At the steepest angle one part of the band hides wires of the other.
            EXPECT_LE(missing, angle == 1.5f ? 40u : 0u) << angle << isOrthographic;
        }
    }
}

TEST_F(SceneViewStyle, LinesAndPointsKeepTheirColours)
{
    NodePtr const line =
        make_shape(one_primitive(LinesPrimitive, {{-20, 15.5f, 0}, {20, 15.5f, 0}}), unlit(Green));
    view.setScene(make_group({square, line}));
    for(DrawStyle const style : {DrawStyle::Shaded, DrawStyle::ShadedWithWires, DrawStyle::Wires})
    {
        draw(style);
        EXPECT_EQ(at(0, 15), Green);
    }
    draw(DrawStyle::OneColor);
    EXPECT_EQ(at(0, 15), Dark);
    EXPECT_EQ(at(5, -5), Dark);
    EXPECT_EQ(count(Dark) + count(White), Side * Side);
}

TEST_F(SceneViewStyle, BehindATransparentFaceWiresAreSeenThroughIt)
{
    UnrecordedRefPtr<SimpleMaterial> const glass = unlit(Green);
    glass->setTransparency(0.5f);
    NodePtr const pane = make_shape(
        one_primitive(
            QuadsPrimitive,
            {{-20.5f, -20.5f, 5}, {20.5f, -20.5f, 5}, {20.5f, 20.5f, 5}, {-20.5f, 20.5f, 5}}),
        glass);
    view.setScene(make_group({square, pane}));
    draw(DrawStyle::ShadedWithWires);
    EXPECT_EQ(at(0, 20), Dark);        // of the pane
    EXPECT_NEAR(at(5, -5)[0], 128, 1); // the square through it
    EXPECT_NEAR(at(5, -5)[1], 128, 1);
    EXPECT_NEAR(at(0, 9)[1], 128, 1); // a wire of the square
    EXPECT_NEAR(at(0, 9)[0], 0, 1);
    EXPECT_NEAR(at(15, -16)[0], 128, 1); // the pane alone
    draw(DrawStyle::Wires);
    EXPECT_EQ(at(0, 20), Green);
    EXPECT_EQ(at(0, 9), Red);
    EXPECT_EQ(at(15, -16), White);
}

TEST_F(SceneViewStyle, OfATexturedPartWiresHaveNoTexture)
{
    UnrecordedRefPtr<Image> const image(Image::create());
    UInt8 const blue[] = {0, 0, 255};
    image->set(1, 1, 3, blue);
    UnrecordedRefPtr<SimpleTexturedMaterial> const material(SimpleTexturedMaterial::create());
    material->setImage(image);
    material->setEnvMode(0x1E01); // GL_REPLACE
    material->setLit(false);
    material->setDiffuse(Color3f(1, 0, 0));
    auto &geometry = static_cast<Geometry &>(*square->getCore());
    geometry.setMaterial(material);
    geometry.setTexCoords(
        make_property<GeoVec2fProperty>(std::vector<Vec2f>{{0, 0}, {1, 0}, {1, 1}, {0, 1}}));
    draw(DrawStyle::Shaded);
    ASSERT_EQ(at(0, 8), Blue);
    draw(DrawStyle::ShadedWithWires);
    EXPECT_EQ(at(5, -5), Blue);
    EXPECT_EQ(at(0, 9), Dark);
    draw(DrawStyle::Wires);
    EXPECT_EQ(at(0, 9), Red);
    draw(DrawStyle::Shaded);
    EXPECT_EQ(at(0, 8), Blue);
}

TEST_F(SceneViewStyle, OfAMirroredPartWiresAreSeenAsWell)
{
    view.setScene(make_transform(scaling(-1, 1, 1), {square}));
    draw(DrawStyle::ShadedWithWires);
    EXPECT_EQ(at(0, 9), Dark);
    EXPECT_EQ(at(-5, 4), Dark); // the diagonal
    EXPECT_EQ(at(5, 5), Red);
    draw(DrawStyle::Wires);
    EXPECT_EQ(at(-5, 4), Red);
    EXPECT_EQ(at(5, 5), White);
}

TEST_F(SceneViewStyle, SectionsCutWires)
{
    Plane const right[] = {Plane(Vec3f(1, 0, 0), Pnt3f(2, 0, 0))};
    view.getRenderAction()->editDrawEnv().setSections(right);
    draw(DrawStyle::ShadedWithWires);
    EXPECT_EQ(at(5, 9), Dark);
    EXPECT_EQ(at(5, -5), Red);
    EXPECT_EQ(at(-5, 9), White);
    EXPECT_EQ(at(-10, 0), White);
    draw(DrawStyle::Wires);
    EXPECT_EQ(at(5, 9), Red);
    EXPECT_EQ(at(-5, 9), White);
}

TEST_F(SceneViewStyle, WhatIsHiddenIsolatedOrHighlightedIsSoInEveryStyle)
{
    NodePtr const other = make_square(Green, Half, Pnt3f(20, 0, 0));
    view.setScene(make_group({square, other}));
    AppearanceTable &looks = view.getRenderAction()->editAppearances();
    looks.set(NodePath(square), unlit(Blue));
    draw(DrawStyle::Wires);
    EXPECT_EQ(at(0, 9), Blue);
    EXPECT_EQ(at(20, 9), Green);
    draw(DrawStyle::ShadedWithWires);
    EXPECT_EQ(at(5, -5), Blue);
    EXPECT_EQ(at(0, 9), Dark);
    looks.hide(NodePath(square));
    draw(DrawStyle::ShadedWithWires);
    EXPECT_EQ(at(0, 9), White);
    EXPECT_EQ(at(20, 9), Dark);
    looks.clear();
    looks.isolate({NodePath(square)});
    draw(DrawStyle::Wires);
    EXPECT_EQ(at(0, 9), Red);
    EXPECT_EQ(at(20, 9), White);
}

TEST_F(SceneViewStyle, VertexColoursColourWires)
{
    UnrecordedRefPtr<SimpleMaterial> const material = unlit(Red);
    material->setColorMaterial(0x1201); // GL_DIFFUSE
    auto &geometry = static_cast<Geometry &>(*square->getCore());
    geometry.setMaterial(material);
    geometry.setColors(make_property<GeoColor3fProperty>(std::vector<Color3f>(4, {0, 0, 1})));
    draw(DrawStyle::Wires);
    EXPECT_EQ(at(0, 9), Blue);
    draw(DrawStyle::ShadedWithWires);
    EXPECT_EQ(at(0, 9), Dark);
    EXPECT_EQ(at(5, -5), Blue);
}
} // namespace
} // namespace OSG::Test
