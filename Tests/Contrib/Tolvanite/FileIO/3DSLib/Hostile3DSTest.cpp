/// \file
/// 3DS files that are damaged or made to do harm.

#include <sstream>

#include <gmock/gmock.h>

#include "Chunks3DS.h"
#include "OSG3DSLibLoader.h"
#include "RandomNumbers.h"
#include "Scene3DS.h"
#include "StreamBuffers.h"

using namespace OSG;
using namespace OSG::Test;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace
{
struct RefusedCase
{
    char const *name;
    std::string bytes;
    char const *reason; ///< within the first line
};
void PrintTo(RefusedCase const &row, std::ostream *out) { *out << row.name; }

class Refused3DS : public testing::TestWithParam<RefusedCase>
{
};

TEST_P(Refused3DS, GivesNullAndSaysWhy)
{
    Scene3DS const scene = read_3ds(GetParam().bytes);
    EXPECT_EQ(scene.root, nullptr);
    ASSERT_EQ(scene.log.size(), 2u);
    EXPECT_THAT(scene.log[0], testing::StartsWith("1: "));
    EXPECT_THAT(scene.log[0], HasSubstr(GetParam().reason));
    EXPECT_EQ(scene.log[1], CannotRead);
}

std::string in_mesh(std::string const &part) { return file_3ds(mesh_3ds("m", part)); }
std::string in_faces(std::string const &part)
{
    return in_mesh(points_3ds({0, 0, 0, 1, 0, 0, 0, 1, 0}) + faces_3ds({{{0, 1, 2}}}, part));
}
std::string in_material(std::string const &part) { return file_3ds(material_3ds("m", part)); }
std::string in_node(std::string const &part)
{
    return file_3ds(triangle_3ds("t"), instance_3ds(0, "t", NoParent3DS, part));
}
std::string track_of(UInt32 keys)
{
    return chunk(0xB020, Bytes().word(0).dword(0).dword(0).dword(keys));
}

INSTANTIATE_TEST_SUITE_P(
    Hostile3DS, Refused3DS,
    testing::Values(
        RefusedCase{"Nothing", "", "There is no chunk"},
        RefusedCase{"ThreeBytes", "MM\x20", "There is no chunk"},
        RefusedCase{"FiveBytes", std::string("MM\x06\0\0", 5), "There is no chunk"},
        RefusedCase{"Text", "this is no 3DS file", "0x6874"},
        RefusedCase{"AnotherChunk", chunk(0x4000), "0x4000"},
        RefusedCase{"OutermostTooShort", chunk_of_length(0x4D4D, 5, ""), "0x4d4d"},
        RefusedCase{"ChildOfLengthZero", chunk(0x4D4D, chunk_of_length(0x9999, 0, "")), "0x9999"},
        RefusedCase{"ChildOfLengthFive", file_3ds(chunk_of_length(0xAFFF, 5, "")), "0xafff"},
        RefusedCase{"PointsWithoutData", in_mesh(chunk(0x4110, Bytes().word(65535))), "0x4110"},
        RefusedCase{"PointsWithoutCount", in_mesh(chunk(0x4110)), "0x4110"},
        RefusedCase{"TexCoordsWithoutData", in_mesh(chunk(0x4140, Bytes().word(9))), "0x4140"},
        RefusedCase{"FacesWithoutData", in_mesh(chunk(0x4120, Bytes().word(65535))), "0x4120"},
        RefusedCase{"GroupBeyondItsChunk",
                    in_faces(chunk(0x4130, Bytes().text("m").word(3).word(0))), "0x4130"},
        RefusedCase{"GroupWithoutAnEnd", in_faces(chunk(0x4130, Bytes().raw("m"))), "0x4130"},
        RefusedCase{"SmoothingTooShort", in_faces(chunk(0x4150, Bytes().word(1))), "0x4150"},
        RefusedCase{"MatrixTooShort", in_mesh(matrix_3ds({1, 0, 0, 0, 1, 0, 0, 0, 1, 0, 0})),
                    "0x4160"},
        RefusedCase{"ObjectWithoutAnEndOfItsName", file_3ds(chunk(0x4000, Bytes().raw("abc"))),
                    "0x4000"},
        RefusedCase{"NameOf64Characters",
                    in_material(chunk(0xA000, Bytes().text(repeated(64, 'x')))), "0xa000"},
        RefusedCase{"NameOf500Characters", file_3ds(mesh_3ds(repeated(500, 'x'), "")), "0x4000"},
        RefusedCase{"ColourTooShort",
                    in_material(chunk(0xA020, chunk(0x0010, Bytes().real(1).real(1)))), "0x0010"},
        RefusedCase{"ColourBytesTooShort",
                    in_material(chunk(0xA020, chunk(0x0011, Bytes().raw("ab")))), "0x0011"},
        RefusedCase{"PercentageTooShort",
                    in_material(chunk(0xA040, chunk(0x0030, Bytes().raw("a")))), "0x0030"},
        RefusedCase{"MapFlagsTooShort", in_material(chunk(0xA200, chunk(0xA351, Bytes().raw("a")))),
                    "0xa351"},
        RefusedCase{"MapNameWithoutAnEnd",
                    in_material(chunk(0xA200, chunk(0xA300, Bytes().raw("abc")))), "0xa300"},
        RefusedCase{"NodeIdTooShort", in_node(chunk(0xB030, Bytes().raw("a"))), "0xb030"},
        RefusedCase{"NodeHeaderTooShort", in_node(chunk(0xB010, Bytes().text("n").word(0))),
                    "0xb010"},
        RefusedCase{"PivotTooShort", in_node(chunk(0xB013, Bytes().real(1).real(1))), "0xb013"},
        RefusedCase{"TrackWithoutHeader", in_node(chunk(0xB020, Bytes().word(0))), "0xb020"},
        RefusedCase{"TrackOfManyKeys", in_node(track_of(0x7FFFFFFF)), "0xb020"},
        RefusedCase{"TrackOfMinusOneKeys", in_node(track_of(0xFFFFFFFF)), "0xb020"},
        RefusedCase{"TrackOfOneKeyWithoutData", in_node(track_of(1)), "0xb020"},
        RefusedCase{"KeyThatAnnouncesMoreThanItHas",
                    in_node(track_3ds(0xB020, {{0, {1, 2, 3}, 31}})), "0xb020"}),
    [](auto const &row) { return std::string(row.param.name); });

// --- what is repaired ---

TEST(Hostile3DS, AChildLongerThanItsParentIsCutWithAWarning)
{
    std::string const cut = chunk_of_length(0x4000, 0xFFFFFFFF, triangle_3ds("a").substr(6));
    Scene3DS const scene = read_3ds(file_3ds(cut));
    EXPECT_EQ(scene.describe(), "[[[a1]]]");
    EXPECT_THAT(scene.log, ElementsAre("2: Chunk 0x4000 is longer than chunk 0x3d3d and is cut\n"));
    EXPECT_FALSE(scene.isComplete);
}

TEST(Hostile3DS, AnOutermostChunkLongerThanTheFileIsCutWithAWarning)
{
    for(UInt32 const length : {1000u, 0x7FFFFFFFu, 0xFFFFFFFFu})
    {
        Scene3DS const scene =
            read_3ds(chunk_of_length(0x4D4D, length, chunk(0x3D3D, triangle_3ds("a"))));
        EXPECT_EQ(scene.describe(), "[[[a1]]]");
        EXPECT_THAT(scene.log, ElementsAre("2: Chunk 0x4d4d is longer than the file and is cut\n"));
    }
}

TEST(Hostile3DS, BytesThatAreTooFewForAChunkAndBytesBehindTheFileArePassedOver)
{
    std::string const few = triangle_3ds("a") + "\x01\x02\x03\x04\x05";
    Scene3DS const scene = read_3ds(file_3ds(few) + "more");
    EXPECT_EQ(scene.describe(), "[[[a1]]]");
    EXPECT_THAT(scene.log, IsEmpty());
    EXPECT_TRUE(scene.isComplete);
}

TEST(Hostile3DS, MoreBytesThanAChunkNeedsArePassedOver)
{
    std::string const mesh =
        mesh_3ds("m", chunk(0x4110, Bytes().word(1).reals({1, 2, 3}).raw("extra")) + faces_3ds({}));
    EXPECT_EQ(read_3ds(file_3ds(mesh)).describe(), "[[[]]]");
}

TEST(Hostile3DS, ReadsFromWhereTheStreamStands)
{
    std::istringstream in("before" + file_3ds(triangle_3ds("a")));
    in.seekg(6);
    UnrecordedRefPtr<Node> const root(A3DSLibSceneFileType::the().read(in, nullptr, {}));
    EXPECT_NE(root, nullptr);
}

TEST(Hostile3DS, UnknownChunksArePassedOverHoweverDeepTheyNest)
{
    std::string nested;
    for(int i = 0; i < 10000; ++i)
        nested = chunk(0x4D4D, nested);
    Scene3DS const scene =
        read_3ds(chunk(0x4D4D, nested + chunk(0x3D3D, nested + triangle_3ds("a"))));
    EXPECT_EQ(scene.describe(), "[[[a1]]]");
    EXPECT_THAT(scene.log, IsEmpty());
}

TEST(Hostile3DS, APassedOverChunkIsToldAtTheLevelOfProgress)
{
    LogCapture const log(LOG_PROGRESS);
    std::istringstream in(file_3ds(chunk(0x1234, "abc")));
    UnrecordedRefPtr<Node> const root(A3DSLibSceneFileType::the().read(in, nullptr, {}));
    EXPECT_THAT(log.texts(LOG_PROGRESS), ElementsAre("Chunk 0x1234 is passed over\n"));
}

// --- limits ---

TEST(Hostile3DS, ManyMaterialsTimesManyMeshesAreTooManyNodes)
{
    std::string editor;
    for(int i = 0; i < 2200; ++i)
        editor += chunk(0xAFFF);
    for(int i = 0; i < 2200; ++i)
        editor += mesh_3ds("m", "");
    Scene3DS const scene = read_3ds(file_3ds(editor));
    EXPECT_EQ(scene.root, nullptr);
    ASSERT_EQ(scene.log.size(), 1u);
    EXPECT_THAT(scene.log[0], HasSubstr("nodes and 0 faces, which is too many!\n"));
}

TEST(Hostile3DS, AMeshThatManyNodesShowCountsItsFacesEachTime)
{
    std::vector<Face3DS> const faces(60000, Face3DS{{0, 1, 2}});
    std::string const mesh =
        mesh_3ds("t", points_3ds({0, 0, 0, 1, 0, 0, 0, 1, 0}) + faces_3ds(faces));
    std::string nodes;
    for(unsigned i = 0; i < 334; ++i)
        nodes += instance_3ds(i, "t", NoParent3DS);
    Scene3DS const scene = read_3ds(file_3ds(mesh, nodes));
    EXPECT_EQ(scene.root, nullptr);
    EXPECT_THAT(scene.log, ElementsAre(HasSubstr("20040000 faces, which is too many!\n")));
}

// --- streams ---

TEST(Hostile3DS, AStreamThatHasFailedGivesNullWithoutAMessage)
{
    LogCapture const log;
    std::istringstream in(file_3ds(triangle_3ds("a")));
    in.setstate(std::ios::failbit);
    UnrecordedRefPtr<Node> const root(A3DSLibSceneFileType::the().read(in, nullptr, {}));
    EXPECT_EQ(root, nullptr);
    EXPECT_THAT(log.messages(), IsEmpty());
}

TEST(Hostile3DS, AStreamThatCannotSeekIsRead)
{
    PieceBuffer buffer(file_3ds(triangle_3ds("a")), {7, false});
    std::istream in(&buffer);
    UnrecordedRefPtr<Node> const root(A3DSLibSceneFileType::the().read(in, nullptr, {}));
    EXPECT_NE(root, nullptr);
}

TEST(Hostile3DS, AStreamThatBreaksInTheMiddleEndsThere)
{
    std::string const bytes = file_3ds(triangle_3ds("a"));
    LogCapture const log;
    PieceBuffer buffer(bytes, {7, true, bytes.size() / 2});
    std::istream in(&buffer);
    UnrecordedRefPtr<Node> const root(A3DSLibSceneFileType::the().read(in, nullptr, {}));
    EXPECT_NE(root, nullptr);
    EXPECT_THAT(log.texts(), ElementsAre("Chunk 0x4d4d is longer than the file and is cut\n"));
}

// --- many damaged files ---

/// A file with every kind of chunk that is read.
std::string rich_file()
{
    std::string const material = material_3ds(
        "m", color_3ds(0xA010, {1, 0, 0}) + percent_3ds(0xA050, 30) + map_3ds(0xA230, "", 16));
    std::string const faces = faces_3ds({{{0, 1, 2}}, {{2, 1, 3}}, {{0, 3, 1}}},
                                        face_material_3ds("m", {0, 2}) + smoothing_3ds({1, 2, 1}));
    std::string const mesh =
        mesh_3ds("mesh", points_3ds({0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0, 1}) +
                             tex_coords_3ds({0, 0, 1, 0, 0, 1, 1, 1}) + faces +
                             matrix_3ds({-1, 0, 0, 0, 1, 0, 0, 0, 1, 1, 2, 3}));
    std::string const tracks =
        track_3ds(0xB020, {{UInt32(-5), {1, 2, 3}, 7, {0.5f, 0.5f, 0.5f}}, {5, {4, 5, 6}}}, 1) +
        track_3ds(0xB021, {{UInt32(-5), {1, 0, 0, 1}}, {2, {1, 0, 1, 0}}, {9, {2, 1, 0, 0}}}) +
        track_3ds(0xB022, {{0, {1, 2, 1}}});
    std::string const nodes = instance_3ds(0, "mesh", NoParent3DS, pivot_3ds({1, 0, 0}) + tracks) +
                              camera_3ds(1, "c", 0) + instance_3ds(2, "mesh", 1, tracks);
    return file_3ds(material + mesh, nodes);
}

TEST(Hostile3DS, EveryBeginningOfAFileIsReadWithoutHarm)
{
    std::string const bytes = rich_file();
    for(std::size_t size = 0; size < bytes.size(); ++size)
    {
        Scene3DS const scene = read_3ds(bytes.substr(0, size));
        EXPECT_FALSE(scene.log.empty()) << size;
        EXPECT_FALSE(scene.isComplete) << size;
    }
}

TEST(Hostile3DS, DamagedFilesAreReadWithoutHarm)
{
    std::string const bytes = rich_file();
    RandomNumbers random(31);
    int read = 0;
    for(int i = 0; i < 4000; ++i)
    {
        std::string damaged = bytes;
        for(UInt32 changes = 1 + random.below(4); changes > 0; --changes)
        {
            std::size_t const at = random.below(UInt32(damaged.size()));
            UInt32 const kind = random.below(4);
            if(kind == 0)
                damaged[at] = static_cast<char>(random.next());
            else if(kind == 1)
                damaged[at] = static_cast<char>(random.below(2) == 0 ? 0 : 0xFF);
            else if(kind == 2)
                damaged[at] = static_cast<char>(damaged[at] ^ 1 << random.below(8));
            else
                damaged.erase(at, random.below(40));
        }
        Scene3DS const scene = read_3ds(damaged);
        read += scene.root != nullptr ? 1 : 0;
        for(Geometry const *geometry : scene.geometries())
        {
            for(auto it = geometry->beginTriangles(); it != geometry->endTriangles(); ++it)
                ASSERT_LT(it.getPositionIndex(2), geometry->getPositions()->size());
        }
    }
    EXPECT_GT(read, 500);
    EXPECT_LT(read, 3900);
}
} // namespace
