#pragma once

/// \file
/// Makes materials of those of a 3DS file.

#include "OSGChunkMaterial.h"
#include "OSGImage.h"
#include "lib3ds.h"

namespace OSG
{
/// Reads the picture of a name as the file has it. Where that fails, tries the name with the ASCII
/// letters behind its last slash or backslash in the other case, with a warning. Null where both
/// fail or the name is null or empty.
TransitPtr<Image> load_image(char const *name);

/// Whether convert_material() looks for a picture.
bool names_pictures(Lib3dsMaterial const &material);

/// A named material with its colours, and with a texture for each map of the file whose picture can
/// be read. Where textures replace the colours, the colours are plain grey.
TransitPtr<ChunkMaterial> convert_material(Lib3dsMaterial const &material);
} // namespace OSG
