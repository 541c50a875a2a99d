#include "OSGTextureEnvChunk.h"

#include <epoxy/gl.h>

#include "OSGCheckedState.h"
#include "OSGChunkCalls.h"
#include "OSGStateParts.h"

namespace OSG
{
StateChunkClass TextureEnvChunk::_class("TextureEnv", TextureSlots);

TextureEnvChunk::~TextureEnvChunk() = default;

StateChunkClass const *TextureEnvChunk::getClass() const { return &_class; }

UInt32 TextureEnvChunk::getCheckedMode() const { return checked_environment(getEnvMode()); }

// --- the context ---

void set_environment(UInt32 mode)
{
    glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, static_cast<GLint>(mode));
}

void TextureEnvChunk::activate(DrawEnv *, UInt32 index)
{
    glActiveTexture(GL_TEXTURE0 + index);
    set_environment(getCheckedMode());
}

void TextureEnvChunk::deactivate(DrawEnv *, UInt32 index)
{
    glActiveTexture(GL_TEXTURE0 + index);
    set_environment(GLName::Modulate);
}

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
