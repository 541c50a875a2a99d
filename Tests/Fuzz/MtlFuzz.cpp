/// \file
/// Bytes read as a material library: as entries beside the obvious reader, then as materials, with
/// the pictures that it names.

#include <cstdint>
#include <fstream>

#include <sys/mman.h>
#include <unistd.h>

#include "FuzzSystem.h"
#include "LogCapture.h"
#include "OSGObjMaterialLibrary.h"
#include "OSGSimpleTexturedMaterial.h"
#include "ReferenceObjReader.h"
#include "SceneInvariants.h"

using namespace OSG;
using namespace OSG::Test;

namespace
{
/// A file without a place on the disk.
std::string library_file(std::uint8_t const *data, std::size_t size)
{
    static int const file = memfd_create("library", 0);
    if(file < 0 || ftruncate(file, 0) != 0 ||
       pwrite(file, data, size, 0) != static_cast<ssize_t>(size))
        std::abort();
    return "/proc/self/fd/" + std::to_string(file);
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const *data, std::size_t size)
{
    std::string const text(reinterpret_cast<char const *>(data), size);
    if(read_mtl(text).describe() != read_mtl_slowly(text).describe())
        expect_no_fault("the readers disagree");

    std::string const path = library_file(data, size);
    MtlElementMap elements;
    fill_element_map(elements);
    LogCapture const silence(LOG_DUMP);
    FuzzBounds const bounds(read_memory_bound(size));
    OBJSceneFileTypeTN::MaterialMap materials;
    Int32 const count = read_material_library(path.c_str(), elements, materials);
    if(count < 0 || materials.size() > static_cast<std::size_t>(count))
        expect_no_fault("more materials than entries");
    return 0;
}
