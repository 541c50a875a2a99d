#include "SceneDump.h"

#include <sstream>

#include <gtest/gtest.h>

#include "Keys.h"
#include "LogCapture.h"
#include "OSGBlendChunk.h"
#include "OSGChunkMaterial.h"
#include "OSGCommandNameAttachment.h"
#include "OSGComponentTransform.h"
#include "OSGDistanceLOD.h"
#include "OSGGeometry.h"
#include "OSGGroup.h"
#include "OSGImage.h"
#include "OSGMaterialChunk.h"
#include "OSGMaterialChunkOverrideGroup.h"
#include "OSGMaterialGroup.h"
#include "OSGMultiSwitch.h"
#include "OSGName.h"
#include "OSGNode.h"
#include "OSGScreenLOD.h"
#include "OSGSimpleTexturedMaterial.h"
#include "OSGSwitch.h"
#include "OSGSwitchMaterial.h"
#include "OSGTextureEnvChunk.h"
#include "OSGTextureObjChunk.h"
#include "OSGTypedGeoProperties.h"
#include "OSGVisitSubTree.h"

namespace Tool::Test
{
namespace
{
template <class T>
using Ptr = OSG::UnrecordedRefPtr<T>;
using NodePtr = Ptr<OSG::Node>;

NodePtr node(OSG::NodeCore *core, std::vector<OSG::Node *> const &children = {})
{
    NodePtr result(OSG::Node::create());
    result->setCore(core);
    for(OSG::Node *child : children)
        result->addChild(child);
    return result;
}

std::string text_of(OSG::Node *root, Arrays arrays = Arrays::Counted)
{
    std::ostringstream text;
    JsonWriter json(text);
    root->updateVolume();
    write_tree(json, root, arrays);
    return text.str();
}

Json dump(OSG::Node *root, Arrays arrays = Arrays::Counted)
{
    return Json::parse(text_of(root, arrays));
}

constexpr char const *Plain = "path name core bounds children";

TEST(SceneDump, ANodeWithoutAnythingIsNull)
{
    Json const root = dump(node(nullptr));
    EXPECT_EQ(root,
              Json::parse(
                  R"({"path": "/", "name": null, "core": null, "bounds": null, "children": []})"));
    EXPECT_EQ(keys_of(root), Plain);
}

TEST(SceneDump, ATransformHasItsMatrixColumnAfterColumn)
{
    Ptr<OSG::ComponentTransform> const core(OSG::ComponentTransform::create());
    OSG::Matrix moved;
    moved.setTranslate(1, 2, 3);
    core->setMatrix(moved);
    Json const root = dump(node(core));
    EXPECT_EQ(keys_of(root), std::string(Plain) + " matrix");
    EXPECT_EQ(root["core"], "ComponentTransform");
    EXPECT_EQ(root["matrix"], Json::parse("[1,0,0,0, 0,1,0,0, 0,0,1,0, 1,2,3,1]"));
}

TEST(SceneDump, SwitchesHaveTheirChoices)
{
    Ptr<OSG::Switch> const one(OSG::Switch::create());
    one->setChoice(-2);
    EXPECT_EQ(dump(node(one))["choice"], -2);
    Ptr<OSG::MultiSwitch> const several(OSG::MultiSwitch::create());
    several->setSwitchMode(-1);
    several->editMFChoices()->push_back(2);
    several->editMFChoices()->push_back(5);
    Json const root = dump(node(several));
    EXPECT_EQ(keys_of(root), std::string(Plain) + " mode choices");
    EXPECT_EQ(root["mode"], -1);
    EXPECT_EQ(root["choices"], Json::parse("[2, 5]"));
}

TEST(SceneDump, LevelsOfDetailSayWhereTheyChange)
{
    Ptr<OSG::DistanceLOD> const distances(OSG::DistanceLOD::create());
    distances->setCenter(OSG::Pnt3f(1, 2, 3));
    distances->editRange() = {10.f, 20.5f};
    Json levels = dump(node(distances));
    EXPECT_EQ(levels["center"], Json({1, 2, 3}));
    EXPECT_EQ(levels["range"], Json({10, 20.5}));

    Ptr<OSG::ScreenLOD> const shares(OSG::ScreenLOD::create());
    shares->editCoverage() = {0.5f, 0.25f};
    levels = dump(node(shares));
    EXPECT_EQ(levels["coverage"], Json({0.5, 0.25}));
}

TEST(SceneDump, AVisitedTreeStandsInItsOwnKey)
{
    Ptr<OSG::VisitSubTree> const visit(OSG::VisitSubTree::create());
    NodePtr const root = node(visit, {node(nullptr)});
    EXPECT_EQ(keys_of(dump(root)), std::string(Plain) + " subTree");
    EXPECT_TRUE(dump(root)["subTree"].is_null());
    NodePtr const other = node(Ptr<OSG::Group>(OSG::Group::create()), {node(nullptr)});
    visit->setSubTreeRoot(other);
    Json const with = dump(root);
    EXPECT_EQ(keys_of(with), std::string(Plain) + " subTree");
    EXPECT_EQ(with["children"].size(), 1u);
    EXPECT_EQ(with["subTree"]["core"], "Group");
    EXPECT_EQ(with["subTree"]["children"].size(), 1u);
}

TEST(SceneDump, ATreeThatVisitsItselfIsNullThere)
{
    Ptr<OSG::VisitSubTree> const visit(OSG::VisitSubTree::create());
    NodePtr const root = node(Ptr<OSG::Group>(OSG::Group::create()), {node(visit)});
    visit->setSubTreeRoot(root);
    OSG::Test::LogCapture log;
    Json const dumped = dump(root);
    EXPECT_TRUE(dumped["children"][0]["subTree"].is_null());
    EXPECT_FALSE(log.messages().empty());
    visit->setSubTreeRoot(nullptr);
}

TEST(SceneDump, NamesThatAreNoUtf8DoNotBreakIt)
{
    NodePtr const root = node(nullptr);
    OSG::setName(root, "M\xfc"
                       "ller \"x\"\n\x01");
    EXPECT_EQ(dump(root)["name"], "M\xef\xbf\xbd"
                                  "ller \"x\"\n\x01");
}

/// Counts what is written and keeps nothing.
class CountingBuffer : public std::streambuf
{
  public:
    std::map<char, std::size_t> counts;

