#pragma once

#include "OSGOBJLibSceneFileTypeTN.h"

namespace OSG
{
/// Full path of a file that an OBJ file or a material library names, found by the scene file
/// handler's path handler; empty where it finds none. Without a path handler the name itself.
OSG_CONTRIBTOLVANITE_API std::string find_obj_file(std::string const &name);

/// Reads a material library, found by the scene file handler's path handler, with the images that
/// it names. Within a library an image is loaded once. Adds to `materials`, replacing those of the
/// same name, and gives the number of "newmtl" entries; 0 for a null or empty name and for a file
/// that is not found (logged) or cannot be opened. Nothing but regular files is opened.
/// Where an entry cannot be read the library ends, with a warning, and the read is not complete.
OSG_CONTRIBTOLVANITE_API Int32 read_material_library(char const *fileName,
                                                     MtlElementMap const &elements,
                                                     OBJSceneFileTypeTN::MaterialMap &materials);
} // namespace OSG
