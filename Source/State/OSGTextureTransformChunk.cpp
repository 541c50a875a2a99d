#include "OSGTextureTransformChunk.h"

#include "OSGCheckedState.h"
#include "OSGStateParts.h"

namespace OSG
{
StateChunkClass TextureTransformChunk::_class("TextureTransform", TextureSlots);

TextureTransformChunk::~TextureTransformChunk() = default;

StateChunkClass const *TextureTransformChunk::getClass() const { return &_class; }

void TextureTransformChunk::activate(DrawEnv *, UInt32) {}
void TextureTransformChunk::deactivate(DrawEnv *, UInt32) {}

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
