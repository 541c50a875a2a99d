/// \file
/// Names in 3DS files: of any length and of any bytes, and those that lead to files that are none.

#include <gmock/gmock.h>
#include <sys/stat.h>

#include "Chunks3DS.h"
#include "OSGTextureObjChunk.h"
#include "Scene3DS.h"
#include "StreamBuffers.h"
#include "TempFolder.h"

using namespace OSG;
using namespace OSG::Test;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{
/// A triangle with a material that has this name, and whose texture has that one.
std::string named_file(std::string const &name, std::string const &texture)
{
    return file_3ds(material_3ds(name, map_3ds(0xA200, texture)) +
                    triangle_3ds(name, 0, "", face_material_3ds(name, {0})));
}

TEST(Names3DS, StandAsTheyAreFromEmptyToTheLongest)
{
    for(std::string const &name :
        {std::string(), std::string("a/b\\..\x1b[31m\x7f\xff\n"), repeated(63, 'n')})
    {
        Scene3DS const scene = read_3ds(named_file(name, ""));
        ASSERT_EQ(scene.geometries().size(), 1u);
        EXPECT_EQ(scene.describe(), "[[[" + name + "1] []]]") << name;
        EXPECT_EQ(std::string(getName(chunks_of(*scene.geometries()[0]))), name);
        EXPECT_THAT(scene.log, IsEmpty());
    }
}

TEST(Names3DS, StandInMessagesWithoutControlCharacters)
{
    std::string const name = "\x1b[31mred\n";
    Scene3DS const picture = read_3ds(named_file("m", name));
    Scene3DS const faces =
        read_3ds(file_3ds(mesh_3ds(name, points_3ds({0, 0, 0}) + faces_3ds({{{0, 1, 2}}}))));
    Scene3DS const node = read_3ds(
        file_3ds(triangle_3ds("t"), instance_3ds(0, "t", NoParent3DS) + camera_3ds(1, name, 77)));
    for(Scene3DS const *scene : {&picture, &faces, &node})
    {
        ASSERT_EQ(scene->log.size(), 1u);
        EXPECT_THAT(scene->log[0], testing::HasSubstr("\\x1B["));
        EXPECT_THAT(scene->log[0].substr(0, scene->log[0].size() - 1), Each(testing::Ge(' ')));
    }
}

TEST(Names3DS, OfTexturesThatAreNoRegularFilesAreNotOpened)
{
    TempFolder const folder;
    std::string const pipe = folder.path("pipe.png");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    for(std::string const &name : {pipe, folder.makeFolder("f.png"), std::string("/dev/zero"),
                                   std::string(".."), std::string("/"), repeated(63, 'x')})
    {
        Scene3DS const scene = read_3ds(named_file("m", name));
        EXPECT_EQ(chunk_of<TextureObjChunk>(*chunks_of(*scene.geometries().at(0))), nullptr);
        EXPECT_THAT(scene.log, ElementsAre(testing::StartsWith("2: Couldn't load image '" + name)));
    }
}
} // namespace
