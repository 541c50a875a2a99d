// Textures in drawn lists.

#include "DrawingTest.h"
#include "DrawnLists.h"
#include "LogCapture.h"
#include "OSGChangeList.h"
#include "OSGImage.h"
#include "OSGMemManager.h"
#include "OSGTextureStore.h"
#include "OSGThread.h"

namespace OSG::Test
{
namespace
{
using ImagePtr = UnrecordedRefPtr<Image>;

ImagePtr image_of(UInt32 width, UInt32 height, UInt32 channels, std::vector<UInt8> const &pixels)
{
    ImagePtr image(Image::create());
    EXPECT_TRUE(image->set(width, height, channels, pixels.data()));
    return image;
}

TextureValues nearest(Image *image)
{
    TextureValues texture;
    texture.image = image;
    texture.minFilter = texture.magFilter = GLName::Nearest;
    return texture;
}

DrawState textured(std::vector<TextureValues> const &textures,
                   Color4f const &diffuse = Color4f(1, 1, 1, 1))
{
    DrawState state;
    state.surface.lit = false;
    state.surface.diffuse = diffuse;
    state.textures = textures;
    return state;
}

struct TexturedDrawing : DrawingTest
{
    void show(DrawState const &state, Real32 mostCoordinate = 1)
    {
        TestList scene;
        scene.add(with_tex_coords(full_picture(), mostCoordinate), state);
        scene.draw();
    }

