#pragma once

/// \file
/// The height field that selections are measured on, and the boxes that select in it, as plain
/// numbers for both contenders.

#include <cmath>
#include <cstdint>
#include <vector>

namespace OSG::Bench
{
/// A square of `side` by `side` cells from -1 to 1 in x and y, two triangles a cell, hills of 0.1.
struct Terrain
{
    std::vector<float> positions;         ///< 3 numbers each
    std::vector<std::uint32_t> triangles; ///< 3 indices each

    explicit Terrain(std::uint32_t side)
    {
        float const step = 2.f / static_cast<float>(side);
        for(std::uint32_t y = 0; y <= side; ++y)
        {
            for(std::uint32_t x = 0; x <= side; ++x)
            {
                float const px = -1.f + step * static_cast<float>(x);
                float const py = -1.f + step * static_cast<float>(y);
                positions.insert(positions.end(),
                                 {px, py, 0.1f * std::sin(9.f * px) * std::cos(7.f * py)});
            }
        }
        for(std::uint32_t y = 0; y < side; ++y)
        {
            for(std::uint32_t x = 0; x < side; ++x)
            {
                std::uint32_t const a = y * (side + 1) + x;
                std::uint32_t const b = a + side + 1;
                triangles.insert(triangles.end(), {a, a + 1, b + 1, a, b + 1, b});
            }
        }
    }
};

/// A box around (0.13, 0.21), `half` to each side in x and y, from z = 1 (near) down to -1.
struct PickBox
{
    float half;
    float left() const { return 0.13f - half; }
    float right() const { return 0.13f + half; }
    float bottom() const { return 0.21f - half; }
    float top() const { return 0.21f + half; }
};
} // namespace OSG::Bench
