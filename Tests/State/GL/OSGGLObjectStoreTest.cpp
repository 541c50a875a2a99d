#include "OSGGLObjectStore.h"

#include <thread>

#include "DrawingTest.h"
#include "DrawnLists.h"
#include "OSGImage.h"
#include "OSGMemManager.h"
#include "OSGMeshStore.h"

namespace OSG::Test
{
namespace
{
DrawState plain(Color4f const &color)
{
    DrawState state;
    state.surface.lit = false;
    state.surface.diffuse = color;
    return state;
}
DrawState const RedState = plain(Color4f(1, 0, 0, 1));

struct ObjectStore : DrawingTest
{
    static std::size_t objects() { return GLObjectStore::current().countObjects(); }

    static MeshStore &meshes() { return GLObjectStore::current().meshes(); }
};

TEST_F(ObjectStore, SmallMeshesOfOneLayoutShareTheirBuffers)
{
    TestList scene;
    for(int i = 0; i < 1000; ++i)
        scene.add(full_picture(), RedState);
    auto const &places = meshes().prepare(scene.list);
    for(auto const &place : places)
        EXPECT_EQ(place.page, places[0].page);
    EXPECT_EQ(objects(), 2u);
    EXPECT_TRUE(places[0].page->hasShortIndices());
}

TEST_F(ObjectStore, AMeshOfManyVerticesHasBuffersOfItsOwnWithLongIndices)
{
    TestList scene;
    DrawMesh large;
    for(UInt32 i = 0; i <= 66000; ++i)
        large.positions.emplace_back(static_cast<Real32>(i), 0.f, 0.f);
    large.triangles = {0, 1, 66000};
    scene.add(large, RedState);
    scene.add(full_picture(), RedState);
    large.positions.resize(65536);
    large.triangles = {0, 1, 65535};
    scene.add(large, RedState);
    auto const &places = meshes().prepare(scene.list);
    EXPECT_FALSE(places[0].page->hasShortIndices());
    EXPECT_TRUE(places[2].page->hasShortIndices());
    EXPECT_NE(places[0].page, places[1].page);
    EXPECT_NE(places[0].page, places[2].page);
    EXPECT_EQ(objects(), 6u);
}

TEST_F(ObjectStore, AMeshIsMadeWhenItIsFirstDrawn)
{
    TestList scene;
    scene.add(full_picture(), RedState);
    scene.addShape(full_picture());
    scene.draw();
    EXPECT_EQ(scene.shapes[0]->made, 1);
    EXPECT_EQ(scene.shapes[1]->made, 0);
    scene.add(1u, 0u); // in the state of the first
    scene.draw();
    EXPECT_EQ(scene.shapes[0]->made, 1);
    EXPECT_EQ(scene.shapes[1]->made, 1);
}

TEST_F(ObjectStore, MeshesAreMadeOnceAndAgainWhenTheirStampChanges)
{
    TestList scene;
    scene.add(full_picture(), RedState);
    scene.add(rectangle({-2, -2, 0}, {-2, -2, 0}), RedState);
    scene.draw();
    scene.draw();
    EXPECT_EQ(scene.shapes[0]->made, 1);
    // Nothing is asked while the list says that no mesh has changed.
    scene.shapes[0]->stamp = 2;
    scene.draw();
    EXPECT_EQ(scene.shapes[0]->made, 1);
    scene.list.meshEpoch = 1;
    scene.draw();
    EXPECT_EQ(scene.shapes[0]->made, 2);
    EXPECT_EQ(scene.shapes[1]->made, 1);
}

TEST_F(ObjectStore, AMeshThatHasChangedIsSeen)
{
    TestList scene;
    scene.add(rectangle({-1, -1, 0}, {0, 1, 0}), RedState);
    scene.draw();
    EXPECT_EQ(pixel(4), (Rgb{255, 0, 0}));
    EXPECT_EQ(pixel(Size - 4), (Rgb{0, 0, 0}));
    scene.shapes[0]->mesh = rectangle({0, -1, 0}, {1, 1, 0});
    scene.shapes[0]->stamp = 0; // it may change at any time
    scene.list.meshEpoch = 1;
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    scene.draw();
    EXPECT_EQ(pixel(4), (Rgb{0, 0, 0}));
    EXPECT_EQ(pixel(Size - 4), (Rgb{255, 0, 0}));
    // Now it has become larger, and needs another place.
    scene.shapes[0]->mesh = full_picture();
    DrawMesh const &first = scene.shapes[0]->mesh;
    scene.shapes[0]->mesh.positions.insert(scene.shapes[0]->mesh.positions.end(), 100,
                                           first.positions[0]);
    scene.list.meshEpoch = 2;
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    scene.draw();
    EXPECT_EQ(pixel(4), (Rgb{255, 0, 0}));
    EXPECT_EQ(pixel(Size - 4), (Rgb{255, 0, 0}));
}

TEST_F(ObjectStore, AMeshThatChangesSeenThroughAnotherListIsSeenHereToo)
{
    TestList one;
    one.add(rectangle({-1, -1, 0}, {0, 1, 0}), RedState);
    one.draw();
    TestList other;
    other.list.shapes.push_back(one.list.shapes[0]);
    other.add(0, other.addState(RedState));
    one.shapes[0]->mesh = rectangle({0, -1, 0}, {1, 1, 0});
    one.shapes[0]->stamp = 2;
    other.list.meshEpoch = one.list.meshEpoch = 1;
    other.draw();
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    one.draw();
    EXPECT_EQ(pixel(4), (Rgb{0, 0, 0}));
    EXPECT_EQ(pixel(Size - 4), (Rgb{255, 0, 0}));
}

TEST_F(ObjectStore, AMeshWithNothingToDrawTakesNoBuffer)
{
    TestList scene;
    scene.add(DrawMesh(), RedState);
    scene.add(full_picture(), RedState);
    scene.draw();
    EXPECT_EQ(pixel(), (Rgb{255, 0, 0}));
    EXPECT_EQ(objects(), 2u);
}

TEST_F(ObjectStore, ExhaustedMemoryPassesOutAndTheNextFrameIsWhole)
{
    TestList scene;
    UInt32 const red = scene.addState(RedState);
    scene.add(scene.addShape(rectangle({-1, -1, 0}, {0, 1, 0})), red);
    DrawMesh large = rectangle({0, -1, 0}, {1, 1, 0});
    large.positions.resize(MeshPage::SharedVertices + 1);
    scene.add(scene.addShape(large), red);
    scene.add(scene.addShape(with_normals(rectangle({-2, -2, 0}, {-2, -2, 0}))), red);
    bool wasExhausted = true;
    for(UInt64 blocks = 0; wasExhausted; ++blocks)
    {
        ASSERT_LT(blocks, 1000u);
        GLObjectStore::releaseCurrent();
        MeshStore &store = meshes();
        set_mem_block_limit(blocks);
        try
        {
            store.prepare(scene.list);
            wasExhausted = false;
        }
        catch(std::bad_alloc const &)
        {
        }
        set_mem_limit(0);
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        scene.draw();
        EXPECT_EQ(pixel(4), (Rgb{255, 0, 0})) << blocks;
        EXPECT_EQ(pixel(Size - 4), (Rgb{255, 0, 0})) << blocks;
        EXPECT_EQ(objects(), 6u) << blocks;
    }
}

// --- ends ---

TEST_F(ObjectStore, AThousandScenesLeaveNoObject)
{
    for(int i = 0; i < 1000; ++i)
    {
        UnrecordedRefPtr<Image> const image(Image::create());
        image->set(1, 1, 3, nullptr);
        DrawState state = RedState;
        state.textures.resize(1);
        state.textures[0].image = image;
        TestList scene;
        scene.add(with_tex_coords(full_picture()), state);
        scene.add(full_picture(), RedState);
        scene.draw();
        EXPECT_GE(objects(), 5u);
    }
    EXPECT_EQ(objects(), 0u);
}

TEST_F(ObjectStore, TheBuffersOfTheDriverAreGoneWithTheirShapes)
{
    GLuint buffer = 0;
    {
        TestList scene;
        scene.add(full_picture(), RedState);
        buffer = meshes().prepare(scene.list)[0].page->vertexBuffer();
        EXPECT_TRUE(glIsBuffer(buffer));
    }
    EXPECT_TRUE(glIsBuffer(buffer)) << "nothing is freed until the next frame";
    GLObjectStore::current();
    EXPECT_FALSE(glIsBuffer(buffer));
}

TEST_F(ObjectStore, WhatDiesInAnotherThreadIsFreedInTheNextFrame)
{
    auto scene = std::make_unique<TestList>();
    scene->add(full_picture(), RedState);
    scene->draw();
    EXPECT_EQ(objects(), 2u);
    std::thread([&scene] { scene.reset(); }).join();
    EXPECT_EQ(objects(), 0u);
}

TEST_F(ObjectStore, WhatDiesWhileNoContextIsCurrentIsFreedInTheNextFrame)
{
    auto scene = std::make_unique<TestList>();
    scene->add(full_picture(), RedState);
    scene->draw();
    context().release();
    scene.reset();
    ASSERT_TRUE(context().makeCurrent());
    EXPECT_EQ(objects(), 0u);
}

TEST_F(ObjectStore, EachContextHasItsOwnObjects)
{
    TestList scene;
    scene.add(full_picture(), RedState);
    scene.draw();
    {
        OffscreenContext other(Size, Size);
        ASSERT_TRUE(other.makeCurrent());
        EXPECT_EQ(objects(), 0u);
        scene.draw();
        EXPECT_EQ(objects(), 2u);
        EXPECT_EQ(scene.shapes[0]->made, 2);
        GLObjectStore::releaseCurrent();
        EXPECT_EQ(objects(), 0u);
        GLObjectStore::releaseCurrent();
        other.release();
    }
    ASSERT_TRUE(context().makeCurrent());
    EXPECT_EQ(objects(), 2u);
    scene.draw();
    EXPECT_EQ(pixel(), (Rgb{255, 0, 0}));
    EXPECT_EQ(scene.shapes[0]->made, 2);
}

// A context that ends without a word leaves a store, which another one with the same handle finds.
// Its objects of the same names are then others. Here both are one context, whose objects are all
// deleted and made anew behind the back of the store.
TEST_F(ObjectStore, AContextInThePlaceOfAnEndedOneMakesItsObjectsAnew)
{
    TestList scene;
    scene.add(full_picture(), RedState);
    scene.draw();
    for(bool hasSameNames : {false, true})
    {
        int const madeBefore = scene.shapes[0]->made;
        constexpr GLsizei Names = 32;
        GLuint names[Names];
        for(GLsizei i = 0; i < Names; ++i)
            names[i] = static_cast<GLuint>(i + 1);
        glDeleteBuffers(Names, names);
        glDeleteTextures(Names, names);
        for(GLuint name : names)
        {
            glBindTexture(GL_TEXTURE_2D, hasSameNames ? name : 0);
            glBindBuffer(GL_ARRAY_BUFFER, hasSameNames ? name : 0);
        }
        glBindTexture(GL_TEXTURE_2D, 0);
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        scene.draw();
        EXPECT_EQ(pixel(), (Rgb{255, 0, 0}));
        EXPECT_EQ(scene.shapes[0]->made, madeBefore + 1);
        EXPECT_EQ(objects(), 2u);
    }
}

TEST_F(ObjectStore, TexturesAreRenewedWhenTheirPictureHasChanged)
{
    UnrecordedRefPtr<Image> const image(Image::create());
    UInt8 const red[] = {255, 0, 0};
    UInt8 const green[] = {0, 255, 0};
    image->set(1, 1, 3, red);
    DrawState state = plain(Color4f(1, 1, 1, 1));
    state.textures.resize(1);
    state.textures[0].image = image;
    TestList scene;
    scene.add(with_tex_coords(full_picture()), state);
    scene.draw();
    EXPECT_EQ(pixel(), (Rgb{255, 0, 0}));
    image->set(1, 1, 3, green);
    glClear(GL_DEPTH_BUFFER_BIT);
    scene.draw();
    EXPECT_EQ(pixel(), (Rgb{0, 255, 0}));
    EXPECT_EQ(objects(), 3u);
}
} // namespace
} // namespace OSG::Test
