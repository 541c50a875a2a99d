#include "OSGStateChunk.h"

#include <functional>

#include "OSGChunkMaterial.h"
#include "OSGDrawEpochs.h"
#include "OSGStateChunkClass.h"
#include "OSGStateParts.h"

namespace OSG
{
StateChunk::~StateChunk() = default;

void StateChunk::changed(BitVector whichField, UInt32 origin, BitVector details)
{
    DrawEpochs::noteMaterial();
    StateChunkBase::changed(whichField, origin, details);
}

void StateChunk::initMethod(TypeBase::InitPhase phase)
{
    StateChunkBase::initMethod(phase);
    if(phase == TypeBase::SystemPost)
        DrawEpochs::registerKind(getClassType(), DrawEpochs::Kind::Material);
}

bool StateChunk::linkParent(FieldContainer *parent, UInt16 fieldId)
{
    auto *const material =
        fieldId == ChunkMaterial::ChunksFieldId ? dynamic_cast<ChunkMaterial *>(parent) : nullptr;
    return material != nullptr ? material->addChunk(this)
                               : StateChunkBase::linkParent(parent, fieldId);
}

UInt32 StateChunk::getChunkId() const { return getClass()->getId(); }

void StateChunk::activate(DrawEnv *, UInt32) {}

void StateChunk::changeFrom(DrawEnv *env, StateChunk *old, UInt32 index)
{
    if(old == this)
        return;
    if(old != nullptr)
        old->deactivate(env, index);
    activate(env, index);
}

void StateChunk::deactivate(DrawEnv *, UInt32) {}
bool StateChunk::isTransparent() const { return false; }
void StateChunk::updateObjectDependencies(DrawEnv *, UInt32) {}
Real32 StateChunk::switchCost(StateChunk *chunk)
{
    return chunk != nullptr && *this == *chunk ? 0.f : 1.f;
}

bool StateChunk::operator<(StateChunk const &other) const { return std::less<>()(this, &other); }
bool StateChunk::operator==(StateChunk const &other) const { return this == &other; }
bool StateChunk::operator!=(StateChunk const &other) const { return !(*this == other); }

void StateChunk::addTo(StateParts &parts, UInt32 slot) const
{
    parts.setChunk(const_cast<StateChunk &>(*this), slot);
}
} // namespace OSG
