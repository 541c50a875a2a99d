/// \file
/// The memory that meshes and their nodes need, and what remains allocated when there is not
/// enough.

#include <new>

#include <gtest/gtest.h>

#include "Chunks3DS.h"
#include "OSGChangeList.h"
#include "OSGFieldContainerFactory.h"
#include "OSGImage.h"
#include "OSGThread.h"
#include "Scene3DS.h"
#include "SceneInvariants.h"
#include "TempFolder.h"

using namespace OSG;
using namespace OSG::Test;

namespace
{
/// Bytes for each node of a scene, over those of the arrays: a node, its core and their names.
constexpr UInt64 BytesOfANode = 400;

// --- the peak ---

/// Peak while the file is read and dropped.
UInt64 peak_of(std::string const &bytes)
{
    reset_mem_peak();
    UInt64 const before = get_mem_bytes();
    std::istringstream in(bytes);
    SceneFileHandlerBase::the()->read(in, "3ds");
    return get_mem_peak_bytes() - before;
}

std::string mesh_of(unsigned faces)
{
    std::vector<float> points;
    for(unsigned i = 0; i < faces + 2; ++i)
        points.insert(points.end(), {static_cast<float>(i), 0, static_cast<float>(i % 2)});
    std::vector<Face3DS> triangles;
    std::vector<std::uint32_t> smoothing;
    for(unsigned i = 0; i < faces; ++i)
    {
        triangles.push_back({{i, i + 1, i + 2}});
        smoothing.push_back(1);
    }
    return mesh_3ds("m", points_3ds(points) + faces_3ds(triangles, smoothing_3ds(smoothing)));
}

TEST(MeshMemory3DS, LargeMeshesHoldAtMostFortyBytesForEachOfTheFile)
{
    LogCapture const silence;
    std::string few;
    for(int i = 0; i < 10; ++i)
        few += mesh_of(60000);
    std::string const many = few + few + few;
    peak_of(file_3ds(few)); // what the system keeps for later is there from now on
    UInt64 const once = peak_of(file_3ds(few));
    UInt64 const threefold = peak_of(file_3ds(many));
    EXPECT_GT(once, few.size());
    EXPECT_LE(once, read_memory_bound(few.size()));
    EXPECT_LE(threefold, once + 40 * (many.size() - few.size()));
}

TEST(MeshMemory3DS, ManySmallMeshesAndMaterialsHoldABoundedNumberOfBytesForEachNode)
{
    LogCapture const silence;
    auto const text = [](int meshes)
    {
        std::string editor;
        for(int i = 0; i < 50; ++i)
            editor += material_3ds("m" + std::to_string(i));
        for(int i = 0; i < meshes; ++i)
            editor += triangle_3ds("t");
        return file_3ds(editor);
    };
    peak_of(text(300));
    std::string const few = text(100);
    std::string const many = text(300);
    // A mesh has a node, two for each material and for the faces without one, and a geometry.
    UInt64 const nodes = 200 * (1 + 2 * 51 + 1);
    EXPECT_LE(peak_of(many) - peak_of(few), 40 * (many.size() - few.size()) + nodes * BytesOfANode);
}

// --- not enough memory ---

/// A file that uses everything: materials with pictures, nodes with parents, several smoothing
/// groups, faces that are dropped.
std::string small_file(std::string const &picture)
{
    std::string const materials =
        material_3ds("red", color_3ds(0xA020, {1, 0, 0}) + percent_3ds(0xA050, 30)) +
        material_3ds("tiled", map_3ds(0xA200, picture, 64) + map_3ds(0xA230, "none.png"));
    std::string const faces =
        faces_3ds({{{0, 1, 2}}, {{2, 1, 3}}, {{0, 3, 9}}},
                  face_material_3ds("tiled", {0, 2}) + smoothing_3ds({1, 2, 1}));
    std::string const mesh =
        mesh_3ds("mesh", points_3ds({0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0, 1}) +
                             tex_coords_3ds({0, 0, 1, 0, 0, 1, 1, 1}) + faces +
                             matrix_3ds({-1, 0, 0, 0, 1, 0, 0, 0, 1, 1, 2, 3}));
    std::string const tracks = track_3ds(0xB020, {{0, {1, 2, 3}}, {5, {4, 5, 6}}});
    return file_3ds(materials + mesh, instance_3ds(0, "mesh", NoParent3DS, tracks) +
                                          camera_3ds(1, "camera", 0) +
                                          instance_3ds(2, "mesh", 1, pivot_3ds({1, 0, 0})));
}

TEST(MeshMemory3DS, EveryBlockMayBeMissingAndNothingIsLeft)
{
    TempFolder const folder;
    UInt8 const pixels[] = {255, 0, 0, 255, 0, 255, 0, 0};
    UnrecordedRefPtr<Image> const image(Image::create());
    image->set(2, 1, 4, pixels);
    std::string const picture = folder.path("a.png");
    ASSERT_LT(picture.size(), 64u); // the longest name that such a file holds
    ASSERT_TRUE(image->write(picture.c_str()));
    std::string const path = folder.write("model.3ds", small_file(picture));
    LogCapture const silence(LOG_DUMP);
    auto const describe = [&path]
    {
        Scene3DS scene;
        scene.root = UnrecordedRefPtr<Node>(SceneFileHandlerBase::the()->read(path.c_str()));
        return scene.describe();
    };
    std::string const whole = describe();
    ASSERT_NE(whole, "null");
    UInt32 const containers = FieldContainerFactoryBase::the()->getNumContainers();
    UInt64 const bytes = get_mem_bytes();
    UInt64 blocks = 0;
    for(bool done = false; !done; ++blocks)
    {
        set_mem_block_limit(blocks);
        std::string got;
        try
        {
            got = describe();
        }
        catch(std::bad_alloc const &)
        {
        }
        void *const probe = MemMalloc(1);
        done = probe != nullptr;
        MemFree(probe);
        set_mem_limit(0);
        Thread::getCurrentChangeList()->commitChanges();
        // Without memory there is no scene, or the whole one where only a message was lost.
        EXPECT_TRUE(got.empty() || got == "null" || got == whole) << blocks << ' ' << got;
        ASSERT_EQ(FieldContainerFactoryBase::the()->getNumContainers(), containers) << blocks;
        ASSERT_LE(get_mem_bytes(), bytes + 1024) << blocks;
    }
    EXPECT_GT(blocks, 100u);
}
} // namespace
