/// \file
/// Scenes that no OBJ file can hold as they are, targets that do not take the text, and memory that
/// runs out.

#include <limits>
#include <new>

#include "GoneFolder.h"
#include "HostLocale.h"
#include "LogCapture.h"
#include "OSGChangeList.h"
#include "OSGFieldContainerFactory.h"
#include "OSGMaterialGroup.h"
#include "OSGSceneFileHandler.h"
#include "OSGThread.h"
#include "ObjScene.h"
#include "ObjWriting.h"
#include "StreamBuffers.h"

using namespace OSG;
using namespace OSG::Test;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace
{
class ObjWriterHostile : public ObjWriting
{
};

/// Twenty thousand triangles below a group with a material and a texture.
NodePtr make_large_scene(Image *image)
{
    std::vector<Pnt3f> positions;
    positions.reserve(60000);
    for(int i = 0; i < 60000; ++i)
        positions.emplace_back(static_cast<Real32>(i), 0.5f, -1.f);
    NodePtr const triangles =
        make_node(make_geometry(one_primitive(TrianglesPrimitive, positions)));
    return make_material_group<MaterialGroup>(make_textured(image), {triangles});
}

// --- streams and files ---

TEST_F(ObjWriterHostile, AStreamThatBreaksOnTheWayGivesTrueWithoutAMessageAndTheLibraryAsAWhole)
{
    auto const image = make_image("tiles.png");
    NodePtr const root = make_large_scene(image);
    std::string const library = ObjHeader + write(root, "whole.obj").library;
    for(std::size_t const room : {0u, 100u, 100000u, 1000000u})
    {
        NarrowBuffer full(room);
        std::ostream out(&full);
        LogCapture const log;
        EXPECT_TRUE(OBJSceneFileTypeTN::the().write(root, out, folder.path("a.obj").c_str()));
        EXPECT_TRUE(out.bad()) << room;
        EXPECT_THAT(log.messages(), IsEmpty());
        EXPECT_EQ(content_of(folder.path("a.mtl")), library);
    }
    EXPECT_TRUE(std::filesystem::exists(folder.path("tiles.png")));
}

TEST_F(ObjWriterHostile, AStreamThatHasFailedBeforeGetsNothing)
{
    std::ostringstream out;
    out.setstate(std::ios::failbit);
    EXPECT_TRUE(
        OBJSceneFileTypeTN::the().write(make_triangle(), out, folder.path("a.obj").c_str()));
    EXPECT_EQ(out.str(), "");
}

TEST_F(ObjWriterHostile, ALibraryThatIsThereIsReplacedAsAWhole)
{
    folder.write("scene.mtl", repeated(10000, 'x'));
    EXPECT_EQ(write(make_triangle()).library, "");
}

TEST_F(ObjWriterHostile, AFolderThatIsNotThereGivesTheTextAndNoMessage)
{
    std::ostringstream out;
    LogCapture const log;
    EXPECT_TRUE(
        OBJSceneFileTypeTN::the().write(make_triangle(), out, folder.path("no/a.obj").c_str()));
    EXPECT_THAT(out.str(), HasSubstr("\nmtllib a.mtl\n"));
    EXPECT_THAT(log.messages(), IsEmpty());
    EXPECT_FALSE(std::filesystem::exists(folder.path("no")));
}

TEST_F(ObjWriterHostile, ALibraryThatADiskDoesNotTakeIsNamed)
{
    std::filesystem::create_symlink("/dev/full", folder.path("a.mtl"));
    NodePtr const root = make_material_group<MaterialGroup>(make_material(), {make_triangle()});
    LogCapture const log;
    EXPECT_TRUE(SceneFileHandlerBase::the()->write(root, folder.path("a.obj").c_str()));
    EXPECT_THAT(SceneFileHandlerBase::the()->getUnwrittenFiles(),
                ElementsAre(folder.path("a.mtl")));
    EXPECT_THAT(content_of(folder.path("a.obj")), HasSubstr("f 1//1 2//2 3//3\n"));
    EXPECT_THAT(log.messages(), IsEmpty());
}

TEST_F(ObjWriterHostile, TheHostsLocaleIsInNeitherFile)
{
    auto const material = make_material();
    material->setShininess(1234.5f);
    NodePtr const root =
        make_material_group<MaterialGroup>(material, {make_triangle(Pnt3f(0.5f, 123456.f, 0))});
    {
        HostLocale const german(',', '.');
        ASSERT_TRUE(SceneFileHandlerBase::the()->write(root, folder.path("a.obj").c_str()));
    }
    EXPECT_THAT(content_of(folder.path("a.obj")), HasSubstr("\nv 0.5 123456 0\n"));
    EXPECT_THAT(content_of(folder.path("a.mtl")), HasSubstr("    Ns 1234.500000\n"));
}

TEST_F(ObjWriterHostile, WhereTheCurrentFolderIsGoneTheTextIsWritten)
{
    auto const image = make_image("tiles.png");
    GoneFolder const gone(folder);
    std::ostringstream out;
    EXPECT_TRUE(OBJSceneFileTypeTN::the().write(
        with_material(make_triangle(), make_textured(image)), out, "a.obj"));
    EXPECT_THAT(out.str(), HasSubstr("f 1//1 2//2 3//3\n"));
}

// --- names of images ---

TEST_F(ObjWriterHostile, NoNameOfAnImageLeadsOutOfTheFolder)
{
    folder.makeFolder("in/here");
    for(char const *name : {"../../x.png", "/no/such/folder/y.png", "a/../../z.png", "..", "../..",
                            "folder/", "two\nlines.png", "../two\nlines/w.png"})
    {
        auto const image = make_image(name);
        LogCapture const log;
        write(with_material(make_triangle(), make_textured(image)), "in/here/scene.obj");
        EXPECT_THAT(log.messages(), IsEmpty());
    }
    std::vector<std::string> files;
    for(auto const &entry : std::filesystem::recursive_directory_iterator(folder.path("")))
    {
        if(entry.is_regular_file())
            files.push_back(entry.path().lexically_relative(folder.path("in/here")));
    }
    EXPECT_THAT(files, testing::UnorderedElementsAre("scene.mtl", "x.png", "y.png", "z.png",
                                                     "two\nlines.png", "w.png"));
}

TEST_F(ObjWriterHostile, AnImageNamedAsTheSceneOrItsLibraryReplacesNeither)
{
    auto const scene = make_image("scene.obj");
    auto const library = make_image("scene.mtl");
    NodePtr const root = make_group({with_material(make_triangle(), make_textured(scene)),
                                     with_material(make_triangle(), make_textured(library))});
    std::string const file = folder.path("scene.obj");
    EXPECT_TRUE(SceneFileHandlerBase::the()->write(root, file.c_str()));
    EXPECT_THAT(content_of(file), testing::StartsWith(ObjHeader));
    EXPECT_THAT(content_of(folder.path("scene.mtl")), HasSubstr("map_Kd scene.mtl\n"));
    EXPECT_THAT(SceneFileHandlerBase::the()->getUnwrittenFiles(),
                testing::UnorderedElementsAre(file, folder.path("scene.mtl")));
}

// --- geometries ---

TEST_F(ObjWriterHostile, NumbersThatAreNotFiniteAreWrittenAndEndTheWayBack)
{
    Real32 const nan = std::numeric_limits<Real32>::quiet_NaN();
    Real32 const infinite = std::numeric_limits<Real32>::infinity();
    NodePtr const root =
        make_group({make_triangle(),
                    make_node(make_geometry(one_primitive(
                        TrianglesPrimitive, {{0, nan, 0}, {infinite, 1, 0}, {0, 0, -infinite}})))});
    std::string const file = folder.path("a.obj");
    EXPECT_TRUE(SceneFileHandlerBase::the()->write(root, file.c_str()));
    EXPECT_THAT(content_of(file), HasSubstr("v inf"));
    ObjScene const back = read_obj_file(file);
    EXPECT_THAT(back.log, ElementsAre(HasSubstr("The read ends in line 18, at 'nan'")));
    EXPECT_EQ(count_triangles(back.root), 1u);
}

struct BadGeometry
{
    char const *name;
    GeometryParts parts;
    char const *faces; ///< behind the vertices
    std::size_t warnings;
};

TEST_F(ObjWriterHostile, PartsOfAGeometryThatCannotBeUsedHaveNoFaces)
{
    std::vector<Pnt3f> const corners = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}};
    std::string const vertices = "v 0 0 0\nv 1 0 0\nv 0 1 0\n";
    BadGeometry const cases[] = {
        {"NoPrimitives", {{}, {}, corners}, "", 0},
        {"NoLengths", {{4}, {}, corners}, "", 0},
        {"NoTypes", {{}, {3}, corners}, "", 0},
        {"UnknownType", {{77}, {3}, corners}, "", 0},
        {"LengthBeyondThePositions", {{4}, {6}, corners}, "f 1 2 3\n", 1},
        {"LengthBeyondTheIndex", {{4, 4}, {3, 3}, corners, {}, {2, 1, 0, 0}}, "f 3 2 1\n", 1},
        {"IndexOutOfRange", {{4, 4}, {3, 3}, corners, {}, {0, 1, 3, 0, 1, 2}}, "f 1 2 3\n", 1},
    };
    for(BadGeometry const &row : cases)
    {
        LogCapture const log;
        EXPECT_EQ(write(make_node(make_geometry(row.parts))).scene,
                  "o Geometry\ng Geometry1\ns 1\n" + vertices + row.faces)
            << row.name;
        EXPECT_EQ(log.messages().size(), row.warnings) << row.name;
    }
}

