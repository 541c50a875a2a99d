#include "OSGBlendChunk.h"

#include "OSGCheckedState.h"
#include "OSGStateParts.h"

namespace OSG
{
StateChunkClass BlendChunk::_class("Blend");

BlendChunk::~BlendChunk() = default;

StateChunkClass const *BlendChunk::getClass() const { return &_class; }

BlendValues BlendChunk::getBlend() const
{
    BlendValues blend;
    blend.isOn = true;
    blend.srcFactor = getSrcFactor();
    blend.destFactor = getDestFactor();
    return checked_blend(blend);
}

void BlendChunk::activate(DrawEnv *, UInt32) {}
void BlendChunk::deactivate(DrawEnv *, UInt32) {}

bool BlendChunk::isTransparent() const { return true; }

bool BlendChunk::operator==(StateChunk const &other) const
{
    auto const *const chunk = dynamic_cast<BlendChunk const *>(&other);
    return chunk != nullptr && (chunk == this || getBlend() == chunk->getBlend());
}

void BlendChunk::addTo(StateParts &parts, UInt32 slot) const { parts.setBlend(getBlend(), slot); }
} // namespace OSG
