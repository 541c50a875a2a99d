// What chunks do to the context when they are activated by themselves.

#include "ContextState.h"
#include "DrawingTest.h"
#include "OSGBlendChunk.h"
#include "OSGDrawEnv.h"
#include "OSGImage.h"
#include "OSGMaterialChunk.h"
#include "OSGStateChunkClass.h"
#include "OSGTextureEnvChunk.h"
#include "OSGTextureObjChunk.h"
#include "OSGTextureTransformChunk.h"

namespace OSG::Test
{
namespace
{
template <class T>
using Ptr = UnrecordedRefPtr<T>;

struct ChunkActivation : DrawingTest
{
    void SetUp() override
    {
        DrawingTest::SetUp();
        env.setObjects(&GLObjectStore::current());
    }

    DrawEnv env;
};

TEST_F(ChunkActivation, AMaterialSetsItsColoursOnBothSides)
{
    Ptr<MaterialChunk> const chunk(MaterialChunk::create());
    chunk->setDiffuse(Color4f(0.25f, 0.5f, 0.75f, 1));
    chunk->setShininess(200);
    chunk->setColorMaterial(GLName::Ambient);
    chunk->activate(&env);
    for(GLenum face : {GL_FRONT, GL_BACK})
    {
        GLfloat diffuse[4];
        GLfloat shininess = 0;
        glGetMaterialfv(face, GL_DIFFUSE, diffuse);
        glGetMaterialfv(face, GL_SHININESS, &shininess);
        EXPECT_EQ(diffuse[1], 0.5f);
        EXPECT_EQ(shininess, 128);
    }
    EXPECT_TRUE(glIsEnabled(GL_COLOR_MATERIAL));
    chunk->deactivate(&env);
    EXPECT_FALSE(glIsEnabled(GL_COLOR_MATERIAL));
}

TEST_F(ChunkActivation, AMaterialThatIsNotLitSwitchesLightOffWhileItIsActive)
{
    glEnable(GL_LIGHTING);
    Ptr<MaterialChunk> const chunk(MaterialChunk::create());
    chunk->setLit(false);
    chunk->activate(&env);
    EXPECT_FALSE(glIsEnabled(GL_LIGHTING));
    chunk->deactivate(&env);
    EXPECT_TRUE(glIsEnabled(GL_LIGHTING));
}

TEST_F(ChunkActivation, ABlendChunkBlendsWhileItIsActive)
{
    Ptr<BlendChunk> const chunk(BlendChunk::create());
    chunk->setSrcFactor(GLName::One);
    chunk->activate(&env);
    EXPECT_TRUE(glIsEnabled(GL_BLEND));
    EXPECT_EQ(ContextStateParts::value_of(GL_BLEND_SRC)[0], GL_ONE);
    chunk->deactivate(&env);
    EXPECT_FALSE(glIsEnabled(GL_BLEND));
}

TEST_F(ChunkActivation, ATextureDrivesTheUnitOfItsSlot)
{
    Ptr<Image> const image(Image::create());
    image->set(2, 2, 3, nullptr);
    Ptr<TextureObjChunk> const chunk(TextureObjChunk::create());
    chunk->setImage(image);
    chunk->updateObjectDependencies(&env, 1);
    EXPECT_EQ(env.getObjects()->countObjects(), 1u);
    chunk->activate(&env, 1);
    glActiveTexture(GL_TEXTURE1);
    EXPECT_TRUE(glIsEnabled(GL_TEXTURE_2D));
    EXPECT_NE(ContextStateParts::value_of(GL_TEXTURE_BINDING_2D)[0], 0);
    glActiveTexture(GL_TEXTURE0);
    EXPECT_FALSE(glIsEnabled(GL_TEXTURE_2D));
    chunk->deactivate(&env, 1);
    glActiveTexture(GL_TEXTURE1);
    EXPECT_FALSE(glIsEnabled(GL_TEXTURE_2D));
}

TEST_F(ChunkActivation, AnEnvironmentAndATransformDriveTheUnitOfTheirSlot)
{
    Ptr<TextureEnvChunk> const environment(TextureEnvChunk::create());
    Ptr<TextureTransformChunk> const transform(TextureTransformChunk::create());
    Matrix moved;
    moved.setTranslate(1, 2, 3);
    transform->setMatrix(moved);
    environment->activate(&env, 2);
    transform->activate(&env, 2);
    glActiveTexture(GL_TEXTURE2);
    GLint mode = 0;
    glGetTexEnviv(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, &mode);
    EXPECT_EQ(mode, GL_REPLACE);
    EXPECT_EQ(ContextStateParts::value_of(GL_TEXTURE_MATRIX)[13], 2);
    EXPECT_EQ(ContextStateParts::value_of(GL_MATRIX_MODE)[0], GL_MODELVIEW);
    environment->deactivate(&env, 2);
    transform->deactivate(&env, 2);
    glGetTexEnviv(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, &mode);
    EXPECT_EQ(mode, GL_MODULATE);
    EXPECT_EQ(ContextStateParts::value_of(GL_TEXTURE_MATRIX)[13], 0);
}

TEST_F(ChunkActivation, TheChangeFromOneToAnotherLeavesTheOther)
{
    Ptr<BlendChunk> const first(BlendChunk::create());
    Ptr<BlendChunk> const second(BlendChunk::create());
    second->setDestFactor(GLName::One);
    first->activate(&env);
    second->changeFrom(&env, first);
    EXPECT_TRUE(glIsEnabled(GL_BLEND));
    EXPECT_EQ(ContextStateParts::value_of(GL_BLEND_DST)[0], GL_ONE);
}

// --- without a context ---

TEST(StateChunk, ChunksOfEqualValuesAreEqual)
{
    Ptr<MaterialChunk> const one(MaterialChunk::create());
    Ptr<MaterialChunk> const other(MaterialChunk::create());
    Ptr<BlendChunk> const blend(BlendChunk::create());
    EXPECT_TRUE(*one == *other);
    EXPECT_EQ(one->switchCost(other), 0);
    other->setLit(false);
    EXPECT_TRUE(*one != *other);
    EXPECT_FALSE(*one == *other);
    EXPECT_GT(one->switchCost(other), 0);
    EXPECT_FALSE(static_cast<StateChunk const &>(*one) == *blend);
    EXPECT_NE(*one < *other, *other < *one);
}

TEST(StateChunk, ItsIdIsThatOfItsClass)
{
    Ptr<TextureObjChunk> const chunk(TextureObjChunk::create());
    EXPECT_EQ(chunk->getClass(), TextureObjChunk::getStaticClass());
    EXPECT_EQ(chunk->getChunkId(), TextureObjChunk::getStaticClassId());
    EXPECT_EQ(chunk->getClass()->getNumSlots(), TextureSlots);
    EXPECT_STREQ(chunk->getClass()->getName(), "TextureObj");
}
} // namespace
} // namespace OSG::Test
