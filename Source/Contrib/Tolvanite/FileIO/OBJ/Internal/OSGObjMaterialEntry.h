#pragma once

#include <iosfwd>
#include <string>

#include "OSGObjWriter.h"

namespace OSG
{
/// Writes the entry of a material library: an empty line, "newmtl" and the name, and what the
/// material's class has of colours, opacity, shininess and a texture. An image that the entry names
/// goes into `images`. A material of another class, or null, has the first two lines alone. Numbers
/// have six digits behind the point; the stream keeps that format.
OSG_CONTRIBTOLVANITE_API void write_obj_material(std::ostream &library, std::string const &name,
                                                 Material const *material,
                                                 ObjWriter::Images &images);
} // namespace OSG
