#pragma once

/// \file
/// Settings as a context accepts them. Fields of materials and chunks may hold anything.

#include "OSGDrawList.h"

namespace OSG
{
/// NaN counts as 0, infinite values as the largest finite ones; shininess is clamped to 0 to 128; a
/// colour material that OpenGL does not know is none.
OSG_STATE_API SurfaceValues checked_surface(SurfaceValues surface);
/// Clamped to 0 to 1; NaN counts as 0.
OSG_STATE_API Real32 checked_transparency(Real32 transparency);
/// Factors that OpenGL does not know are those of a new BlendChunk.
OSG_STATE_API BlendValues checked_blend(BlendValues blend);
/// Filters and wrappings that OpenGL does not know are those of a new TextureObjChunk.
OSG_STATE_API TextureValues checked_texture(TextureValues texture);
/// A mode that OpenGL does not know is GLName::Modulate.
OSG_STATE_API UInt32 checked_environment(UInt32 mode);
/// NaN counts as 0, infinite values as the largest finite ones. Angles above 90 degrees are no
/// cone, exponents are clamped to 0 to 128, attenuations are not below 0.
OSG_STATE_API LightValues checked_light(LightValues light);
/// A matrix that is not finite is the identity.
OSG_STATE_API Matrix checked_transform(Matrix const &matrix);
} // namespace OSG
