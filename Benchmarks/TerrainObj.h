#pragma once

/// \file
/// Makes scene files of any size for benchmarks and tests.

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <string>

namespace OSG::Bench
{
/// The form of the corners of a face.
enum class TerrainCorners
{
    Positions, ///< 7
    Full,      ///< 7/7/7
    Separate,  ///< 7/3/9: texture coordinates and normals in other orders, one for each position
    Faceted    ///< 7/3/9: texture coordinates in another order, a normal for each face
};

/// A square height field of about `triangles` triangles as OBJ text. Positions, texture coordinates
/// and normals have six digits after the point, as modelling programs write them. A face line per
/// triangle follows. The same arguments give the same text on every machine.
inline std::string terrain_obj(std::uint32_t triangles, TerrainCorners corners)
{
    std::uint32_t const cells = static_cast<std::uint32_t>(std::lround(std::sqrt(triangles / 2.0)));
    std::uint32_t const side = cells + 1;
    std::string text = "# terrain\no terrain\n";
    char line[160];
    // Integer arithmetic that wraps around at 2^32, because sines differ between C libraries.
    auto const height = [](std::uint32_t x, std::uint32_t y)
    { return ((x * 2654435761u + y * 2246822519u) >> 12) * 1e-5; };
    for(std::uint32_t y = 0; y < side; ++y)
    {
        for(std::uint32_t x = 0; x < side; ++x)
        {
            std::snprintf(line, sizeof line, "v %.6f %.6f %.6f\n", x * 0.25, height(x, y),
                          y * -0.25);
            text += line;
        }
    }
    for(std::uint32_t i = 0; corners != TerrainCorners::Positions && i < side * side; ++i)
    {
        std::uint32_t const row = i / side;
        std::snprintf(line, sizeof line, "vt %.6f %.6f\n", i % side / double(cells),
                      row / double(cells));
        text += line;
    }
    for(std::uint32_t i = 0; corners != TerrainCorners::Positions && i < side * side; ++i)
    {
        double const tilt = height(i % side, i / side) * 0.01;
        std::snprintf(line, sizeof line, "vn %.6f %.6f %.6f\n", tilt, 1 - tilt, tilt - 0.5);
        text += line;
    }
    std::uint32_t normal = 0;
    std::uint32_t const count = side * side;
    auto const separate = [&](std::uint32_t a)
    {
        std::snprintf(line, sizeof line, " %u/%u/%u", a, count + 1 - a,
                      a + side <= count ? a + side : a + side - count);
        text += line;
    };
    auto const face = [&](std::uint32_t a, std::uint32_t b, std::uint32_t c)
    {
        normal = normal == count ? 1 : normal + 1;
        if(corners == TerrainCorners::Separate)
        {
            text += 'f';
            separate(a);
            separate(b);
            separate(c);
            text += '\n';
            return;
        }
        if(corners == TerrainCorners::Full)
            std::snprintf(line, sizeof line, "f %u/%u/%u %u/%u/%u %u/%u/%u\n", a, a, a, b, b, b, c,
                          c, c);
        else if(corners == TerrainCorners::Faceted)
            std::snprintf(line, sizeof line, "f %u/%u/%u %u/%u/%u %u/%u/%u\n", a, count + 1 - a,
                          normal, b, count + 1 - b, normal, c, count + 1 - c, normal);
        else
            std::snprintf(line, sizeof line, "f %u %u %u\n", a, b, c);
        text += line;
    };
    for(std::uint32_t y = 0; y < cells; ++y)
    {
        for(std::uint32_t x = 0; x < cells; ++x)
        {
            std::uint32_t const corner = y * side + x + 1;
            face(corner, corner + 1, corner + side);
            face(corner + 1, corner + side + 1, corner + side);
        }
    }
    return text;
}
} // namespace OSG::Bench
