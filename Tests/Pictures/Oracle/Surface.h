#pragma once

/// \file
/// What a material amounts to when a triangle is drawn.

#include <map>
#include <vector>

#include "OSGImage.h"
#include "OSGMaterial.h"
#include "SlowView.h"

namespace OSG::Test
{
/// The colours of a material, shininess within 0 to 128.
struct SurfaceColors
{
    Vec4d ambient{0.2, 0.2, 0.2, 1.0};
    Vec4d diffuse{0.8, 0.8, 0.8, 1.0};
    Vec4d specular{0.0, 0.0, 0.0, 1.0};
    Vec4d emission{0.0, 0.0, 0.0, 1.0};
    Real64 shininess = 0;
    UInt32 colorMaterial = 0;
    bool lit = true;
};

struct Blending
{
    UInt32 source;
    UInt32 destination;
};

struct TexturePicture
{
    Image const *image;
    UInt32 minFilter;
    UInt32 magFilter;
    UInt32 wrapS;
    UInt32 wrapT;
    bool sphereMap;
};

/// A material as chunks by their slots. Materials of all classes are brought to this form, so that
/// they can override one another.
struct ChunkSet
{
    std::map<Int32, SurfaceColors> colors;
    std::map<Int32, Blending> blendings;
    std::map<Int32, TexturePicture> textures;
    std::map<Int32, UInt32> environments;
    std::map<Int32, Matrix4d> textureMatrices;
};

/// Null, and a choice that leads nowhere, give no chunks.
ChunkSet chunks_of(Material const *material);
/// What is in `above` takes the place of what is in `below`, slot by slot.
void override_chunks(ChunkSet &below, ChunkSet const &above);

/// One unit of texturing.
struct TextureStage
{
    TexturePicture picture;
    UInt32 environment;
    Matrix4d matrix;
};

struct Surface
{
    SurfaceColors colors;
    std::vector<TextureStage> stages;
    bool transparent = false; ///< drawn after what is opaque, without a depth of its own
    Blending blending{};
    bool alphaTest = false; ///< fragments with alpha below 0.5 are dropped
};

/// What no chunk says is as in a new simple material.
Surface surface_of(ChunkSet const &chunks);
} // namespace OSG::Test
