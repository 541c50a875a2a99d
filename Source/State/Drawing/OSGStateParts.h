#pragma once

#include <algorithm>
#include <utility>
#include <vector>

#include "OSGDrawState.h"

namespace OSG
{
/// What materials amount to, by kind and slot, before it is known which part drives which texture
/// unit. A part replaces an earlier one of its kind and slot, so that a material which is added
/// after another one overrides it where both say something and joins it elsewhere.
class OSG_STATE_API StateParts
{
  public:
    void setSurface(SurfaceValues const &surface, UInt32 slot) { put(_surfaces, surface, slot); }
    void setBlend(BlendValues const &blend, UInt32 slot) { put(_blends, blend, slot); }
    /// Environment and transform are parts of their own; those in `texture` are not read.
    void setTexture(TextureValues const &texture, UInt32 slot) { put(_textures, texture, slot); }
    void setEnvironment(UInt32 mode, UInt32 slot) { put(_environments, mode, slot); }
    void setTransform(Matrix const &matrix, UInt32 slot) { put(_transforms, matrix, slot); }
    /// A slot beyond those of the chunk's class has no effect. The chunk is not counted.
    void setChunk(StateChunk &chunk, UInt32 slot);

    /// The state that all parts make together. Textures drive the units 0, 1, ... in the order of
    /// their slots; the environments do so among themselves, and the transforms.
    DrawState resolve() const;

  private:
    template <class Value>
    using Slots = std::vector<std::pair<UInt32, Value>>; // in ascending order

    template <class Value>
    static void put(Slots<Value> &list, Value const &value, UInt32 slot)
    {
        auto const at =
            std::lower_bound(list.begin(), list.end(), slot,
                             [](auto const &entry, UInt32 wanted) { return entry.first < wanted; });
        if(at != list.end() && at->first == slot)
            at->second = value;
        else
            list.insert(at, {slot, value});
    }

    std::vector<TextureValues> resolveTextures() const;

    Slots<SurfaceValues> _surfaces;
    Slots<BlendValues> _blends;
    Slots<TextureValues> _textures;
    Slots<UInt32> _environments;
    Slots<Matrix> _transforms;
    Slots<ActiveChunk> _chunks; // by number of the slot, over the slots of all classes
};
} // namespace OSG
