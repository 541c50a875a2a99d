#include "Track.h"

#include <algorithm>
#include <cmath>

#include "ChunkReader.h"

namespace OSG::Lib3ds
{
// --- reading ---

namespace
{
constexpr std::size_t SmallestKey = 6; // frame and flags

void read_key(Chunk &chunk, int numbers, Key &key)
{
    key.frame = static_cast<float>(static_cast<std::int32_t>(chunk.dword()));
    unsigned const flags = chunk.word();
    float unused = 0; // easing to and from
    float *const shapes[] = {&key.tension, &key.continuity, &key.bias, &unused, &unused};
    for(unsigned i = 0; i < 5; ++i)
    {
        if((flags >> i & 1) != 0)
            *shapes[i] = chunk.real();
    }
    chunk.reals(key.value, static_cast<std::size_t>(numbers));
}
} // namespace

void Track::read(Chunk &chunk, int numbers)
{
    _flags = chunk.word();
    chunk.dword(); // two unused words
    chunk.dword();
    std::uint32_t const count = chunk.dword();
    chunk.require(count, SmallestKey + 4 * static_cast<std::size_t>(numbers));
    _keys.clear();
    _keys.resize(count);
    for(Key &key : _keys)
        read_key(chunk, numbers, key);
}

// --- time ---

float Track::wrapped(float t) const
{
    float const first = _keys.front().frame;
    float const length = _keys.back().frame - first;
    return (_flags & Repeats) != 0 && length != 0.f ? std::fmod(t - first, length) + first : t;
}

std::size_t Track::segmentEnd(float t) const
{
    if(t <= _keys.front().frame)
        return 0;
    if(t >= _keys.back().frame)
        return _keys.size();
    std::size_t end = 1;
    while(t > _keys[end].frame)
        ++end;
    return end;
}

std::optional<Key> Track::keyBefore(std::size_t end) const
{
    if(end >= 2)
        return _keys[end - 2];
    if((_flags & IsSmooth) == 0)
        return std::nullopt;
    Key key = _keys[_keys.size() - 2];
    key.frame -= _keys.back().frame - _keys.front().frame;
    return key;
}

std::optional<Key> Track::keyBehind(std::size_t end) const
{
    if(end + 1 < _keys.size())
        return _keys[end + 1];
    if((_flags & IsSmooth) == 0)
        return std::nullopt;
    Key key = _keys[1];
    key.frame += _keys.back().frame - _keys.front().frame;
    return key;
}

namespace
{
/// How much the differences to the key before and to the key behind count in the tangents of a key.
struct Weights
{
    float before;
    float behind;
};
struct TangentWeights
{
    Weights incoming;
    Weights outgoing;
};

/// `before` and `behind` are numbers of frames. Keys at unequal distances change their weights.
TangentWeights weights_of(Key const &key, float before, float behind)
{
    float const mean = 0.5f * (before + behind);
    float const sharpness = std::abs(key.continuity);
    auto const adjusted = [&](float frames)
    {
        float const share = mean != 0.f ? frames / mean : 1.f;
        return share + sharpness - sharpness * share;
    };
    float const loose = 0.5f * (1.f - key.tension);
    float const early = (1.f + key.bias) * adjusted(before);
    float const late = (1.f - key.bias) * adjusted(behind);
    float const minus = loose * (1.f - key.continuity);
    float const plus = loose * (1.f + key.continuity);
    return {{minus * early, plus * late}, {plus * early, minus * late}};
}

float frames_between(Key const &a, Key const &b) { return b.frame - a.frame; }

/// A tangent of component `i` at a key. A neighbour that is not there does not count.
float tangent(std::optional<Key> const &before, Key const &key, std::optional<Key> const &behind,
              int i, Weights TangentWeights::*side)
{
    float const from = before ? key.value[i] - before->value[i] : 0.f;
    float const to = behind ? behind->value[i] - key.value[i] : 0.f;
    if(!before || !behind)
        return from + to;
    Weights const weights =
        weights_of(key, frames_between(*before, key), frames_between(key, *behind)).*side;
    return weights.before * from + weights.behind * to;
}

/// Hermite's cubic curve.
float cubic(float a, float tangentA, float tangentB, float b, float u)
{
    float const x = 2 * u * u * u - 3 * u * u + 1;
    float const y = -2 * u * u * u + 3 * u * u;
    float const z = u * u * u - 2 * u * u + u;
    float const w = u * u * u - u * u;
    return x * a + y * b + z * tangentA + w * tangentB;
}
} // namespace

void Track::evaluate(float t, float (&value)[3]) const
{
    if(_keys.empty())
        return;
    float const at = wrapped(t);
    std::size_t const end = segmentEnd(at);
    if(end == 0 || end == _keys.size())
    {
        std::copy_n((end == 0 ? _keys.front() : _keys.back()).value, 3, value);
        return;
    }
    Key const &a = _keys[end - 1];
    Key const &b = _keys[end];
    std::optional<Key> const before = keyBefore(end);
    std::optional<Key> const behind = keyBehind(end);
    float const u = (at - a.frame) / frames_between(a, b);
    for(int i = 0; i < 3; ++i)
        value[i] = cubic(a.value[i], tangent(before, a, b, i, &TangentWeights::outgoing),
                         tangent(a, b, behind, i, &TangentWeights::incoming), b.value[i], u);
}

// --- rotations ---

namespace
{
/// The rotation of a key relative to the key before. The file turns the other way round than
/// quaternions do.
Quaternion4 relative_rotation(Key const &key)
{
    float const angle = key.value[0];
    float const *const axis = key.value + 1;
    float const length = std::sqrt(axis[0] * axis[0] + axis[1] * axis[1] + axis[2] * axis[2]);
    if(length < 1e-5f)
        return {};
    float const factor = -std::sin(angle / 2) / length;
    return {axis[0] * factor, axis[1] * factor, axis[2] * factor, std::cos(angle / 2)};
}

/// First b, then a.
Quaternion4 operator*(Quaternion4 const &a, Quaternion4 const &b)
{
    return {a.w * b.x + a.x * b.w + a.y * b.z - a.z * b.y,
            a.w * b.y + a.y * b.w + a.z * b.x - a.x * b.z,
            a.w * b.z + a.z * b.w + a.x * b.y - a.y * b.x,
            a.w * b.w - a.x * b.x - a.y * b.y - a.z * b.z};
}

float dot(Quaternion4 const &a, Quaternion4 const &b)
{
    return a.x * b.x + a.y * b.y + a.z * b.z + a.w * b.w;
}

Quaternion4 conjugate(Quaternion4 const &q) { return {-q.x, -q.y, -q.z, q.w}; }

/// The vector part of the logarithm of a unit quaternion.
Quaternion4 logarithm(Quaternion4 const &q)
{
    float const sine = std::sqrt(q.x * q.x + q.y * q.y + q.z * q.z);
    float const factor = sine > 1e-5f ? std::atan2(sine, q.w) / sine : 0.f;
    return {q.x * factor, q.y * factor, q.z * factor, 0.f};
}

Quaternion4 exponential(Quaternion4 const &q)
{
    float const angle = std::sqrt(q.x * q.x + q.y * q.y + q.z * q.z);
    float const factor = angle > 1e-5f ? std::sin(angle) / angle : 1.f;
    return {q.x * factor, q.y * factor, q.z * factor, std::cos(angle)};
}

Quaternion4 sum(Quaternion4 const &a, float weightA, Quaternion4 const &b, float weightB)
{
    return {a.x * weightA + b.x * weightB, a.y * weightA + b.y * weightB,
            a.z * weightA + b.z * weightB, a.w * weightA + b.w * weightB};
}

/// Takes the shorter way.
Quaternion4 slerp(Quaternion4 const &a, Quaternion4 const &b, float u)
{
    float const cosine = dot(a, b);
    float const sign = cosine < 0.f ? -1.f : 1.f;
    float const angle = std::acos(std::min(std::abs(cosine), 1.f));
    float const sine = std::sin(angle);
    if(!(sine > 1e-5f))
        return sum(a, 1.f - u, b, u * sign);
    return sum(a, std::sin((1.f - u) * angle) / sine, b, std::sin(u * angle) / sine * sign);
}

/// A control point beside the rotation `at` of a key whose neighbours both exist.
Quaternion4 control_point(Quaternion4 const &before, Quaternion4 const &at,
                          Quaternion4 const &behind, Weights const &weights)
{
    Quaternion4 const inverse = conjugate(at);
    return at * exponential(sum(logarithm(inverse * before), -0.5f * weights.before,
                                logarithm(inverse * behind), -0.5f * weights.behind));
}
} // namespace

// The curve between two rotations is the one of Shoemake (Quaternion calculus and fast animation,
// 1987).
Quaternion4 Track::rotation(float t) const
{
    if(_keys.empty())
        return {};
    float const at = wrapped(t);
    std::size_t const end = segmentEnd(at);
    Quaternion4 a;
    Quaternion4 b = relative_rotation(_keys.front());
    for(std::size_t i = 1; i < _keys.size() && i <= end; ++i)
    {
        a = b;
        b = relative_rotation(_keys[i]) * b;
    }
    if(end == 0 || end == _keys.size())
        return b;
    Key const &keyA = _keys[end - 1];
    Key const &keyB = _keys[end];
    Quaternion4 controlA = a;
    Quaternion4 controlB = b;
    float const length = frames_between(keyA, keyB);
    if(std::optional<Key> const before = keyBefore(end))
        controlA = control_point(conjugate(relative_rotation(keyA)) * a, a, b,
                                 weights_of(keyA, frames_between(*before, keyA), length).outgoing);
    if(std::optional<Key> const behind = keyBehind(end))
        controlB = control_point(a, b, relative_rotation(*behind) * b,
                                 weights_of(keyB, length, frames_between(keyB, *behind)).incoming);
    float const u = (at - keyA.frame) / length;
    return slerp(slerp(a, b, u), slerp(controlA, controlB, u), 2 * u * (1 - u));
}
} // namespace OSG::Lib3ds
