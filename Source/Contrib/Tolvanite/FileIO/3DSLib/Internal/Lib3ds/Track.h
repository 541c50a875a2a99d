#pragma once

/// \file
/// Keys over time, and the values between them.

#include <optional>
#include <vector>

#include "OSGMemManager.h"

namespace OSG::Lib3ds
{
class Chunk;

/// A value at a frame. The five numbers shape the curve around it (Kochanek, Bartels: Interpolating
/// splines with local tension, continuity, and bias control, 1984). Easing is not used.
struct Key
{
    float frame = 0; ///< a whole number in the file
    float tension = 0;
    float continuity = 0;
    float bias = 0;
    /// Three numbers. For a rotation an angle and an axis, relative to the key before.
    float value[4] = {};
};

struct Quaternion4
{
    float x = 0;
    float y = 0;
    float z = 0;
    float w = 1;
};

class Track
{
  public:
    /// Replaces the keys by those of a chunk. `numbers` is how many numbers the value of a key has.
    void read(Chunk &chunk, int numbers);

    /// The value at frame `t` of a track of three numbers. Without keys `value` does not change.
    /// Before the first key it is that of the first, and behind the last that of the last.
    void evaluate(float t, float (&value)[3]) const;
    /// The same for rotations.
    Quaternion4 rotation(float t) const;

  private:
    static constexpr unsigned Repeats = 1;
    static constexpr unsigned IsSmooth = 2; ///< the curve goes on from the last key to the first

    float wrapped(float t) const;
    /// The key at the end of the segment that `t` lies in. 0 up to the first key, the number of
    /// keys from the last key on.
    std::size_t segmentEnd(float t) const;
    /// The keys before and behind a segment. On a smooth track they are those of the round before
    /// and of the next round where the segment is the first or the last one.
    std::optional<Key> keyBefore(std::size_t end) const;
    std::optional<Key> keyBehind(std::size_t end) const;

    unsigned _flags = 0;
    std::vector<Key, MemAllocator<Key>> _keys;
};
} // namespace OSG::Lib3ds
