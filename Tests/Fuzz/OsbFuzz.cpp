/// \file
/// Bytes read as a binary scene, which is then used as a host would.

#include <cstdint>
#include <sstream>

#include "FuzzSystem.h"
#include "LogCapture.h"
#include "OSGOSBSceneFileType.h"
#include "SceneInvariants.h"

using namespace OSG;
using namespace OSG::Test;

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const *data, std::size_t size)
{
    LogCapture const silence(LOG_DUMP);
    std::istringstream in(std::string(reinterpret_cast<char const *>(data), size));
    FuzzBounds const bounds(read_memory_bound(size));
    UnrecordedRefPtr<Node> const root(OSBSceneFileType::the().read(in, nullptr, {}));
    expect_no_fault(fault_of_scene(root, Parts::Any));
    return 0;
}
