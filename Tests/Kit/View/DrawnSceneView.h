#pragma once

/// \file
/// A view of a scene whose pixels tests look at.

#include <algorithm>
#include <array>

#include <gtest/gtest.h>

#include "GeometryBuilders.h"
#include "NeedsContext.h"
#include "OSGGLObjectStore.h"
#include "OSGOffscreenContext.h"
#include "OSGSceneView.h"
#include "OSGSimpleMaterial.h"
#include "SceneBuilders.h"

namespace OSG::Test
{
using Rgb = std::array<int, 3>;

inline Rgb const White{255, 255, 255};
inline Rgb const Black{0, 0, 0};
inline Rgb const Red{255, 0, 0};
inline Rgb const Green{0, 255, 0};
inline Rgb const Blue{0, 0, 255};

inline UnrecordedRefPtr<SimpleMaterial> unlit(Rgb const &color)
{
    UnrecordedRefPtr<SimpleMaterial> material(SimpleMaterial::create());
    material->setDiffuse(Color3f(static_cast<Real32>(color[0]) / 255,
                                 static_cast<Real32>(color[1]) / 255,
                                 static_cast<Real32>(color[2]) / 255));
    material->setLit(false);
    return material;
}

inline NodePtr make_shape(GeometryParts const &parts, Material *material)
{
    GeometryPtr const geometry = make_geometry(parts);
    geometry->setMaterial(material);
    return make_node(geometry);
}

/// A square of side 2 * `half` about (x, y, z), which looks along z.
inline NodePtr make_square(Rgb const &color, Real32 half, Pnt3f const &middle = Pnt3f(0, 0, 0))
{
    auto const corner = [&](Real32 x, Real32 y) { return middle + Vec3f(x, y, 0); };
    return make_shape(one_primitive(QuadsPrimitive, {corner(-half, -half), corner(half, -half),
                                                     corner(half, half), corner(-half, half)}),
                      unlit(color));
}

/// A picture of 64 by 64 pixels on white. Without perspective one unit is one pixel, and the middle
/// of pixel (32, 31) lies at (0.5, 0.5, z).
class DrawnSceneView : public testing::Test
{
  protected:
    static constexpr UInt32 Side = 64;

    void SetUp() override
    {
        OSG_NEEDS_CONTEXT(_context);
        ASSERT_TRUE(_context.makeCurrent());
        view.setSize(Side, Side);
        view.setView({{0, 0, 100}, {0, 0, 0}, {0, 1, 0}, 45, Side, Side, Real32(Side)});
    }
    void TearDown() override
    {
        if(!_context.missing().empty())
            return;
        GLObjectStore::releaseCurrent();
        _context.release();
    }

    void draw()
    {
        view.draw();
        _pixels = _context.readPixels();
    }
    /// Of the last picture, counted from the left top corner.
    Rgb pixel(UInt32 x, UInt32 y) const
    {
        UInt8 const *const at = _pixels.data() + (std::size_t(y) * Side + x) * 3;
        return {at[0], at[1], at[2]};
    }
    /// The pixel in whose middle the view without perspective shows (x + 0.5, y + 0.5, z).
    Rgb at(int x, int y) const
    {
        return pixel(static_cast<UInt32>(32 + x), static_cast<UInt32>(31 - y));
    }
    std::size_t count(Rgb const &color) const
    {
        std::size_t result = 0;
        for(std::size_t i = 0; i < _pixels.size(); i += 3)
            result += Rgb{_pixels[i], _pixels[i + 1], _pixels[i + 2]} == color ? 1 : 0;
        return result;
    }
    std::vector<UInt8> const &pixels() const { return _pixels; }
    OffscreenContext &context() { return _context; }

    SceneView view;

  private:
    OffscreenContext _context{Side, Side};
    std::vector<UInt8> _pixels;
};
} // namespace OSG::Test
