/// \file
/// What the scene file handler knows, behind a write, that readers of the file will miss.

#include "OSGMaterialChunkOverrideGroup.h"
#include "OSGMaterialGroup.h"
#include "OSGObjDefaultMaterial.h"
#include "OSGSceneFileHandler.h"
#include "ObjScene.h"
#include "ObjWriting.h"

using namespace OSG;
using namespace OSG::Test;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

namespace
{
class ObjLosses : public ObjWriting
{
  protected:
    std::vector<std::string> lossesOf(NodePtr const &root, std::string const &name = "scene.obj")
    {
        EXPECT_TRUE(SceneFileHandlerBase::the()->write(root, folder.path(name).c_str()));
        return SceneFileHandlerBase::the()->getLosses();
    }
};

std::string not_in_use(std::string const &geometries)
{
    return "Readers do not use the materials of " + geometries +
           " in 'scene.mtl': the file names those of material groups alone.";
}

TEST_F(ObjLosses, MaterialsOfGeometriesThatNoLineUsesAreCounted)
{
    auto const material = make_material();
    auto const own = [&material] { return with_material(make_triangle(), material); };
    EXPECT_THAT(lossesOf(own()), ElementsAre(not_in_use("1 geometry")));
    EXPECT_THAT(lossesOf(make_group({own(), own(), make_triangle()})),
                ElementsAre(not_in_use("2 geometries")));
    EXPECT_THAT(lossesOf(make_material_group<MaterialGroup>(material, {own()})), IsEmpty());
    EXPECT_THAT(lossesOf(make_material_group<MaterialChunkOverrideGroup>(material, {own()})),
                IsEmpty());
}

TEST_F(ObjLosses, AMaterialThatReadersShowAlikeIsNone)
{
    ObjScene const plain = read_obj_scene("v 0 0 0\nf 1\nusemtl a\nf 1\n");
    ASSERT_EQ(plain.geometries().size(), 2u);
    EXPECT_TRUE(is_obj_default(*material_of(*plain.geometries()[0])));
    EXPECT_THAT(lossesOf(plain.root), IsEmpty());
    auto const image = make_image("tiles.png");
    material_of(*plain.geometries()[0])->setImage(image);
    EXPECT_FALSE(is_obj_default(*material_of(*plain.geometries()[0])));
    EXPECT_FALSE(is_obj_default(*make_material()));
}

TEST_F(ObjLosses, OfSeveralPicturesWithOneNameOneIsWritten)
{
    auto const one = make_image("a/tiles.png");
    auto const other = make_image("b/tiles.png");
    auto const again = make_image("a/tiles.png");
    auto const below = [](UnrecordedRefPtr<Image> const &image)
    { return make_material_group<MaterialGroup>(make_textured(image), {make_triangle()}); };
    EXPECT_THAT(lossesOf(make_group({below(one), below(again)})), IsEmpty());
    EXPECT_THAT(lossesOf(make_group({below(one), below(other)})),
                ElementsAre("Of several pictures with the name 'tiles.png' one is written."));
}

TEST_F(ObjLosses, NamesWithBlanksAreNotFound)
{
    auto const image = make_image("old tiles.png");
    NodePtr const root =
        make_material_group<MaterialGroup>(make_textured(image), {make_triangle()});
    EXPECT_THAT(lossesOf(root, "a scene.obj"),
                UnorderedElementsAre(
                    "Readers find no file for the name 'a scene.mtl', as it has a blank.",
                    "Readers find no file for the name 'old tiles.png', as it has a blank."));
}

TEST_F(ObjLosses, AreThoseOfTheLastWrite)
{
    EXPECT_EQ(lossesOf(with_material(make_triangle(), make_material())).size(), 1u);
    EXPECT_THAT(lossesOf(make_triangle()), IsEmpty());
    SceneFileHandlerBase::the()->addLoss("Outside of a write nothing is noted.");
    EXPECT_THAT(SceneFileHandlerBase::the()->getLosses(), IsEmpty());
}
} // namespace
