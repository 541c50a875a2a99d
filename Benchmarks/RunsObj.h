#pragma once

#include <cstdint>
#include <cstdio>
#include <string>

namespace OSG::Bench
{
/// Number of materials that runs_obj() uses: "m0", "m1" and so on.
constexpr std::uint32_t RunsObjMaterials = 64;

/// OBJ text of small material runs, as programs write it that export one object after the other. A
/// run has vertices of its own, and about 24 polygons of three to six corners with three different
/// numbers each. `library` is named in the first line. The same arguments give the same text on
/// every machine.
inline std::string runs_obj(std::uint32_t runs, char const *library)
{
    constexpr std::uint32_t Vertices = 28;
    constexpr std::uint32_t Faces = 24;
    std::string text = std::string("mtllib ") + library + '\n';
    char line[160];
    std::uint32_t random = 1;
    auto const next = [&random]
    {
        random = random * 1664525u + 1013904223u; // Numerical Recipes
        return random >> 12;
    };
    auto const number = [&next] { return next() * 1e-4; };
    for(std::uint32_t run = 0; run < runs; ++run)
    {
        for(std::uint32_t i = 0; i < Vertices; ++i)
        {
            std::snprintf(line, sizeof line, "v %.6f %.6f %.6f\n", number(), number(), -number());
            text += line;
        }
        for(std::uint32_t i = 0; i < Vertices; ++i)
        {
            std::snprintf(line, sizeof line, "vt %.6f %.6f\n", number() * 0.01, number() * 0.01);
            text += line;
        }
        for(std::uint32_t i = 0; i < Vertices; ++i)
        {
            std::snprintf(line, sizeof line, "vn %.6f %.6f %.6f\n", number() * 0.01,
                          number() * -0.01, 0.5);
            text += line;
        }
        std::snprintf(line, sizeof line, "g run%u\nusemtl m%u\n", run, run % RunsObjMaterials);
        text += line;
        std::uint32_t const before = run * Vertices;
        for(std::uint32_t face = 0; face < Faces; ++face)
        {
            text += 'f';
            for(std::uint32_t corners = 3 + next() % 4, i = 0; i < corners; ++i)
            {
                std::uint32_t const at = (face + i * 5) % Vertices;
                std::snprintf(line, sizeof line, " %u/%u/%u", before + at + 1,
                              before + (at + face) % Vertices + 1,
                              before + (at * 3) % Vertices + 1);
                text += line;
            }
            text += '\n';
        }
    }
    return text;
}

/// The library that the text names.
inline std::string runs_mtl()
{
    std::string text;
    for(std::uint32_t i = 0; i < RunsObjMaterials; ++i)
        text += "newmtl m" + std::to_string(i) + "\nKd 0.5 0.25 " + std::to_string(i % 10) + "\n";
    return text;
}
} // namespace OSG::Bench
