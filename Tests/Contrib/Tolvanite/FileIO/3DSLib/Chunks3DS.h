#pragma once

/// \file
/// Writes 3DS files for tests, chunk by chunk.

#include <bit>
#include <cstdint>
#include <string>
#include <vector>

namespace OSG::Test
{
/// Bytes that can be put together.
class Bytes
{
  public:
    Bytes &word(unsigned value)
    {
        _bytes += static_cast<char>(value & 0xFF);
        _bytes += static_cast<char>(value >> 8 & 0xFF);
        return *this;
    }
    Bytes &dword(std::uint32_t value) { return word(value & 0xFFFF).word(value >> 16); }
    Bytes &real(float value) { return dword(std::bit_cast<std::uint32_t>(value)); }
    Bytes &reals(std::vector<float> const &values)
    {
        for(float const value : values)
            real(value);
        return *this;
    }
    Bytes &text(std::string const &value) // with the NUL at its end
    {
        _bytes += value;
        _bytes += '\0';
        return *this;
    }
    Bytes &raw(std::string const &value)
    {
        _bytes += value;
        return *this;
    }

    std::string const &get() const { return _bytes; }

  private:
    std::string _bytes;
};

/// A chunk whose header may lie about its length.
inline std::string chunk_of_length(unsigned kind, std::uint32_t length, std::string const &content)
{
    return Bytes().word(kind).dword(length).raw(content).get();
}
inline std::string chunk(unsigned kind, std::string const &content = "")
{
    return chunk_of_length(kind, static_cast<std::uint32_t>(content.size() + 6), content);
}
inline std::string chunk(unsigned kind, Bytes const &bytes) { return chunk(kind, bytes.get()); }

// --- sections ---

inline std::string file_3ds(std::string const &editor, std::string const &keyframer = "")
{
    return chunk(0x4D4D, chunk(0x3D3D, editor) +
                             (keyframer.empty() ? std::string() : chunk(0xB000, keyframer)));
}

// --- meshes ---

struct Face3DS
{
    unsigned corners[3];
};

inline std::string points_3ds(std::vector<float> const &coordinates)
{
    return chunk(0x4110,
                 Bytes().word(static_cast<unsigned>(coordinates.size() / 3)).reals(coordinates));
}
inline std::string tex_coords_3ds(std::vector<float> const &values)
{
    return chunk(0x4140, Bytes().word(static_cast<unsigned>(values.size() / 2)).reals(values));
}
/// `parts` are chunks behind the list of faces.
inline std::string faces_3ds(std::vector<Face3DS> const &faces, std::string const &parts = "")
{
    Bytes bytes;
    bytes.word(static_cast<unsigned>(faces.size()));
    for(Face3DS const &face : faces)
        bytes.word(face.corners[0]).word(face.corners[1]).word(face.corners[2]).word(7);
    return chunk(0x4120, bytes.raw(parts));
}
inline std::string face_material_3ds(std::string const &name, std::vector<unsigned> const &faces)
{
    Bytes bytes;
    bytes.text(name).word(static_cast<unsigned>(faces.size()));
    for(unsigned const face : faces)
        bytes.word(face);
    return chunk(0x4130, bytes);
}
inline std::string smoothing_3ds(std::vector<std::uint32_t> const &groups)
{
    Bytes bytes;
    for(std::uint32_t const group : groups)
        bytes.dword(group);
    return chunk(0x4150, bytes);
}
/// Three axes and an origin.
inline std::string matrix_3ds(std::vector<float> const &twelve)
{
    return chunk(0x4160, Bytes().reals(twelve));
}
inline std::string mesh_3ds(std::string const &name, std::string const &parts)
{
    return chunk(0x4000, Bytes().text(name).raw(chunk(0x4100, parts)));
}
/// A triangle in the plane z = 0 with its right angle at `x`, 0, 0.
inline std::string triangle_3ds(std::string const &name, float x = 0, std::string const &parts = "",
                                std::string const &faceParts = "")
{
    return mesh_3ds(name, points_3ds({x, 0, 0, x + 1, 0, 0, x, 1, 0}) +
                              faces_3ds({{{0, 1, 2}}}, faceParts) + parts);
}

// --- materials ---

inline std::string percent_3ds(unsigned kind, int value)
{
    return chunk(kind, chunk(0x0030, Bytes().word(static_cast<unsigned>(value) & 0xFFFF)));
}
inline std::string color_3ds(unsigned kind, std::vector<float> const &color)
{
    return chunk(kind, chunk(0x0010, Bytes().reals(color)));
}
/// `flags` below 0 leaves the chunk of the flags out.
inline std::string map_3ds(unsigned kind, std::string const &name, int flags = -1)
{
    return chunk(kind,
                 chunk(0xA300, Bytes().text(name)) +
                     (flags < 0 ? std::string() : chunk(0xA351, Bytes().word(unsigned(flags)))));
}
inline std::string material_3ds(std::string const &name, std::string const &parts = "")
{
    return chunk(0xAFFF, chunk(0xA000, Bytes().text(name)) + parts);
}

// --- nodes ---

constexpr unsigned NoParent3DS = 65535;

inline std::string header_3ds(std::string const &name, unsigned parent)
{
    return chunk(0xB010, Bytes().text(name).word(0).word(0).word(parent));
}
inline std::string id_3ds(unsigned id) { return chunk(0xB030, Bytes().word(id)); }
inline std::string instance_3ds(unsigned id, std::string const &mesh, unsigned parent,
                                std::string const &parts = "")
{
    return chunk(0xB002, id_3ds(id) + header_3ds(mesh, parent) + parts);
}
inline std::string camera_3ds(unsigned id, std::string const &name, unsigned parent,
                              std::string const &parts = "")
{
    return chunk(0xB003, id_3ds(id) + header_3ds(name, parent) + parts);
}
inline std::string pivot_3ds(std::vector<float> const &pivot)
{
    return chunk(0xB013, Bytes().reals(pivot));
}

struct Key3DS
{
    std::uint32_t frame;
    std::vector<float> value;
    unsigned flags = 0;
    std::vector<float> shape = {}; ///< the numbers that the flags announce
};
/// `kind` is 0xB020 for positions, 0xB021 for rotations, 0xB022 for scales.
inline std::string track_3ds(unsigned kind, std::vector<Key3DS> const &keys, unsigned flags = 0)
{
    Bytes bytes;
    bytes.word(flags).dword(0).dword(0).dword(static_cast<std::uint32_t>(keys.size()));
    for(Key3DS const &key : keys)
        bytes.dword(key.frame).word(key.flags).reals(key.shape).reals(key.value);
    return chunk(kind, bytes);
}
} // namespace OSG::Test
