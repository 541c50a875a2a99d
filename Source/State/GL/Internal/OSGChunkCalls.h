#pragma once

/// \file
/// What the parts of a state do to the context that is current. Each function stands beside the
/// chunk that it belongs to. None looks at what was set before.

#include "OSGDrawState.h"

namespace OSG
{
class TextureStore;

// --- OSGMaterialChunk.cpp ---
/// The colours that light falls on, of both sides; only those that differ from `former`, which is
/// set already. Null: nothing is known of what is set.
void set_lit_surface(SurfaceValues const &surface, SurfaceValues const *former = nullptr);
/// The colour that is drawn without light.
void set_unlit_surface(SurfaceValues const &surface);
/// Whether vertices have a colour that is seen without light.
bool is_unlit_color(UInt32 colorMaterial);

// --- OSGBlendChunk.cpp ---
void set_blend(BlendValues const &blend);

// --- OSGTextureObjChunk.cpp; for the active unit ---
/// Switches the unit on where there is a texture to show, else off. Returns whether it is on.
bool set_texture(TextureStore &textures, TextureValues const &texture);
void set_sphere_map(bool isOn);

// --- OSGTextureEnvChunk.cpp; for the active unit ---
void set_environment(UInt32 mode);

// --- OSGTextureTransformChunk.cpp; for the active unit; leaves the matrix mode at the model's ---
void set_texture_transform(Matrix const &matrix);
} // namespace OSG
