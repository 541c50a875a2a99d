#pragma once

/// \file
/// The state that a primitive is drawn in, as plain values. Materials and chunks are read into it;
/// two materials of equal values have equal states, so that what they draw is drawn together.

#include <vector>

#include "OSGColor.h"
#include "OSGGLNames.h"
#include "OSGMatrix.h"
#include "OSGStateApi.h"

namespace OSG
{
class Image;
class StateChunk;

/// Colours of a surface as drawing takes them; shininess is within 0 to 128.
struct SurfaceValues
{
    Color4f ambient{0.2f, 0.2f, 0.2f, 1};
    Color4f diffuse{0.8f, 0.8f, 0.8f, 1};
    Color4f specular{0, 0, 0, 1};
    Color4f emission{0, 0, 0, 1};
    Real32 shininess = 0;
    bool lit = true;
    UInt32 colorMaterial = 0; ///< an OpenGL constant; 0 for none

    bool operator==(SurfaceValues const &) const = default;
};

struct BlendValues
{
    bool isOn = false;
    UInt32 srcFactor = GLName::SourceAlpha;
    UInt32 destFactor = GLName::OneMinusSourceAlpha;
    /// Fragments with alpha below 0.5 are dropped.
    bool dropsLowAlpha = false;

    bool operator==(BlendValues const &) const = default;
};

/// A texture unit. Without an image it is off.
struct TextureValues
{
    Image *image = nullptr; ///< not counted; lives as long as its material shows it
    UInt32 minFilter = GLName::LinearMipmapLinear;
    UInt32 magFilter = GLName::Linear;
    UInt32 wrapS = GLName::Repeat;
    UInt32 wrapT = GLName::Repeat;
    UInt32 envMode = GLName::Modulate;
    bool isSphereMap = false;
    bool isTransformed = false; ///< by `transform`, of the coordinates
    Matrix transform;

    bool operator==(TextureValues const &) const = default;
};

/// A chunk that is driven by its own activate, changeFrom and deactivate.
struct ActiveChunk
{
    StateChunk *chunk = nullptr; ///< not counted
    UInt32 classId = 0;          ///< number of the slot, over the slots of all classes
    UInt32 priority = 0;
    UInt32 index = 0; ///< slot within the class

    bool operator==(ActiveChunk const &) const = default;
};

struct DrawState
{
    SurfaceValues surface;
    BlendValues blend;
    std::vector<TextureValues> textures; ///< by unit
    std::vector<ActiveChunk> chunks;     ///< by priority, then by slot; the rest

    /// Whether what has this state comes after everything opaque.
    bool isTransparent() const { return blend.isOn; }
    bool operator==(DrawState const &) const = default;
};
} // namespace OSG
