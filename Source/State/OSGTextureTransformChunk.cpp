#include "OSGTextureTransformChunk.h"

#include <epoxy/gl.h>

#include "OSGCheckedState.h"
#include "OSGChunkCalls.h"
#include "OSGStateParts.h"

namespace OSG
{
StateChunkClass TextureTransformChunk::_class("TextureTransform", TextureSlots);

TextureTransformChunk::~TextureTransformChunk() = default;

StateChunkClass const *TextureTransformChunk::getClass() const { return &_class; }

// --- the context ---

void set_texture_transform(Matrix const &matrix)
{
    glMatrixMode(GL_TEXTURE);
    glLoadMatrixf(matrix.values());
    glMatrixMode(GL_MODELVIEW);
}

void TextureTransformChunk::activate(DrawEnv *, UInt32 index)
{
    glActiveTexture(GL_TEXTURE0 + index);
    set_texture_transform(checked_transform(getMatrix()));
}

void TextureTransformChunk::deactivate(DrawEnv *, UInt32 index)
{
    glActiveTexture(GL_TEXTURE0 + index);
    set_texture_transform(Matrix());
}

bool TextureTransformChunk::operator==(StateChunk const &other) const
{
    auto const *const chunk = dynamic_cast<TextureTransformChunk const *>(&other);
    return chunk != nullptr && getMatrix() == chunk->getMatrix();
}

void TextureTransformChunk::addTo(StateParts &parts, UInt32 slot) const
{
    parts.setTransform(checked_transform(getMatrix()), slot);
}
} // namespace OSG
