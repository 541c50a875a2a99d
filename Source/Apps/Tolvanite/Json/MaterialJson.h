#pragma once

#include "JsonWriter.h"

namespace OSG
{
class Material;
}

namespace Tool
{
/// Writes a material as an object, or null for none. A switch material that is among its own
/// choices, directly or further down, has no "materials" there, nor has one beyond the thousandth.
void write_material(JsonWriter &json, OSG::Material *material);
} // namespace Tool
