#include "OSGBlendChunk.h"

#include <epoxy/gl.h>

#include "OSGCheckedState.h"
#include "OSGChunkCalls.h"
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

// --- the context ---

void set_blend(BlendValues const &blend)
{
    constexpr GLclampf LeastAlpha = 0.5f;
    if(blend.isOn)
    {
        glBlendFunc(blend.srcFactor, blend.destFactor);
        glEnable(GL_BLEND);
    }
    else
        glDisable(GL_BLEND);
    if(blend.dropsLowAlpha)
    {
        glAlphaFunc(GL_GEQUAL, LeastAlpha);
        glEnable(GL_ALPHA_TEST);
    }
    else
        glDisable(GL_ALPHA_TEST);
}

void BlendChunk::activate(DrawEnv *, UInt32) { set_blend(getBlend()); }
void BlendChunk::deactivate(DrawEnv *, UInt32) { set_blend(BlendValues()); }

bool BlendChunk::isTransparent() const { return true; }

bool BlendChunk::operator==(StateChunk const &other) const
{
    auto const *const chunk = dynamic_cast<BlendChunk const *>(&other);
    return chunk != nullptr && (chunk == this || getBlend() == chunk->getBlend());
}

void BlendChunk::addTo(StateParts &parts, UInt32 slot) const { parts.setBlend(getBlend(), slot); }
} // namespace OSG