  private:
    int_type overflow(int_type c) override
    {
        ++counts[static_cast<char>(c)];
        return c;
    }
    std::streamsize xsputn(char const *text, std::streamsize count) override
    {
        for(std::streamsize i = 0; i < count; ++i)
            if(text[i] == '{' || text[i] == '}' || text[i] == '\n')
                ++counts[text[i]];
        return count;
    }
};

// The path of a node is as long as the node is deep: the text grows with the square of the depth.
TEST(SceneDump, AChainOfThousandsOfNodesIsWritten)
{
    constexpr std::size_t Depth = 4000;
    NodePtr root = node(nullptr);
    for(std::size_t depth = 1; depth < Depth; ++depth)
        root = node(nullptr, {root});
    CountingBuffer buffer;
    std::ostream out(&buffer);
    JsonWriter json(out);
    write_tree(json, root, Arrays::Counted);
    EXPECT_EQ(buffer.counts['{'], Depth);
    EXPECT_EQ(buffer.counts['}'], Depth);
    print_tree(out, root);
    EXPECT_EQ(buffer.counts['\n'], Depth);
}

TEST(SceneDump, EachNodeHasItsPath)
{
    Ptr<OSG::VisitSubTree> const visit(OSG::VisitSubTree::create());
    NodePtr const other = node(nullptr, {node(nullptr), node(nullptr)});
    visit->setSubTreeRoot(other);
    NodePtr const root = node(nullptr, {node(nullptr), node(nullptr, {node(visit)})});
    Json const dumped = dump(root);
    EXPECT_EQ(dumped["path"], "/");
    EXPECT_EQ(dumped["children"][0]["path"], "/0");
    Json const &visiting = dumped["children"][1]["children"][0];
    EXPECT_EQ(visiting["path"], "/1/0");
    EXPECT_EQ(visiting["subTree"]["path"], "/1/0@/");
    EXPECT_EQ(visiting["subTree"]["children"][1]["path"], "/1/0@/1");
    std::ostringstream printed;
    print_tree(printed, root);
    EXPECT_NE(printed.str().find("/1/0@/1\n"), std::string::npos) << printed.str();
}

TEST(SceneDump, AVisitedTreeIsWrittenOnceAndNamedAfterwards)
{
    // Each level visits the one below it twice.
    NodePtr level = node(nullptr);
    for(int i = 0; i < 40; ++i)
    {
        Ptr<OSG::VisitSubTree> const visit(OSG::VisitSubTree::create());
        visit->setSubTreeRoot(level);
        level = node(nullptr, {node(visit), node(visit)});
    }
    Json const dumped = dump(level);
    EXPECT_LT(dumped.dump().size(), 100000u);
    EXPECT_EQ(dumped["children"][0]["subTree"]["path"], "/0@/");
    EXPECT_EQ(dumped["children"][1]["subTree"], Json({{"sameAs", "/0@/"}}));
    std::ostringstream printed;
    print_tree(printed, level);
    EXPECT_NE(printed.str().find("@ as at /0@/\n"), std::string::npos) << printed.str();
}

TEST(SceneDump, AMaskThatIsNotAllOnesIsShown)
{
    NodePtr const root = node(nullptr);
    root->setTravMask(6);
    EXPECT_EQ(keys_of(dump(root)), std::string(Plain) + " travMask");
    EXPECT_EQ(dump(root)["travMask"], 6);
}

Ptr<OSG::Geometry> triangle()
{
    Ptr<OSG::Geometry> geometry(OSG::Geometry::create());
    Ptr<OSG::GeoUInt8Property> const types(OSG::GeoUInt8Property::create());
    types->push_back(4);
    Ptr<OSG::GeoUInt32Property> const lengths(OSG::GeoUInt32Property::create());
    lengths->push_back(3);
    Ptr<OSG::GeoPnt3fProperty> const positions(OSG::GeoPnt3fProperty::create());
    positions->editValues() = {{0, 0, 0}, {0.1f, 0, 0}, {0, 1, 0}};
    geometry->setTypes(types);
    geometry->setLengths(lengths);
    geometry->setPositions(positions);
    return geometry;
}

constexpr char const *GeometryKeys =
    " types lengths positions normals colors texCoords indices sharedIndex material";

TEST(SceneDump, AGeometryHasItsArraysAsCounts)
{
    Json const root = dump(node(triangle()));
    EXPECT_EQ(keys_of(root), std::string(Plain) + GeometryKeys);
    EXPECT_EQ(root["types"], Json::parse("[4]"));
    EXPECT_EQ(root["lengths"], Json::parse("[3]"));
    EXPECT_EQ(root["positions"], Json::parse(R"({"count": 3})"));
    EXPECT_TRUE(root["normals"].is_null());
    EXPECT_EQ(keys_of(root["indices"]), "positions normals texCoords colors");
    EXPECT_TRUE(root["indices"]["positions"].is_null());
    EXPECT_EQ(root["sharedIndex"], false);
    EXPECT_TRUE(root["material"].is_null());
    EXPECT_EQ(keys_of(root["bounds"]), "min max");
}

TEST(SceneDump, AnEmptyGeometryHasAllKeys)
{
    Json const root = dump(node(Ptr<OSG::Geometry>(OSG::Geometry::create())));
    EXPECT_EQ(keys_of(root), std::string(Plain) + GeometryKeys);
    EXPECT_EQ(root["types"], Json::array());
    EXPECT_TRUE(root["positions"].is_null());
    EXPECT_TRUE(root["bounds"].is_null());
}

TEST(SceneDump, ArraysAreWrittenInTheShortestForm)
{
    std::string const text = text_of(node(triangle()), Arrays::Written);
    EXPECT_NE(text.find(R"("values":[[0,0,0],[0.1,0,0],[0,1,0]])"), std::string::npos) << text;
}

TEST(SceneDump, OneIndexInAllThreeSlotsIsShared)
{
    Ptr<OSG::Geometry> const geometry = triangle();
    Ptr<OSG::GeoUInt32Property> const index(OSG::GeoUInt32Property::create());
    for(OSG::UInt32 entry : {2u, 1u, 4294967295u})
        index->push_back(entry);
    geometry->setIndex(index, OSG::Geometry::PositionsSlot);
    geometry->setIndex(index, OSG::Geometry::NormalsSlot);
    EXPECT_EQ(dump(node(geometry))["sharedIndex"], false);
    geometry->setIndex(index, OSG::Geometry::TexCoordsSlot);
    Json const root = dump(node(geometry), Arrays::Written);
    EXPECT_EQ(root["sharedIndex"], true);
    EXPECT_EQ(root["indices"]["texCoords"],
              Json::parse(R"({"count": 3, "values": [2, 1, 4294967295]})"));
}

Json dump_of_material(OSG::Material *material)
{
    Ptr<OSG::MaterialGroup> const group(OSG::MaterialGroup::create());
    group->setMaterial(material);
    return dump(node(group))["material"];
}

constexpr char const *SimpleKeys =
    "type name ambient diffuse specular emission shininess transparency lit colorMaterial";

TEST(SceneDump, ASimpleMaterialHasItsColours)
{
    Ptr<OSG::SimpleMaterial> const material(OSG::SimpleMaterial::create());
    material->setDiffuse(OSG::Color3f(0.1f, 0.2f, 0.3f));
    OSG::setName(material, "paint");
    Json const dumped = dump_of_material(material);
    EXPECT_EQ(keys_of(dumped), SimpleKeys);
    EXPECT_EQ(dumped["name"], "paint");
    EXPECT_EQ(dumped["diffuse"], Json::parse("[0.1, 0.2, 0.3]"));
    EXPECT_TRUE(dump_of_material(nullptr).is_null());
}

TEST(SceneDump, ATexturedMaterialNamesItsImage)
{
    Ptr<OSG::SimpleTexturedMaterial> const material(OSG::SimpleTexturedMaterial::create());
    EXPECT_TRUE(dump_of_material(material)["image"].is_null());
    Ptr<OSG::Image> const image(OSG::Image::create());
    image->setName("/tiles.png");
    material->setImage(image);
    Json const dumped = dump_of_material(material);
    EXPECT_EQ(keys_of(dumped),
              std::string(SimpleKeys) + " image envMap envMode minFilter magFilter");
    EXPECT_EQ(dumped["image"], "/tiles.png");
}

TEST(SceneDump, AChunkMaterialHasItsChunksInOrder)
{
    Ptr<OSG::ChunkMaterial> const material(OSG::ChunkMaterial::create());
    material->addChunk(Ptr<OSG::TextureEnvChunk>(OSG::TextureEnvChunk::create()), 0);
    material->addChunk(Ptr<OSG::MaterialChunk>(OSG::MaterialChunk::create()), 0);
    material->addChunk(Ptr<OSG::BlendChunk>(OSG::BlendChunk::create()), 0);
    material->addChunk(Ptr<OSG::TextureObjChunk>(OSG::TextureObjChunk::create()), 0);
    Json const dumped = dump_of_material(material);
    EXPECT_EQ(keys_of(dumped), "type name chunks");
    ASSERT_EQ(dumped["chunks"].size(), 4u);
    EXPECT_EQ(keys_of(dumped["chunks"][0]), "type envMode");
    EXPECT_EQ(keys_of(dumped["chunks"][1]),
              "type ambient diffuse specular emission shininess lit colorMaterial");
    EXPECT_EQ(dumped["chunks"][1]["ambient"].size(), 4u);
    EXPECT_EQ(keys_of(dumped["chunks"][2]), "type srcFactor destFactor");
    EXPECT_EQ(keys_of(dumped["chunks"][3]), "type image wrapS wrapT wrapR minFilter magFilter");
}

TEST(SceneDump, ASwitchMaterialTwiceInOneIsWrittenTwice)
{
    Ptr<OSG::SwitchMaterial> const outer(OSG::SwitchMaterial::create());
    Ptr<OSG::SwitchMaterial> const inner(OSG::SwitchMaterial::create());
    Ptr<OSG::SimpleMaterial> const paint(OSG::SimpleMaterial::create());
    inner->editMFMaterials()->push_back(paint);
    inner->setChoice(7);
    outer->editMFMaterials()->push_back(inner);
    outer->editMFMaterials()->push_back(inner);
    Json const dumped = dump_of_material(outer);
    ASSERT_EQ(dumped["materials"].size(), 2u);
    EXPECT_EQ(dumped["materials"][0]["choice"], 7);
    EXPECT_EQ(dumped["materials"][1], dumped["materials"][0]);
}

TEST(SceneDump, ASwitchMaterialWithinItselfHasAllButItsChoices)
{
    Ptr<OSG::SwitchMaterial> const material(OSG::SwitchMaterial::create());
    Ptr<OSG::SimpleMaterial> const paint(OSG::SimpleMaterial::create());
    material->editMFMaterials()->push_back(paint);
    material->editMFMaterials()->push_back(material);
    Json const dumped = dump_of_material(material);
    EXPECT_EQ(keys_of(dumped), "type name choice materials");
    EXPECT_EQ(dumped["materials"][0]["type"], "SimpleMaterial");
    EXPECT_EQ(keys_of(dumped["materials"][1]), "type name choice");
    material->editMFMaterials()->clear();
}

TEST(SceneDump, SwitchMaterialsInPairsOrInALongRowAreShownInBounds)
{
    for(int const copies : {1, 2})
    {
        Ptr<OSG::SwitchMaterial> outermost(OSG::SwitchMaterial::create());
        for(int level = 0; level < 50000 / copies; ++level)
        {
            Ptr<OSG::SwitchMaterial> const around(OSG::SwitchMaterial::create());
            for(int i = 0; i < copies; ++i)
                around->editMFMaterials()->push_back(outermost);
            outermost = around;
        }
        EXPECT_LT(dump_of_material(outermost).dump().size(), 1000000u);
    }
}

TEST(SceneDump, AnOverrideGroupHasItsMaterial)
{
    Ptr<OSG::MaterialChunkOverrideGroup> const group(OSG::MaterialChunkOverrideGroup::create());
    EXPECT_EQ(keys_of(dump(node(group))), std::string(Plain) + " material");
}

TEST(SceneDump, AttachmentsAreShownWithTheirFields)
{
    Ptr<OSG::Group> const core(OSG::Group::create());
    NodePtr const root = node(core);
    OSG::setName(root, "named");
    EXPECT_EQ(keys_of(dump(root)), Plain);
    Ptr<OSG::CommandNameAttachment> const command(OSG::CommandNameAttachment::create());
    command->setCommand("open 5, 6");
    root->addAttachment(command);
    core->addAttachment(command);
    Json const dumped = dump(root);
    EXPECT_EQ(keys_of(dumped), std::string(Plain) + " attachments");
    ASSERT_EQ(dumped["attachments"].size(), 2u);
    EXPECT_EQ(dumped["attachments"][0],
              Json::parse(R"({"type": "CommandNameAttachment", "on": "node",
                              "Command": "open 5, 6"})"));
    EXPECT_EQ(dumped["attachments"][1]["on"], "core");
}
} // namespace
} // namespace Tool::Test
