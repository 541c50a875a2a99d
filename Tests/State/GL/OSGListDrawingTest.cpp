#include "OSGListDrawing.h"

#include <cmath>
#include <limits>

#include "DrawingTest.h"
#include "DrawnLists.h"
#include "LogCapture.h"
#include "OSGBlendChunk.h"
#include "OSGChunkMaterial.h"
#include "OSGDrawStateResolution.h"
#include "OSGStateParts.h"

namespace OSG::Test
{
namespace
{
using ListDrawing = DrawingTest;

DrawState colored(Color4f const &diffuse, bool isLit = true)
{
    DrawState state;
    state.surface.ambient = Color4f(0, 0, 0, 1);
    state.surface.diffuse = diffuse;
    state.surface.lit = isLit;
    return state;
}
Color4f const Red(1, 0, 0, 1);
Color4f const Green(0, 1, 0, 1);

TEST_F(ListDrawing, ATriangleInTheLightHasItsDiffuseColour)
{
    TestList scene;
    UInt32 const lights = scene.addLights(headlight());
    DrawMesh triangle = with_normals(full_picture());
    triangle.triangles = {0, 1, 2};
    scene.add(triangle, colored(Color4f(1, 0.5f, 0, 1)), 0, lights);
    scene.draw();
    EXPECT_EQ(pixel(Size - 2, Size - 2), (Rgb{255, 128, 0}));
    EXPECT_EQ(pixel(1, 1), (Rgb{0, 0, 0}));
}

TEST_F(ListDrawing, WithoutALightThereIsAmbientAndEmission)
{
    TestList scene;
    DrawState state = colored(Red);
    state.surface.ambient = Color4f(0, 1, 0, 1);
    state.surface.emission = Color4f(0, 0, 0.4f, 1);
    scene.add(with_normals(full_picture()), state);
    scene.draw();
    EXPECT_EQ(pixel(), (Rgb{0, 51, 102}));
}

TEST_F(ListDrawing, AMeshWithoutNormalsIsDrawnUnlit)
{
    TestList scene;
    UInt32 const lights = scene.addLights(headlight());
    scene.add(full_picture(), colored(Color4f(0.2f, 0.4f, 0.6f, 1)), 0, lights);
    scene.draw();
    EXPECT_EQ(pixel(), (Rgb{51, 102, 153}));
}

TEST_F(ListDrawing, AZeroNormalShowsAmbientAndEmission)
{
    DrawState state = colored(Red);
    state.surface.ambient = Color4f(0, 1, 0, 1);
    state.surface.specular = Color4f(1, 1, 1, 1);
    state.surface.emission = Color4f(0, 0, 0.4f, 1);
    for(Real32 shininess : {0.f, 10.f})
    {
        state.surface.shininess = shininess;
        TestList picture;
        UInt32 const light = picture.addLights(headlight());
        picture.add(with_normals(full_picture(), Vec3f(0, 0, 0)), state, 0, light);
        picture.draw();
        EXPECT_EQ(pixel(), (Rgb{0, 51, 102})) << shininess;
    }
}

TEST_F(ListDrawing, BothSidesAreLit)
{
    TestList scene;
    UInt32 const lights = scene.addLights(headlight());
    DrawMesh mesh = with_normals(full_picture(), Vec3f(0, 0, -1));
    mesh.triangles = {0, 2, 1, 0, 3, 2};
    scene.add(mesh, colored(Red), 0, lights);
    scene.draw();
    EXPECT_EQ(pixel(), (Rgb{255, 0, 0}));
}

TEST_F(ListDrawing, AMirroredSpaceTurnsTheFrontFace)
{
    TestList scene;
    UInt32 const lights = scene.addLights(headlight());
    Matrix mirror;
    mirror.setScale(-1, 1, 1);
    scene.add(with_normals(full_picture()), colored(Red), scene.addSpace(mirror, true), lights);
    scene.draw();
    EXPECT_EQ(pixel(), (Rgb{255, 0, 0}));
}

TEST_F(ListDrawing, NormalsAreRightUnderScaledTransforms)
{
    // A slope of 45 degrees that is stretched twice along x rises by 1 over 2.
    TestList scene;
    UInt32 const lights = scene.addLights(headlight());
    DrawMesh slope = rectangle({-0.5f, -1, -0.5f}, {0.5f, 1, 0.5f});
    slope.positions[1][2] = 0.5f;
    slope.positions[3][2] = -0.5f;
    Matrix stretched;
    stretched.setScale(2, 1, 1);
    scene.add(with_normals(slope, Vec3f(-1, 0, 1)), colored(Color4f(1, 1, 1, 1)),
              scene.addSpace(stretched), lights);
    scene.draw();
    int const expected = static_cast<int>(std::lround(255 * 2 / std::sqrt(5.0)));
    EXPECT_TRUE(pixel().isNear({expected, expected, expected})) << pixel();
}

TEST_F(ListDrawing, TheNearerSurfaceIsSeen)
{
    for(bool isNearFirst : {true, false})
    {
        TestList scene;
        scene.add(full_picture(isNearFirst ? 0.5f : -0.5f), colored(isNearFirst ? Green : Red));
        scene.add(full_picture(isNearFirst ? -0.5f : 0.5f), colored(isNearFirst ? Red : Green));
        glClear(GL_DEPTH_BUFFER_BIT);
        scene.draw();
        EXPECT_EQ(pixel(), (Rgb{0, 255, 0}));
    }
}

TEST_F(ListDrawing, WhatIsTransparentBlendsInItsOrderAndHidesNothing)
{
    TestList scene;
    DrawState blended = colored(Color4f(0, 1, 0, 0.5f));
    blended.blend.isOn = true;
    scene.add(full_picture(0.5f), blended);
    blended.surface.diffuse = Color4f(0, 0, 1, 0.5f);
    scene.add(full_picture(0), blended);
    scene.add(full_picture(-0.5f), colored(Red));
    scene.draw();
    EXPECT_TRUE(pixel().isNear({64, 64, 128})) << pixel();
}

TEST_F(ListDrawing, LinesAndPointsAreDrawn)
{
    TestList scene;
    DrawMesh mesh;
    mesh.positions = {{-1, 0.03125f, 0}, {1, 0.03125f, 0}, {0.03125f, 0.78125f, 0}};
    mesh.lines = {0, 1};
    mesh.points = {2};
    scene.add(mesh, colored(Red));
    scene.draw();
    EXPECT_EQ(pixel(4, 15), (Rgb{255, 0, 0}));
    EXPECT_EQ(pixel(16, 3), (Rgb{255, 0, 0}));
    EXPECT_EQ(pixel(16, 5), (Rgb{0, 0, 0}));
}

TEST_F(ListDrawing, ASpaceThatIsNotFiniteShowsNothingAndHarmsNothing)
{
    constexpr Real32 Infinite = std::numeric_limits<Real32>::infinity();
    constexpr Real32 Huge = std::numeric_limits<Real32>::max();
    for(Real32 value : {std::numeric_limits<Real32>::quiet_NaN(), Infinite, -Infinite, Huge})
    {
        TestList scene;
        UInt32 const lights = scene.addLights(headlight());
        for(UInt32 element = 0; element < 16; ++element)
        {
            Matrix matrix;
            matrix[element / 4][element % 4] = value;
            DrawMesh mesh = with_normals(full_picture(0.5f));
            mesh.lines = {0, 2};
            mesh.points = {1};
            if(std::abs(value) != Huge)
                scene.add(mesh, colored(Red), scene.addSpace(matrix), lights);
        }
        scene.add(rectangle({0, -1, 0}, {1, 1, 0}), colored(Green));
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        scene.draw();
        EXPECT_EQ(pixel(Size - 4), (Rgb{0, 255, 0})) << value;
        EXPECT_EQ(pixel(4), (Rgb{0, 0, 0})) << value;
    }
}

// --- colours of vertices ---

TEST_F(ListDrawing, ColoursOfVerticesCountOnlyWithAColourMaterial)
{
    TestList scene;
    scene.add(with_colors(full_picture(), Green), colored(Red));
    scene.draw();
    EXPECT_EQ(pixel(), (Rgb{255, 0, 0}));
}

struct ColorCase
{
    char const *name;
    UInt32 colorMaterial;
    bool isLit;
    int expected[3];
};
class VertexColors : public DrawingTest, public testing::WithParamInterface<ColorCase>
{
};
TEST_P(VertexColors, ReplaceWhatTheColourMaterialNames)
{
    TestList scene;
    UInt32 const lights = scene.addLights(headlight());
    DrawState state;
    state.surface.ambient = Color4f(0.5f, 0.5f, 0.5f, 1);
    state.surface.diffuse = Color4f(0.2f, 0, 0, 1);
    state.surface.specular = Color4f(0, 0, 0.2f, 1);
    state.surface.lit = GetParam().isLit;
    state.surface.colorMaterial = GetParam().colorMaterial;
    DrawMesh mesh = with_colors(with_normals(full_picture()), Color4f(0, 0.5f, 0, 1));
    scene.add(mesh, state, 0, lights);
    // What comes after has the colours of its own material again.
    UInt32 const half =
        scene.addSpace(Matrix({0.5f, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {-0.5f, 0, 0.1f, 1}));
    DrawState plain = state;
    plain.surface.colorMaterial = 0;
    scene.add(with_normals(full_picture()), plain, half, lights);
    scene.add(mesh, state, 0, lights);
    scene.draw();
    int const *const color = GetParam().expected;
    Rgb const expected{color[0], color[1], color[2]};
    EXPECT_TRUE(pixel(Size - 4).isNear(expected)) << pixel(Size - 4);
    Rgb const own = GetParam().isLit ? Rgb{77, 26, 77} : Rgb{51, 0, 0};
    EXPECT_TRUE(pixel(4).isNear(own)) << pixel(4);
}
ColorCase const ColorCases[] = {
    {"LitAmbient", GLName::Ambient, true, {51, 26, 51}},
    {"LitDiffuse", GLName::Diffuse, true, {26, 153, 77}},
    {"LitSpecular", GLName::Specular, true, {77, 153, 26}},
    {"LitEmission", GLName::Emission, true, {77, 153, 77}},
    {"LitBoth", GLName::AmbientAndDiffuse, true, {0, 153, 51}},
    {"UnlitAmbient", GLName::Ambient, false, {51, 0, 0}},
    {"UnlitDiffuse", GLName::Diffuse, false, {0, 128, 0}},
    {"UnlitBoth", GLName::AmbientAndDiffuse, false, {0, 128, 0}},
};
INSTANTIATE_TEST_SUITE_P(Modes, VertexColors, testing::ValuesIn(ColorCases),
                         [](auto const &row) { return row.param.name; });

// --- chunks that act by themselves ---

/// Writes down what it is asked for.
class NotingChunk : public BlendChunk
{
  public:
    using Ptr = UnrecordedRefPtr<NotingChunk>;
    static Ptr make(std::string const &name, std::string &notes)
    {
        return Ptr(TransitPtr<NotingChunk>(new NotingChunk(name, notes)));
    }
    void activate(DrawEnv *, UInt32) override { _notes += '+' + _name; }
    void deactivate(DrawEnv *, UInt32) override { _notes += '-' + _name; }
    void addTo(StateParts &parts, UInt32 slot) const override
    {
        parts.setChunk(const_cast<NotingChunk &>(*this), slot);
    }
    bool isTransparent() const override { return false; }

  private:
    NotingChunk(std::string const &name, std::string &notes)
        : _name(name)
        , _notes(notes)
    {
    }

    std::string _name;
    std::string &_notes;
};

DrawState with_chunk(NotingChunk *chunk)
{
    DrawState state;
    if(chunk != nullptr)
        state.chunks = {{chunk, chunk->getChunkId(), 100, 0}};
    return state;
}

TEST_F(ListDrawing, ChunksAreActiveAsLongAsTheirStateIs)
{
    std::string notes;
    NotingChunk::Ptr const a = NotingChunk::make("a", notes);
    NotingChunk::Ptr const b = NotingChunk::make("b", notes);
    TestList scene;
    for(NotingChunk *chunk :
        {a.get(), a.get(), b.get(), static_cast<NotingChunk *>(nullptr), a.get()})
        scene.add(full_picture(), with_chunk(chunk));
    scene.draw();
    EXPECT_EQ(notes, "+a-a+b-b+a-a");
}

TEST_F(ListDrawing, AMaterialsChunkIsActivatedInItsSlot)
{
    std::string notes;
    NotingChunk::Ptr const chunk = NotingChunk::make("a", notes);
    UnrecordedRefPtr<ChunkMaterial> const material(ChunkMaterial::create());
    material->addChunk(chunk);
    DrawState const state = resolve_draw_state(material);
    ASSERT_EQ(state.chunks.size(), 1u);
    EXPECT_EQ(state.chunks[0], (ActiveChunk{chunk, chunk->getChunkId(), 100, 0}));
    EXPECT_FALSE(state.isTransparent());
}

// --- lights ---

TEST_F(ListDrawing, EachItemHasItsOwnLights)
{
    TestList scene;
    LightValues red;
    red.diffuse = Red;
    LightValues green;
    green.diffuse = Green;
    UInt32 const both = scene.addLights({red, green});
    UInt32 const one = scene.addLights({red});
    DrawMesh const left = with_normals(rectangle({-1, -1, 0}, {0, 1, 0}));
    DrawMesh const right = with_normals(rectangle({0, -1, 0}, {1, 1, 0}));
    DrawState const white = colored(Color4f(1, 1, 1, 1));
    scene.add(left, white, 0, both);
    scene.add(right, white, 0, one);
    scene.draw();
    EXPECT_EQ(pixel(4), (Rgb{255, 255, 0}));
    EXPECT_EQ(pixel(Size - 4), (Rgb{255, 0, 0}));
}

TEST_F(ListDrawing, LightsStandInEyeCoordinatesWhateverTheSpace)
{
    TestList scene;
    LightValues aside;
    aside.position = Vec4f(1, 0, 0, 0);
    UInt32 const lights = scene.addLights({aside});
    Matrix turned;
    turned[0] = Vec4f(0, 0, 1, 0);
    turned[2] = Vec4f(-1, 0, 0, 0);
    UInt32 const space = scene.addSpace(turned);
    // The normal along -z of the turned space looks along x to the light.
    DrawMesh mesh = with_normals(full_picture(), Vec3f(0, 0, -1));
    for(Pnt3f &position : mesh.positions)
        position = Pnt3f(0, position[1], -position[0]);
    scene.add(mesh, colored(Red), space, lights);
    scene.draw();
    EXPECT_EQ(pixel(), (Rgb{255, 0, 0}));
}

TEST_F(ListDrawing, BlendedPrimitivesOfAMeshAreDrawnInTheirOrder)
{
    // A blue square and a red point in the middle of pixel (16, 16), at one depth.
    DrawMesh mesh = with_colors(full_picture(), Color4f(0, 0, 1, 1));
    Real32 const middle = 1.f / Size;
    mesh.positions.emplace_back(middle, -middle, 0.f);
    mesh.colors.emplace_back(1.f, 0.f, 0.f, 1.f);
    mesh.points = {static_cast<UInt32>(mesh.positions.size() - 1)};
    DrawState state;
    state.surface.lit = false;
    state.surface.colorMaterial = GLName::Diffuse;
    state.blend.isOn = true;
    auto const colorWith = [&](std::vector<DrawMesh::Run> const &runs)
    {
        TestList scene;
        mesh.runs = runs;
        scene.add(mesh, state);
        scene.draw();
        return pixel();
    };
    EXPECT_EQ(colorWith({}), (Rgb{255, 0, 0}));
    UInt32 const corners = static_cast<UInt32>(mesh.triangles.size());
    EXPECT_EQ(colorWith({{DrawMesh::Kind::Points, 1}, {DrawMesh::Kind::Triangles, corners}}),
              (Rgb{0, 0, 255}));
}
} // namespace
} // namespace OSG::Test
