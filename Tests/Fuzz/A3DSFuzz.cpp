/// \file
/// Bytes read as a 3DS file, whose scene is then used as a host would.

#include <cstdint>
#include <sstream>

#include "FuzzSystem.h"
#include "LogCapture.h"
#include "OSG3DSLibLoader.h"
#include "OSGGeometry.h"
#include "OSGNodeWalker.h"
#include "SceneInvariants.h"

using namespace OSG;
using namespace OSG::Test;

namespace
{
/// What a scene may take beyond the bytes of its file: small files may show a mesh very often.
struct ShownBytes
{
    static constexpr UInt64 NodeBytes = 400;

    UInt64 bytes = 0;

    bool enter(Node *node)
    {
        bytes += NodeBytes;
        if(auto const *const geometry = dynamic_cast<Geometry *>(node->getCore()))
        {
            constexpr UInt64 BytesOfVertex = 12 + 12 + 8;
            constexpr UInt64 BytesOfFace = 3 * 4 + 4 + 1 + 12 + 8; // with its normal and places
            bytes += BytesOfVertex * geometry->getPositions()->size() +
                     BytesOfFace * geometry->getLengths()->size();
        }
        return true;
    }
    void leave(Node *) {}
};
} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const *data, std::size_t size)
{
    LogCapture const silence(LOG_DUMP);
    std::istringstream in(std::string(reinterpret_cast<char const *>(data), size));
    FuzzBounds bounds(read_memory_bound(size));
    UnrecordedRefPtr<Node> const root(A3DSLibSceneFileType::the().read(in, nullptr, {}));
    ShownBytes shown;
    if(root != nullptr)
        walk_children(root, shown);
    bounds.allowMore(shown.bytes);
    expect_no_fault(fault_of_scene(root, Parts::Any));
    return 0;
}
