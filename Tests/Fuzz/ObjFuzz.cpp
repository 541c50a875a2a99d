/// \file
/// Bytes read as an OBJ file: as records beside the obvious reader, then as a scene.

#include <cstdint>
#include <sstream>

#include "FuzzSystem.h"
#include "LogCapture.h"
#include "OSGOBJLibSceneFileTypeTN.h"
#include "ReferenceObjReader.h"
#include "SceneInvariants.h"

using namespace OSG;
using namespace OSG::Test;

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const *data, std::size_t size)
{
    std::string const text(reinterpret_cast<char const *>(data), size);
    if(read_obj(text).describe() != read_obj_slowly(text).describe())
        expect_no_fault("the readers disagree");

    LogCapture const silence(LOG_DUMP);
    std::istringstream in(text);
    FuzzBounds const bounds(read_memory_bound(size));
    UnrecordedRefPtr<Node> const root(OBJSceneFileTypeTN::the().read(in, nullptr, {}));
    expect_no_fault(fault_of_scene(root));
    return 0;
}
