#include "OSGOSBReader.h"

#include <gtest/gtest.h>

#include "LogCapture.h"
#include "OSGChunkMaterial.h"
#include "OSGFieldContainerFactory.h"
#include "OSGMaterialChunk.h"
#include "OSGMaterialGroup.h"
#include "OSGSceneFileHandler.h"
#include "OSGSwitchMaterial.h"
#include "OsbScenes.h"

namespace OSG
{
namespace
{
using namespace OSG::Test;

UInt32 num_containers() { return FieldContainerFactoryBase::the()->getNumContainers(); }

constexpr UInt32 Versions[] = {0x0200, 0x0300};

OsbText begin_of(UInt32 version) { return OsbText().signature(version); }
OsbText begin() { return begin_of(0x0200); }

// --- types that the process does not have ---

TEST(OSBReader, ARecordOfAnUnknownTypeIsPassedOverWithOneWarningForTheType)
{
    for(UInt32 version : Versions)
    {
        LogCapture log;
        OsbText file = begin_of(version).record("Node").children({2, 3, 4, 5});
        file.pointers("attachments", "MFUnrecAttachmentPtr", {6, 7});
        file.pointer("core", "SFUnrecNodeCorePtr", 8).end();
        file.record("Node").end();
        for(int i = 0; i < 2; ++i)
            file.record("NodeOfTomorrow").field("weight", "SFReal32", 4).u32(7).end();
        file.record("Node").end();
        file.record("TagOfTomorrow").end().record("Name").end().record("StateChunk").end();
        NodePtr const node = osb_scene(file.end().bytes());
        ASSERT_NE(node, nullptr);
        EXPECT_EQ(node->getNChildren(), 2u);
        EXPECT_EQ(node->getCore(), nullptr);
        EXPECT_EQ(node->getMFAttachments()->size(), 1u);
        EXPECT_EQ(log.texts(LOG_WARNING),
                  (std::vector<std::string>{
                      "OSB: there is no container type 'NodeOfTomorrow', it is passed over\n",
                      "OSB: there is no container type 'TagOfTomorrow', it is passed over\n",
                      "OSB: there is no container type 'StateChunk', it is passed over\n"}));
    }
}

TEST(OSBReader, AnUnknownChunkLeavesTheOtherChunksTheirSlots)
{
    LogCapture const silence;
    OsbText file = begin().record("Node").pointer("core", "SFUnrecNodeCorePtr", 2).end();
    file.record("MaterialGroup").pointer("material", "SFUnrecMaterialPtr", 3).end();
    file.record("ChunkMaterial").pointers("chunks", "MFUnrecStateChunkPtr", {4, 5, 6});
    file.field("slots", "MFInt32", 16).u32(3).u32(3).u32(5).u32(7).end();
    file.record("MaterialChunk").end().record("ChunkOfTomorrow").end();
    NodePtr const node = osb_scene(file.record("MaterialChunk").end().end().bytes());
    ASSERT_NE(node, nullptr);
    auto const &material = dynamic_cast<ChunkMaterial const &>(
        *dynamic_cast<MaterialGroup const &>(*node->getCore()).getMaterial());
    ASSERT_EQ(material.getMFChunks()->size(), 2u);
    EXPECT_EQ(material.getSlots(), (MField<Int32>{3, 7}));
}

TEST(OSBReader, AReadThatLeavesPartsOutIsNotComplete)
{
    LogCapture const silence;
    auto const is_complete = [](OsbText const &file)
    {
        std::istringstream in(file.bytes());
        NodePtr const scene(SceneFileHandlerBase::the()->read(in, "osb"));
        EXPECT_NE(scene, nullptr);
        return SceneFileHandlerBase::the()->wasLastReadComplete();
    };
    EXPECT_TRUE(is_complete(begin().record("Node").end().end()));
    EXPECT_FALSE(is_complete(begin().record("Node").end().record("NodeOfTomorrow").end().end()));
    OsbText circle = begin().record("Node");
    circle.pointers("attachments", "MFUnrecAttachmentPtr", {2}).end();
    circle.record("Name").pointers("attachments", "MFUnrecAttachmentPtr", {2}).end();
    EXPECT_FALSE(is_complete(circle.end()));
}

// --- circles ---

TEST(OSBReader, APointerThatWouldCloseACircleIsNullWithAWarning)
{
    for(UInt32 version : Versions)
    {
        UInt32 const before = num_containers();
        LogCapture log;
        OsbText file = begin_of(version).record("Node");
        file.pointer("core", "SFUnrecNodeCorePtr", 2).end();
        file.record("MaterialGroup").pointer("material", "SFUnrecMaterialPtr", 3).end();
        file.record("SwitchMaterial").pointers("materials", "MFUnrecMaterialPtr", {4, 4, 3}).end();
        file.record("SwitchMaterial").pointers("materials", "MFUnrecMaterialPtr", {3, 5}).end();
        file.record("SwitchMaterial").end();
        NodePtr node = osb_scene(file.end().bytes());
        ASSERT_NE(node, nullptr);
        auto const &outer = dynamic_cast<SwitchMaterial const &>(
            *dynamic_cast<MaterialGroup const &>(*node->getCore()).getMaterial());
        auto const &inner = dynamic_cast<SwitchMaterial const &>(*outer.getMaterials(0));
        EXPECT_EQ(outer.getMaterials(1), &inner);
        EXPECT_EQ(outer.getMaterials(2), nullptr);
        EXPECT_EQ(inner.getMaterials(0), nullptr);
        EXPECT_NE(inner.getMaterials(1), nullptr);
        EXPECT_EQ(log.texts(LOG_WARNING),
                  std::vector<std::string>{"OSB: pointers that would close a circle of counted "
                                           "references are null: 2\n"});
        node = nullptr;
        EXPECT_EQ(num_containers(), before);
    }
}

TEST(OSBReader, AnAttachmentThatHangsOnItselfIsLeftOut)
{
    LogCapture log;
    UInt32 const before = num_containers();
    OsbText file =
        begin().record("Node").pointers("attachments", "MFUnrecAttachmentPtr", {2}).end();
    file.record("Name").pointers("attachments", "MFUnrecAttachmentPtr", {2, 3}).end();
    NodePtr node = osb_scene(file.record("Name").end().end().bytes());
    ASSERT_NE(node, nullptr);
    EXPECT_EQ(node->getAttachments(0)->getMFAttachments()->size(), 1u);
    node = nullptr;
    EXPECT_EQ(num_containers(), before);
    EXPECT_EQ(log.texts(LOG_WARNING).size(), 1u);
}
} // namespace
} // namespace OSG
