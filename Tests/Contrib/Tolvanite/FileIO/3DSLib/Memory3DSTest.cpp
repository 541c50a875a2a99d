/// \file
/// The memory that 3DS files need whose bytes stand for as many records as possible.

#include <gtest/gtest.h>

#include "Chunks3DS.h"
#include "OSGLog.h"
#include "OSGMemManager.h"
#include "Scene3DS.h"
#include "SceneInvariants.h"

using namespace OSG;
using namespace OSG::Test;

namespace
{
/// A file of as many parts of a kind as wanted.
struct Dense
{
    char const *name;
    std::string (*file)(unsigned count);
    unsigned count = 30000;
};
void PrintTo(Dense const &row, std::ostream *out) { *out << row.name; }

template <class Part>
std::string many(unsigned count, Part const &part)
{
    std::string bytes;
    for(unsigned i = 0; i < count; ++i)
        bytes += part(i);
    return bytes;
}

/// A name of three characters or more, another one for each number.
std::string name_of(unsigned number)
{
    std::string name = "   ";
    for(std::size_t digit = 0; number != 0; number /= 64, ++digit)
    {
        if(digit == name.size())
            name += ' ';
        name[digit] = static_cast<char>('0' + number % 64);
    }
    return name;
}

/// Only the nodes of such a file show meshes.
std::string with_node(std::string const &editor) { return file_3ds(editor, chunk(0xB003)); }
std::string nodes_only(std::string const &nodes) { return file_3ds("", nodes); }

std::string const EmptyHeader = Bytes().text("").word(0).word(0).get();
std::string child_of(unsigned parent)
{
    return chunk(0xB002, chunk(0xB010, Bytes().raw(EmptyHeader).word(parent)));
}

Dense const DenseFiles[] = {
    {"Materials",
     [](unsigned n) { return file_3ds(many(n, [](unsigned) { return chunk(0xAFFF); })); }},
    {"NamedMaterials", [](unsigned n)
     { return file_3ds(many(n, [](unsigned i) { return material_3ds(name_of(i)); })); }},
    {"ShortNamedMaterials",
     [](unsigned n) { return file_3ds(many(n, [](unsigned) { return material_3ds("x"); })); }},
    {"MaterialsWithPictures",
     [](unsigned n)
     { return file_3ds(many(n, [](unsigned) { return chunk(0xAFFF, map_3ds(0xA200, "?")); })); },
     3000},
    {"UsedMaterials",
     [](unsigned n)
     {
         return file_3ds(
             many(n, [](unsigned i) { return material_3ds(name_of(i)); }) +
             mesh_3ds("m", points_3ds({0, 0, 0}) +
                               faces_3ds(std::vector<Face3DS>(n),
                                         many(n, [](unsigned i)
                                              { return face_material_3ds(name_of(i), {i}); }))));
     },
     3000},
    {"MeshesOfOneObject",
     [](unsigned n)
     {
         return with_node(
             chunk(0x4000, Bytes().text("").raw(many(n, [](unsigned) { return chunk(0x4100); }))));
     }},
    {"ShownMeshesOfOneObject",
     [](unsigned n)
     {
         return file_3ds(
             chunk(0x4000, Bytes().text("").raw(many(n, [](unsigned) { return chunk(0x4100); }))));
     }},
    {"Objects", [](unsigned n)
     { return with_node(many(n, [](unsigned i) { return mesh_3ds(name_of(i), ""); })); }},
    {"MeshesWithEmptyPoints",
     [](unsigned n)
     {
         return with_node(
             chunk(0x4000, Bytes().text("").raw(
                               many(n, [](unsigned) { return chunk(0x4100, points_3ds({})); }))));
     }},
    {"Vertices",
     [](unsigned n)
     {
         return file_3ds(
             many(n / 10000, [](unsigned i)
                  { return mesh_3ds(name_of(i), points_3ds(std::vector<float>(30000))); }));
     },
     100000},
    {"TexCoordsOfManyVertices",
     [](unsigned n)
     {
         return file_3ds(mesh_3ds("m", points_3ds(std::vector<float>(30000)) +
                                           many(n,
                                                [](unsigned) {
                                                    return tex_coords_3ds({1, 1});
                                                })));
     }},
    {"Faces",
     [](unsigned n) {
         return file_3ds(mesh_3ds("m", points_3ds({0, 0, 0}) + faces_3ds(std::vector<Face3DS>(n))));
     },
     20000},
    {"FacesOfTheirOwnGroups",
     [](unsigned n)
     {
         std::vector<std::uint32_t> groups(n);
         for(unsigned i = 0; i < n; ++i)
             groups[i] = i;
         return file_3ds(mesh_3ds("m", points_3ds({0, 0, 0}) + faces_3ds(std::vector<Face3DS>(n),
                                                                         smoothing_3ds(groups))));
     },
     5000},
    {"Nodes",
     [](unsigned n) { return nodes_only(many(n, [](unsigned) { return chunk(0xB002); })); }},
    {"Lights",
     [](unsigned n) { return nodes_only(many(n, [](unsigned) { return chunk(0xB005); })); }},
    {"NodesWithIds", [](unsigned n)
     { return nodes_only(many(n, [](unsigned) { return chunk(0xB002, id_3ds(7)); })); }},
    {"NodesWithNames",
     [](unsigned n)
     {
         return nodes_only(
             many(n, [](unsigned) { return chunk(0xB002, chunk(0xB011, Bytes().text(""))); }));
     }},
    {"NodesWithPivots",
     [](unsigned n) {
         return nodes_only(many(n, [](unsigned) { return chunk(0xB002, pivot_3ds({0, 0, 0})); }));
     }},
    {"NodesWithEmptyTracks",
     [](unsigned n) {
         return nodes_only(many(n, [](unsigned) { return chunk(0xB002, track_3ds(0xB020, {})); }));
     }},
    {"Keys",
     [](unsigned n)
     {
         return nodes_only(
             chunk(0xB002, track_3ds(0xB020, std::vector<Key3DS>(n, Key3DS{0, {0, 0, 0}}))));
     }},
    {"Children", [](unsigned n)
     { return nodes_only(chunk(0xB002) + many(n, [](unsigned) { return child_of(0); })); }},
    {"ChainOfNodes",
     [](unsigned n)
     { return nodes_only(chunk(0xB002) + many(n, [](unsigned i) { return child_of(i); })); },
     20000},
    {"Families",
     [](unsigned n)
     {
         return nodes_only(many(n, [](unsigned) { return chunk(0xB002); }) +
                           many(n, [](unsigned i) { return child_of(i); }));
     },
     10000},
};

struct Taken
{
    UInt64 input;
    UInt64 peak;
    UInt64 nodes;
};

UInt64 nodes_of(Node *node)
{
    UInt64 nodes = 1;
    for(UInt32 i = 0; i < node->getNChildren(); ++i)
        nodes += nodes_of(node->getChild(i));
    return nodes;
}

Taken take(Dense const &dense, unsigned count)
{
    std::string const bytes = dense.file(count);
    std::istringstream in(bytes);
    UInt64 const before = get_mem_bytes();
    reset_mem_peak();
    UnrecordedRefPtr<Node> const root(SceneFileHandlerBase::the()->read(in, "3ds"));
    UInt64 const peak = get_mem_peak_bytes() - before;
    return {bytes.size(), peak, root != nullptr ? nodes_of(root) : 0};
}

class Dense3DS : public testing::TestWithParam<Dense>
{
};

// Nodes of the scene have an allowance of their own: they may be many more than the file's bytes.
TEST_P(Dense3DS, HoldsAtMostFortyBytesForEachOfItsOwnAndWhatTheNodesTake)
{
    constexpr UInt64 BytesOfANode = 400;
    osgLogP->setLogLevel(LOG_DUMP);
    take(GetParam(), 3 * GetParam().count); // what the system keeps is there from now on
    Taken const once = take(GetParam(), GetParam().count);
    Taken const threefold = take(GetParam(), 3 * GetParam().count);
    osgLogP->setLogLevel(LOG_WARNING);
    UInt64 const nodes = threefold.nodes - once.nodes;
    UInt64 const input = threefold.input - once.input;
    Real64 const perByte =
        (Real64(threefold.peak) - Real64(once.peak) - Real64(BytesOfANode * nodes)) / Real64(input);
    RecordProperty("BytesForAByte", std::to_string(perByte));
    EXPECT_LE(perByte, 40);
    EXPECT_LE(threefold.peak, read_memory_bound(threefold.input) + BytesOfANode * threefold.nodes);
}

INSTANTIATE_TEST_SUITE_P(Memory3DS, Dense3DS, testing::ValuesIn(DenseFiles),
                         [](auto const &row) { return row.param.name; });
} // namespace
