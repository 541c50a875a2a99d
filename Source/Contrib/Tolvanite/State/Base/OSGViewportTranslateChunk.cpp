#include "OSGViewportTranslateChunk.h"

#include <functional>

#include <epoxy/gl.h>

namespace OSG
{
namespace
{
// Sums wrap around; OpenGL itself refuses what is no size.
Int32 sum(Int32 a, Int32 b) { return static_cast<Int32>(UInt32(a) + UInt32(b)); }
Int32 negative(Int32 a) { return static_cast<Int32>(0 - UInt32(a)); }

void shift_viewport(Int32 x, Int32 y)
{
    Int32 viewport[4] = {};
    glGetIntegerv(GL_VIEWPORT, viewport);
    glViewport(sum(viewport[0], x), sum(viewport[1], y), sum(viewport[2], x), sum(viewport[3], y));
}
} // namespace

ViewportTranslateChunk::~ViewportTranslateChunk() = default;

StateChunkClass const *ViewportTranslateChunk::getClass() const { return &_class; }

void ViewportTranslateChunk::activate(DrawEnv *, UInt32)
{
    shift_viewport(getOffsetX(), getOffsetY());
}

void ViewportTranslateChunk::changeFrom(DrawEnv *env, StateChunk *old, UInt32 index)
{
    old->deactivate(env, index);
    activate(env, index);
}

void ViewportTranslateChunk::deactivate(DrawEnv *, UInt32)
{
    shift_viewport(negative(getOffsetX()), negative(getOffsetY()));
}

Real32 ViewportTranslateChunk::switchCost(StateChunk *) { return 0; }

bool ViewportTranslateChunk::operator<(StateChunk const &other) const
{
    return std::less<StateChunk const *>()(this, &other);
}

bool ViewportTranslateChunk::operator==(StateChunk const &other) const
{
    auto const *const chunk = dynamic_cast<ViewportTranslateChunk const *>(&other);
    if(chunk == nullptr)
        return false;
    return chunk == this ||
           (chunk->getOffsetX() == getOffsetX() && chunk->getOffsetY() == getOffsetY());
}

bool ViewportTranslateChunk::operator!=(StateChunk const &other) const { return !(*this == other); }
} // namespace OSG
