#pragma once

#include "OSGOBJLibSceneFileTypeTN.h"

namespace OSG
{
/// The full path of a file that an OBJ file or a material library names. The path handler of the
/// scene file handler finds it; empty where there is no such file. Without a path handler the name
/// itself is returned.
OSG_CONTRIBTOLVANITE_API std::string find_obj_file(std::string const &name);

/// Reads a material library and the images that it names. The path handler of the scene file
/// handler finds the files. Within a library each image is loaded once. Adds materials to
/// `materials`, replacing those of the same name. Returns the number of "newmtl" entries. Returns 0
/// for a null or empty name, for a file that is not found (which is logged), and for one that
/// cannot be opened. Only regular files are opened. Where an entry cannot be read, the library ends
/// with a warning, and the read counts as not complete.
OSG_CONTRIBTOLVANITE_API Int32 read_material_library(char const *fileName,
                                                     MtlElementMap const &elements,
                                                     OBJSceneFileTypeTN::MaterialMap &materials);
} // namespace OSG
