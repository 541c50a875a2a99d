#include "OSGTextureObjChunk.h"

#include "OSGCheckedState.h"
#include "OSGImage.h"
#include "OSGStateParts.h"

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

void TextureObjChunk::activate(DrawEnv *, UInt32) {}
void TextureObjChunk::deactivate(DrawEnv *, UInt32) {}
void TextureObjChunk::updateObjectDependencies(DrawEnv *, UInt32) {}

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
