#include "OSGTextureObjChunk.h"

#include <epoxy/gl.h>

#include "OSGCheckedState.h"
#include "OSGChunkCalls.h"
#include "OSGDrawEnv.h"
#include "OSGGLObjectStore.h"
#include "OSGImage.h"
#include "OSGStateParts.h"
#include "OSGTextureStore.h"

namespace OSG
{
StateChunkClass TextureObjChunk::_class("TextureObj", TextureSlots);

TextureObjChunk::~TextureObjChunk() = default;

StateChunkClass const *TextureObjChunk::getClass() const { return &_class; }

TextureValues TextureObjChunk::getTexture() const
{
    TextureValues texture;
    texture.image = getImage();
    texture.minFilter = getMinFilter();
    texture.magFilter = getMagFilter();
    texture.wrapS = getWrapS();
    texture.wrapT = getWrapT();
    return checked_texture(texture);
}

// --- the context ---

bool set_texture(TextureStore &textures, TextureValues const &texture)
{
    bool const isOn = texture.image != nullptr && textures.bind(texture);
    if(isOn)
        glEnable(GL_TEXTURE_2D);
    else
        glDisable(GL_TEXTURE_2D);
    return isOn;
}

void set_sphere_map(bool isOn)
{
    for(GLenum const coordinate : {GL_S, GL_T})
        glTexGeni(coordinate, GL_TEXTURE_GEN_MODE, GL_SPHERE_MAP);
    for(GLenum const generator : {GL_TEXTURE_GEN_S, GL_TEXTURE_GEN_T})
    {
        if(isOn)
            glEnable(generator);
        else
            glDisable(generator);
    }
}

void TextureObjChunk::activate(DrawEnv *env, UInt32 index)
{
    if(env == nullptr || env->getObjects() == nullptr)
        return;
    glActiveTexture(GL_TEXTURE0 + index);
    set_texture(env->getObjects()->textures(), getTexture());
}

void TextureObjChunk::deactivate(DrawEnv *, UInt32 index)
{
    glActiveTexture(GL_TEXTURE0 + index);
    glDisable(GL_TEXTURE_2D);
}

void TextureObjChunk::updateObjectDependencies(DrawEnv *env, UInt32)
{
    if(env != nullptr && env->getObjects() != nullptr && getImage() != nullptr)
        env->getObjects()->textures().bind(getTexture());
}

bool TextureObjChunk::isTransparent() const
{
    return getImage() != nullptr && getImage()->hasAlpha() && !getImage()->getForceAlphaBinary();
}

bool TextureObjChunk::operator==(StateChunk const &other) const
{
    auto const *const chunk = dynamic_cast<TextureObjChunk const *>(&other);
    return chunk != nullptr && (chunk == this || getTexture() == chunk->getTexture());
}

void TextureObjChunk::addTo(StateParts &parts, UInt32 slot) const
{
    parts.setTexture(getTexture(), slot);
}
} // namespace OSG
