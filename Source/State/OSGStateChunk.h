#pragma once

#include "OSGStateChunkBase.h"

namespace OSG
{
class DrawEnv;
class StateChunkClass;
class StateParts;

/// A part of the graphics state in which geometry is drawn.
///
/// activate, changeFrom, deactivate and updateObjectDependencies call OpenGL. They want a current
/// context that is none of those that gl_refusal() names. `index` is the slot of the chunk among
/// those of its class, as the texture unit of a texture.
class OSG_STATE_API StateChunk : public StateChunkBase
{
  public:
    static constexpr Replaced Replaces = Replaced::InitMethod;

    // --- virtual operations, in slot order ---
    virtual StateChunkClass const *getClass() const = 0;
    /// The number of the class's first slot, which orders chunks of one material.
    virtual UInt32 getChunkId() const;
    /// Brings the context into the state that the chunk says.
    virtual void activate(DrawEnv *env, UInt32 index = 0);
    /// From the state of `old`, which is active in the same slot, to that of this chunk.
    virtual void changeFrom(DrawEnv *env, StateChunk *old, UInt32 index = 0);
    /// Back to the state without the chunk.
    virtual void deactivate(DrawEnv *env, UInt32 index = 0);
    /// Whether what is drawn with the chunk comes after everything opaque.
    virtual bool isTransparent() const;
    /// Makes the OpenGL objects that the chunk wants, where they are missing or out of date.
    virtual void updateObjectDependencies(DrawEnv *env, UInt32 index = 0);
    /// What the change to `chunk` costs; 0 where nothing has to be done.
    virtual Real32 switchCost(StateChunk *chunk);
    /// An order of chunks; by address where a class has no better one.
    virtual bool operator<(StateChunk const &other) const;
    /// Whether both lead to the same state.
    virtual bool operator==(StateChunk const &other) const;
    virtual bool operator!=(StateChunk const &other) const;

    /// Says in `parts` what the chunk means in slot `slot` of a material. This class adds the chunk
    /// itself, which is then activated whenever something is drawn with the material. Chunks that
    /// are plain values add these.
    virtual void addTo(StateParts &parts, UInt32 slot) const;

    void changed(BitVector whichField, UInt32 origin, BitVector details) override;
    /// Where `parent` is a ChunkMaterial, adds this to its chunks in the first free slot.
    bool linkParent(FieldContainer *parent, UInt16 fieldId) override;

  protected:
    StateChunk() = default;
    StateChunk(StateChunk const &) = default;
    ~StateChunk() override;

    static void initMethod(TypeBase::InitPhase phase);

    friend Pattern;
};
} // namespace OSG
