#include "OSGStateChunk.h"

#include "OSGChunkMaterial.h"

namespace OSG
{
StateChunk::~StateChunk() = default;

bool StateChunk::linkParent(FieldContainer *parent, UInt16 fieldId)
{
    auto *const material =
        fieldId == ChunkMaterial::ChunksFieldId ? dynamic_cast<ChunkMaterial *>(parent) : nullptr;
    return material != nullptr ? material->addChunk(this)
                               : StateChunkBase::linkParent(parent, fieldId);
}
} // namespace OSG