    // Red and green below, blue and white above.
    ImagePtr const fourColors = image_of(2, 2, 3, {255, 0, 0, 0, 255, 0, 0, 0, 255, 255, 255, 255});
};

TEST_F(TexturedDrawing, TheFirstRowOfAPictureIsTheBottomOne)
{
    show(textured({nearest(fourColors)}));
    EXPECT_EQ(pixel(4, Size - 4), (Rgb{255, 0, 0}));
    EXPECT_EQ(pixel(Size - 4, Size - 4), (Rgb{0, 255, 0}));
    EXPECT_EQ(pixel(4, 4), (Rgb{0, 0, 255}));
    EXPECT_EQ(pixel(Size - 4, 4), (Rgb{255, 255, 255}));
}

TEST_F(TexturedDrawing, RowsOfOddLengthHaveNoPadding)
{
    ImagePtr const odd = image_of(3, 2, 1, {10, 20, 30, 40, 50, 60});
    show(textured({nearest(odd)}));
    EXPECT_EQ(pixel(4, 4), (Rgb{40, 40, 40}));
    EXPECT_EQ(pixel(16, 4), (Rgb{50, 50, 50}));
    EXPECT_EQ(pixel(Size - 4, Size - 4), (Rgb{30, 30, 30}));
}

TEST_F(TexturedDrawing, ATextureModulatesTheColour)
{
    show(textured({nearest(fourColors)}, Color4f(0.4f, 0.2f, 1, 1)));
    EXPECT_EQ(pixel(Size - 4, 4), (Rgb{102, 51, 255}));
    EXPECT_EQ(pixel(4, Size - 4), (Rgb{102, 0, 0}));
}

TEST_F(TexturedDrawing, AGeometryWithoutCoordinatesIsDrawnWithout)
{
    TestList scene;
    scene.add(full_picture(), textured({nearest(fourColors)}, Color4f(1, 1, 0, 1)));
    scene.draw();
    EXPECT_EQ(pixel(4, 4), (Rgb{255, 255, 0}));
}

TEST_F(TexturedDrawing, ChannelsAreGreyAlphaAndColour)
{
    ImagePtr const grey = image_of(1, 1, 2, {100, 128});
    DrawState state = textured({nearest(grey)});
    state.blend.isOn = true;
    show(state);
    EXPECT_TRUE(pixel().isNear({50, 50, 50})) << pixel();
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    ImagePtr const colored = image_of(1, 1, 4, {255, 0, 100, 128});
    state.textures = {nearest(colored)};
    show(state);
    EXPECT_TRUE(pixel().isNear({128, 0, 50})) << pixel();
}

TEST_F(TexturedDrawing, LowAlphaIsDroppedAndTheRestIsOpaque)
{
    ImagePtr const image = image_of(2, 1, 4, {255, 0, 0, 127, 0, 255, 0, 128});
    DrawState state = textured({nearest(image)});
    state.blend.dropsLowAlpha = true;
    show(state);
    EXPECT_EQ(pixel(4, 4), (Rgb{0, 0, 0}));
    EXPECT_EQ(pixel(Size - 4, 4), (Rgb{0, 255, 0}));
}

TEST_F(TexturedDrawing, WrappingAndFiltersAreThoseOfTheState)
{
    TextureValues texture = nearest(fourColors);
    show(textured({texture}), 2);
    EXPECT_EQ(pixel(Size - 4, Size - 4), (Rgb{0, 255, 0}));
    EXPECT_EQ(pixel(20, Size - 4), (Rgb{255, 0, 0})) << "it repeats";
    texture.wrapS = texture.wrapT = GLName::ClampToEdge;
    glClear(GL_DEPTH_BUFFER_BIT);
    show(textured({texture}), 2);
    EXPECT_EQ(pixel(20, Size - 4), (Rgb{0, 255, 0})) << "it goes on with its edge";
    texture.magFilter = GLName::Linear;
    glClear(GL_DEPTH_BUFFER_BIT);
    show(textured({texture}));
    EXPECT_TRUE(pixel(16, Size - 2).isNear({124, 131, 0}, 12)) << pixel(16, Size - 2);
}

TEST_F(TexturedDrawing, TwoTexturesDriveTwoUnitsEachWithItsEnvironment)
{
    ImagePtr const half = image_of(1, 1, 3, {128, 128, 128});
    ImagePtr const red = image_of(1, 1, 3, {100, 0, 0});
    TextureValues first = nearest(half);
    first.envMode = GLName::Replace;
    TextureValues second = nearest(red);
    second.envMode = GLName::Add;
    show(textured({first, second}));
    EXPECT_EQ(pixel(), (Rgb{228, 128, 128}));
    // Afterwards one unit alone is on.
    glClear(GL_DEPTH_BUFFER_BIT);
    TestList scene;
    scene.add(with_tex_coords(rectangle({-1, -1, 0}, {0, 1, 0})), textured({first, second}));
    scene.add(with_tex_coords(rectangle({0, -1, 0}, {1, 1, 0})), textured({first}));
    scene.draw();
    EXPECT_EQ(pixel(4, 4), (Rgb{228, 128, 128}));
    EXPECT_EQ(pixel(Size - 4, 4), (Rgb{128, 128, 128}));
}

TEST_F(TexturedDrawing, AUnitWithoutImageIsOff)
{
    ImagePtr const red = image_of(1, 1, 3, {100, 0, 0});
    show(textured({TextureValues(), nearest(red)}));
    EXPECT_EQ(pixel(), (Rgb{100, 0, 0}));
}

TEST_F(TexturedDrawing, AMatrixTransformsTheCoordinates)
{
    TextureValues texture = nearest(fourColors);
    texture.transform.setTranslate(0.5f, 0, 0);
    texture.isTransformed = true;
    TestList scene;
    scene.add(with_tex_coords(rectangle({-1, -1, 0}, {0, 1, 0})), textured({texture}));
    scene.add(with_tex_coords(rectangle({0, -1, 0}, {1, 1, 0})), textured({nearest(fourColors)}));
    scene.draw();
    EXPECT_EQ(pixel(2, Size - 4), (Rgb{0, 255, 0}));
    EXPECT_EQ(pixel(18, Size - 4), (Rgb{255, 0, 0}));
}

TEST_F(TexturedDrawing, AnEnvironmentMapFollowsTheNormals)
{
    // The normal along the view shows the middle of the map; one to the right shows more of the
    // right.
    ImagePtr const map = image_of(2, 1, 3, {255, 0, 0, 0, 255, 0});
    TextureValues texture = nearest(map);
    texture.isSphereMap = true;
    TestList scene;
    Vec3f const right(0.5f, 0, 0.8660254f);
    Vec3f const left(-0.5f, 0, 0.8660254f);
    Matrix away;
    away.setTranslate(0, 0, -0.5f);
    UInt32 const space = scene.addSpace(away);
    scene.add(with_tex_coords(with_normals(rectangle({-1, -1, 0}, {0, 1, 0}), right)),
              textured({texture}), space);
    scene.add(with_tex_coords(with_normals(rectangle({0, -1, 0}, {1, 1, 0}), left)),
              textured({texture}), space);
    scene.draw();
    EXPECT_EQ(pixel(14, 16), (Rgb{0, 255, 0}));
    EXPECT_EQ(pixel(18, 16), (Rgb{255, 0, 0}));
}

TEST_F(TexturedDrawing, SmallerPixelsShowTheMeanOfTheirArea)
{
    // A checkerboard of 256 by 256 over 32 by 32 pixels.
    std::vector<UInt8> board(256 * 256);
    for(std::size_t i = 0; i < board.size(); ++i)
        board[i] = (i / 256 + i) % 2 == 0 ? 200 : 100;
    ImagePtr const image = image_of(256, 256, 1, board);
    TextureValues texture;
    texture.image = image;
    show(textured({texture}));
    EXPECT_EQ(pixel(), (Rgb{150, 150, 150}));
}

TEST_F(TexturedDrawing, ExhaustedMemoryPassesOutAndTheNextFrameShowsThePicture)
{
    ImagePtr const image = image_of(4, 4, 3, std::vector<UInt8>(48, 200));
    Thread::getCurrentChangeList()->commitChanges();
    TextureValues texture = nearest(image);
    texture.minFilter = GLName::LinearMipmapLinear;
    bool wasExhausted = true;
    for(UInt64 blocks = 0; wasExhausted; ++blocks)
    {
        ASSERT_LT(blocks, 1000u);
        GLObjectStore::releaseCurrent();
        TextureStore &store = GLObjectStore::current().textures();
        set_mem_block_limit(blocks);
        try
        {
            store.bind(texture);
            wasExhausted = false;
        }
        catch(std::bad_alloc const &)
        {
        }
        set_mem_limit(0);
        glBindTexture(GL_TEXTURE_2D, 0);
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        show(textured({texture}));
        EXPECT_EQ(pixel(), (Rgb{200, 200, 200})) << blocks;
    }
}

// --- bad pictures ---

TEST_F(TexturedDrawing, APictureWithoutPixelsIsDrawnWithoutAndWarnsOnce)
{
    ImagePtr const empty(Image::create());
    empty->setName("nothing.png");
    LogCapture const log;
    for(int frame = 0; frame < 3; ++frame)
    {
        glClear(GL_DEPTH_BUFFER_BIT);
        show(textured({nearest(empty)}, Color4f(1, 0, 1, 1)));
        EXPECT_EQ(pixel(), (Rgb{255, 0, 255}));
    }
    EXPECT_EQ(log.texts(), (std::vector<std::string>{
                               "The picture 'nothing.png' has no pixels, it is drawn without\n"}));
}

TEST_F(TexturedDrawing, APictureWithFewerPixelsThanItsSizeSaysIsDrawnWithout)
{
    ImagePtr const image = image_of(2, 2, 3, std::vector<UInt8>(12, 255));
    image->setHeight(1000000);
    LogCapture const log;
    show(textured({nearest(image)}, Color4f(1, 0, 1, 1)));
    EXPECT_EQ(pixel(), (Rgb{255, 0, 255}));
    EXPECT_EQ(log.texts().size(), 1u);
}

TEST_F(TexturedDrawing, APictureThatIsTooLargeIsHalvedUntilItFitsAndWarnsOnce)
{
    GLint largest = 0;
    glGetIntegerv(GL_MAX_TEXTURE_SIZE, &largest);
    UInt32 const width = static_cast<UInt32>(largest) * 2 + 2;
    std::vector<UInt8> row(width, 0);
    std::fill(row.begin() + width / 2, row.end(), UInt8(255));
    ImagePtr const image = image_of(width, 1, 1, row);
    image->setName("wide.png");
    LogCapture const log;
    for(int frame = 0; frame < 2; ++frame)
    {
        glClear(GL_DEPTH_BUFFER_BIT);
        show(textured({nearest(image)}));
        EXPECT_EQ(pixel(14, 14), (Rgb{0, 0, 0}));
        EXPECT_EQ(pixel(18, 14), (Rgb{255, 255, 255}));
    }
    ASSERT_EQ(log.texts().size(), 1u);
    EXPECT_EQ(log.texts()[0], "The picture 'wide.png' of " + std::to_string(width) +
                                  "x1 is too large for the driver, it is drawn with " +
                                  std::to_string(width / 4) + "x1\n");
}

TEST_F(TexturedDrawing, MoreTexturesThanUnitsAreLeftOutWithAWarning)
{
    std::vector<TextureValues> many(40, nearest(fourColors));
    LogCapture const log;
    for(int frame = 0; frame < 2; ++frame)
    {
        glClear(GL_DEPTH_BUFFER_BIT);
        show(textured(many));
        EXPECT_EQ(pixel(4, Size - 4), (Rgb{255, 0, 0}));
    }
    EXPECT_EQ(log.texts().size(), 1u);
}
} // namespace
} // namespace OSG::Test