TEST_F(ObjWriterHostile, AGeometryWithNothingInItIsAGroupWithoutVertices)
{
    UnrecordedRefPtr<Geometry> const geometry(Geometry::create());
    geometry->setPositions(make_property<GeoPnt3fProperty>(std::vector<Pnt3f>(1)));
    EXPECT_EQ(write(make_node(geometry)).scene, "o Geometry\ng Geometry1\ns 1\nv 0 0 0\n");
}

// --- memory ---

TEST_F(ObjWriterHostile, EveryBlockMayBeMissingAndNothingIsLeft)
{
    auto const image = make_image("tiles.png");
    NodePtr const visited = make_triangle();
    NodePtr const root =
        make_group({make_material_group<MaterialGroup>(
                        make_textured(image), {make_triangle(), make_triangle(Pnt3f(1, 2, 3))}),
                    make_visit(visited)});
    std::string const file = folder.path("a.obj");
    auto const writeFile = [&] { return SceneFileHandlerBase::the()->write(root, file.c_str()); };
    LogCapture const silence;
    ASSERT_TRUE(writeFile());
    std::string const whole = content_of(file) + content_of(folder.path("a.mtl"));
    UInt32 const containers = FieldContainerFactoryBase::the()->getNumContainers();
    UInt64 const bytes = get_mem_bytes();
    UInt64 blocks = 0;
    for(bool done = false; !done; ++blocks)
    {
        set_mem_block_limit(blocks);
        bool written = false;
        try
        {
            written = writeFile();
        }
        catch(std::bad_alloc const &)
        {
        }
        void *const probe = MemMalloc(1);
        done = written && probe != nullptr;
        MemFree(probe);
        set_mem_limit(0);
        Thread::getCurrentChangeList()->commitChanges();
        ASSERT_EQ(FieldContainerFactoryBase::the()->getNumContainers(), containers) << blocks;
        ASSERT_LE(get_mem_bytes(), bytes + 1024) << blocks;
    }
    EXPECT_GT(blocks, 20u);
    EXPECT_EQ(content_of(file) + content_of(folder.path("a.mtl")), whole);
    EXPECT_THAT(SceneFileHandlerBase::the()->getUnwrittenFiles(), IsEmpty());
}
} // namespace
