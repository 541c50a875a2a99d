#pragma once

#include "JsonWriter.h"

namespace OSG
{
class Material;
}

namespace Tool
{
/// Writes a material as an object; null for a null pointer. The member "materials" of a switch
/// material is left out where the material is written within itself, directly or further down, and
/// beyond the thousandth switch material.
void write_material(JsonWriter &json, OSG::Material *material);
} // namespace Tool
