#include "OSGTextureEnvChunk.h"

#include "OSGCheckedState.h"
#include "OSGStateParts.h"

namespace OSG
{
StateChunkClass TextureEnvChunk::_class("TextureEnv", TextureSlots);

TextureEnvChunk::~TextureEnvChunk() = default;

StateChunkClass const *TextureEnvChunk::getClass() const { return &_class; }

UInt32 TextureEnvChunk::getCheckedMode() const { return checked_environment(getEnvMode()); }

void TextureEnvChunk::activate(DrawEnv *, UInt32) {}
void TextureEnvChunk::deactivate(DrawEnv *, UInt32) {}

bool TextureEnvChunk::operator==(StateChunk const &other) const
{
    auto const *const chunk = dynamic_cast<TextureEnvChunk const *>(&other);
    return chunk != nullptr && getCheckedMode() == chunk->getCheckedMode();
}

void TextureEnvChunk::addTo(StateParts &parts, UInt32 slot) const
{
    parts.setEnvironment(getCheckedMode(), slot);
}
} // namespace OSG
