#include "OSGOSBSceneFileType.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "GeometryBuilders.h"
#include "LogCapture.h"
#include "OSGChunkMaterial.h"
#include "OSGCommandNameAttachment.h"
#include "OSGFieldContainerFactory.h"
#include "OSGLight.h"
#include "OSGMaterialGroup.h"
#include "OSGName.h"
#include "OSGPointLight.h"
#include "OSGSceneFileHandler.h"
#include "OSGWalkConsoleAttachment.h"
#include "OsbScenes.h"
#include "TempFolder.h"

namespace OSG
{
namespace
{
using namespace OSG::Test;

UInt32 num_containers() { return FieldContainerFactoryBase::the()->getNumContainers(); }

TEST(OSBSceneFileType, ServesItsSuffixInBothDirections)
{
    for(UInt32 flag : {IOFileTypeBase::ReadSupported, IOFileTypeBase::WriteSupported})
        EXPECT_EQ(SceneFileHandlerBase::the()->getFileType("osb", flag), &OSBSceneFileType::the());
}

TEST(OSBSceneFileType, ANodeWithoutAnythingComesBack)
{
    NodePtr const node(Node::create());
    node->setTravMask(5);
    NodePtr const back = through_osb(node);
    ASSERT_NE(back, nullptr);
    EXPECT_EQ(back->getTravMask(), 5u);
    EXPECT_EQ(back->getCore(), nullptr);
    EXPECT_EQ(back->getNChildren(), 0u);
    EXPECT_EQ(back->getRefCount(), 1);
}

TEST(OSBSceneFileType, AReadSceneHasNoOpenEdits)
{
    NodePtr const back = through_osb(make_node(make_geometry(one_primitive(
        TrianglesPrimitive, {Pnt3f(0.f, 0.f, 0.f), Pnt3f(1.f, 0.f, 0.f), Pnt3f(0.f, 1.f, 0.f)}))));
    ASSERT_NE(back, nullptr);
    Geometry const &geometry = dynamic_cast<Geometry const &>(*back->getCore());
    EXPECT_EQ(back->getChangeMask(), 0u);
    EXPECT_EQ(geometry.getChangeMask(), 0u);
    EXPECT_EQ(geometry.getPositions()->getChangeMask(), 0u);
}

TEST(OSBSceneFileType, ChildrenKeepTheirOrderAndNames)
{
    NodePtr const root = make_group({make_group(), make_group({make_group()}), make_group()});
    for(UInt32 i = 0; i < 3; ++i)
        setName(root->getChild(i), std::to_string(i).c_str());
    NodePtr const back = through_osb(root);
    ASSERT_NE(back, nullptr);
    ASSERT_EQ(back->getNChildren(), 3u);
    for(UInt32 i = 0; i < 3; ++i)
    {
        EXPECT_STREQ(getName(back->getChild(i)), std::to_string(i).c_str());
        EXPECT_EQ(back->getChild(i)->getParent(), back);
    }
    EXPECT_EQ(back->getChild(1)->getNChildren(), 1u);
}

TEST(OSBSceneFileType, WhatIsSharedIsStoredOnceAndSharedAgain)
{
    GeometryPtr const geometry = make_geometry(one_primitive(
        TrianglesPrimitive, {Pnt3f(0.f, 0.f, 0.f), Pnt3f(1.f, 0.f, 0.f), Pnt3f(0.f, 1.f, 0.f)}));
    NodePtr const root = make_group({make_node(geometry), make_node(geometry)});
    NodePtr const back = through_osb(root);
    ASSERT_NE(back, nullptr);
    EXPECT_EQ(back->getChild(0)->getCore(), back->getChild(1)->getCore());
    EXPECT_EQ(back->getChild(0)->getCore()->getRefCount(), 2);
    auto const &copy = dynamic_cast<Geometry const &>(*back->getChild(0)->getCore());
    EXPECT_EQ(copy.getPositions()->size(), 3u);
}

TEST(OSBSceneFileType, VolumesAreFoundAnew)
{
    GeometryPtr const geometry = make_geometry(one_primitive(
        TrianglesPrimitive, {Pnt3f(0.f, 0.f, 0.f), Pnt3f(1.f, 0.f, 0.f), Pnt3f(0.f, 1.f, 0.f)}));
    NodePtr const root = make_group({make_node(geometry)});
    root->editVolume().setBounds(Pnt3f(-9.f, -9.f, -9.f), Pnt3f(9.f, 9.f, 9.f));
    NodePtr const back = through_osb(root);
    back->updateVolume();
    EXPECT_EQ(back->getVolume().getMax(), Pnt3f(1.f, 1.f, 0.f));
}

TEST(OSBSceneFileType, AttachmentsOfTheLibraryComeBackOnNodesAndCores)
{
    NodePtr const root = make_group();
    UnrecordedRefPtr<CommandNameAttachment> const command(CommandNameAttachment::create());
    command->setCommand("open valve");
    root->addAttachment(command);
    UnrecordedRefPtr<WalkConsoleAttachment> const console(WalkConsoleAttachment::create());
    console->addMark(Pnt3f(1.f, 2.f, 3.f), Pnt3f(), Vec3f(), "door", true);
    root->getCore()->addAttachment(console);
    NodePtr const back = through_osb(root);
    ASSERT_NE(back, nullptr);
    auto *const commandBack = dynamic_cast<CommandNameAttachment *>(
        back->findAttachment(CommandNameAttachment::getClassGroupId()));
    ASSERT_NE(commandBack, nullptr);
    EXPECT_EQ(commandBack->getCommand(), "open valve");
    auto *const consoleBack = dynamic_cast<WalkConsoleAttachment *>(
        back->getCore()->findAttachment(WalkConsoleAttachment::getClassGroupId()));
    ASSERT_NE(consoleBack, nullptr);
    EXPECT_TRUE(consoleBack->hasMark(true));
}

TEST(OSBSceneFileType, ABeaconWithinTheSceneIsKeptAndOneOutsideBecomesNull)
{
    UnrecordedRefPtr<PointLight> const light(PointLight::create());
    NodePtr const lamp = make_node(light);
    NodePtr const beacon = make_group();
    light->setBeacon(beacon);
    NodePtr const root = make_group({lamp, beacon});
    NodePtr const all = through_osb(root);
    ASSERT_NE(all, nullptr);
    EXPECT_EQ(dynamic_cast<Light &>(*all->getChild(0)->getCore()).getBeacon(), all->getChild(1));
    NodePtr const part = through_osb(lamp);
    ASSERT_NE(part, nullptr);
    EXPECT_EQ(dynamic_cast<Light &>(*part->getCore()).getBeacon(), nullptr);
}

TEST(OSBSceneFileType, AVisitedTreeAndAVisitOfAnAncestorComeBack)
{
    UnrecordedRefPtr<VisitSubTree> const visit(VisitSubTree::create());
    NodePtr const root = make_group({make_node(visit)});
    visit->setSubTreeRoot(root);
    NodePtr const back = through_osb(root);
    ASSERT_NE(back, nullptr);
    auto &core = dynamic_cast<VisitSubTree &>(*back->getChild(0)->getCore());
    EXPECT_EQ(core.getSubTreeRoot(), back);
    core.setSubTreeRoot(nullptr);
    visit->setSubTreeRoot(nullptr);
}

TEST(OSBSceneFileType, TheSameSceneGivesTheSameBytes)
{
    NodePtr const root = make_group({make_group(), make_group({make_group()})});
    std::string const first = osb_bytes(root);
    make_group();
    EXPECT_EQ(osb_bytes(root), first);
    EXPECT_EQ(osb_bytes(osb_scene(first)), first);
}

TEST(OSBSceneFileType, AChainOfAHundredThousandGroupsComesBack)
{
    constexpr UInt32 Depth = 100000;
    NodePtr root = make_group();
    for(UInt32 i = 1; i < Depth; ++i)
        root = make_group({root});
    NodePtr const back = through_osb(root);
    UInt32 depth = 0;
    for(Node const *at = back; at != nullptr;
        at = at->getNChildren() != 0 ? at->getChild(0) : nullptr)
        ++depth;
    EXPECT_EQ(depth, Depth);
}

TEST(OSBSceneFileType, OnlyTheSubtreeIsWritten)
{
    NodePtr const leaf = make_group();
    NodePtr const root = make_group({leaf, make_group({make_group()})});
    NodePtr const back = through_osb(leaf);
    EXPECT_EQ(back->getNChildren(), 0u);
    EXPECT_EQ(back->getParent(), nullptr);
}

TEST(OSBSceneFileType, WithoutASceneNothingIsWritten)
{
    LogCapture log;
    EXPECT_EQ(osb_bytes(nullptr), "");
    EXPECT_EQ(log.texts(LOG_WARNING),
              std::vector<std::string>{"OSB: there is no scene to write\n"});
}

TEST(OSBSceneFileType, AStreamThatTakesNoMoreIsReported)
{
    LogCapture log;
    std::ostringstream out;
    out.setstate(std::ios::badbit);
    EXPECT_FALSE(OSBSceneFileType::the().write(make_group(), out, "osb"));
    EXPECT_THAT(log.texts(LOG_WARNING),
                testing::ElementsAre(testing::StartsWith("OSB: the scene could not be written: ")));
}

// --- files by hand: a file without a scene gives null and a log line ---

struct BadFile
{
    char const *what;
    OsbText file;
    char const *reason;
};

void PrintTo(BadFile const &file, std::ostream *out) { *out << file.what; }

OsbText begin_of(UInt32 version) { return OsbText().signature(version); }
OsbText begin() { return begin_of(0x0200); }

std::vector<BadFile> bad_files_of(UInt32 version)
{
    auto const begin = [version] { return begin_of(version); };
    char const *const ends = "BinaryDataHandler: the stream ends early";
    char const *const longer = "a field is longer than its content";
    char const *const shorter = "BinaryDataHandler: the bytes end early";
    return {
        {"empty", OsbText(), ends},
        {"another signature", OsbText().raw("\x89PNG\r\n\x1a\n", 8).u16(0x0200),
         "its first bytes are not those of an OSB file"},
        {"another version", OsbText().raw("\x89OSB\r\n\x1a\n", 8).u16(0x0201),
         "its version is unknown"},
        {"no container", begin().end(), "its first container is not a node"},
        {"first a core", begin().record("Group").end().end(), "its first container is not a node"},
        {"first an unknown type", begin().record("Nodes").end().end(),
         "its first container is not a node"},
        {"first an abstract type", begin().record("StateChunk").end().end(),
         "its first container is not a node"},
        {"an unknown type without end", begin().record("Node").end().record("Nodes"), ends},
        {"no end", begin().record("Node").end(), ends},
        {"a content that is too long",
         begin().record("Node").field("travMask", "SFUInt32", 5).u32(1).u8(0).end().end(), longer},
        {"a content that is too short",
         begin().record("Node").field("travMask", "SFUInt32", 3).u16(1).u8(0).end().end(), shorter},
        {"a content of four billion bytes",
         begin().record("Node").field("travMask", "SFUInt32", 0xffffffff).u32(1), ends},
        {"four billion children",
         begin().record("Node").field("children", "MFUnrecNodePtr", 4).u32(0xffffffff).end().end(),
         shorter},
        {"a pointer out of the file",
         begin().record("Node").field("core", "SFUnrecNodeCorePtr", 4).u32(2).end().end(),
         "a pointer leads out of the file"},
        {"a node as a core",
         begin().record("Node").field("core", "SFUnrecNodeCorePtr", 4).u32(1).end().end(),
         "a pointer leads to a container of another kind"},
        {"a core as a child",
         begin().record("Node").children({2}).end().record("Group").end().end(),
         "a pointer leads to a container of another kind"},
        {"its own child", begin().record("Node").children({1}).end().end(),
         "a node has two parents"},
        {"a child twice", begin().record("Node").children({2, 2}).end().record("Node").end().end(),
         "a node has two parents"},
        {"a type name with a zero byte",
         begin().typeName(std::string("Node\0x", 6)).u8(1).u16(0x0200).end().end(),
         "a name holds a zero byte"},
        {"a field name with a zero byte",
         begin().record("Node").field(std::string("volume\0x", 8), "SFBoxVolume", 0).end().end(),
         "a name holds a zero byte"},
        {"two lists of children",
         begin()
             .record("Node")
             .children({2})
             .children({3})
             .end()
             .record("Node")
             .end()
             .record("Node")
             .end()
             .end(),
         "a field of pointers comes twice"},
        {"a cycle beside the tree",
         begin()
             .record("Node")
             .end()
             .record("Node")
             .children({3})
             .end()
             .record("Node")
             .children({2})
             .end()
             .end(),
         "a node is its own ancestor"},
    };
}

std::vector<BadFile> bad_files()
{
    std::vector<BadFile> all = bad_files_of(0x0200);
    for(BadFile &file : bad_files_of(0x0300))
        all.push_back(std::move(file));
    char const *const ends = "BinaryDataHandler: the stream ends early";
    all.push_back({"a type name without end", begin().u32(0xffffffff).raw("Node", 4), ends});
    all.push_back({"a numbered type name without end",
                   begin_of(0x0300).u16(1).u32(0xffffffff).raw("Node", 4), ends});
    all.push_back({"a type before it is named", begin_of(0x0300).u16(2).text("Node"),
                   "the number of a name is beyond the next new one"});
    all.push_back({"a field before it is named", begin_of(0x0300).record("Node").u16(7),
                   "the number of a name is beyond the next new one"});
    return all;
}

class OSBBadFile : public testing::TestWithParam<BadFile>
{
};

TEST_P(OSBBadFile, GivesNullAndALineAndLeavesNothing)
{
    LogCapture log;
    UInt32 const before = num_containers();
    EXPECT_EQ(osb_scene(GetParam().file.bytes()), nullptr);
    ASSERT_FALSE(log.texts(LOG_WARNING).empty());
    EXPECT_EQ(log.texts(LOG_WARNING).back(),
              std::string("OSB: no scene: ") + GetParam().reason + "\n");
    EXPECT_EQ(num_containers(), before);
}

INSTANTIATE_TEST_SUITE_P(Osb, OSBBadFile, testing::ValuesIn(bad_files()));

TEST(OSBSceneFileType, WhatAContainerDoesNotHaveIsPassedOverWithAWarning)
{
    LogCapture log;
    OsbText file = begin().record("Node");
    file.field("colour", "SFUInt32", 4).u32(7);
    file.field("travMask", "SFInt32", 4).u32(7);
    file.field("travMask", "SFUInt32", 4).u32(9).end().end();
    NodePtr const node = osb_scene(file.bytes());
    ASSERT_NE(node, nullptr);
    EXPECT_EQ(node->getTravMask(), 9u);
    EXPECT_EQ(log.texts(LOG_WARNING),
              (std::vector<std::string>{
                  "OSB: Node has no field colour of type SFUInt32, it is passed over\n",
                  "OSB: Node has no field travMask of type SFInt32, it is passed over\n"}));
}

TEST(OSBSceneFileType, AStoredVolumeIsNotBelieved)
{
    LogCapture const log;
    OsbText file = begin().record("Node").field("volume", "SFBoxVolume", 3).u16(1).u8(1);
    EXPECT_NE(osb_scene(file.end().end().bytes()), nullptr);
}

TEST(OSBSceneFileType, NullChildrenAndCoresAreAllowed)
{
    OsbText file = begin().record("Node").children({0, 2, 0});
    file.field("core", "SFUnrecNodeCorePtr", 4).u32(0).end().record("Node").end().end();
    NodePtr const node = osb_scene(file.bytes());
    ASSERT_NE(node, nullptr);
    EXPECT_EQ(node->getNChildren(), 1u);
}

TEST(OSBSceneFileType, ContainersThatNothingPointsToAreDropped)
{
    UInt32 const before = num_containers();
    NodePtr node = osb_scene(begin().record("Node").end().record("Group").end().end().bytes());
    ASSERT_NE(node, nullptr);
    EXPECT_EQ(num_containers(), before + 1);
}

TEST(OSBSceneFileType, CirclesBesideTheSceneAreDroppedToo)
{
    UInt32 const before = num_containers();
    OsbText file = begin().record("Node").end();
    file.record("SwitchMaterial").field("materials", "MFUnrecMaterialPtr", 8).u32(1).u32(2).end();
    NodePtr const node = osb_scene(file.end().bytes());
    ASSERT_NE(node, nullptr);
    EXPECT_EQ(num_containers(), before + 1);
}

TEST(OSBSceneFileType, NumbersMayComeInAnyOrder)
{
    // The root, then a chain from the last record back to the second, which has the leaves.
    constexpr UInt32 Depth = 2000;
    OsbText file = begin().record("Node").children({Depth}).end();
    file.record("Node").children({Depth + 1, Depth + 2}).end();
    for(UInt32 number = 3; number <= Depth; ++number)
        file.record("Node").children({number - 1}).end();
    file.record("Node").end().record("Node").end();
    NodePtr const root = osb_scene(file.end().bytes());
    ASSERT_NE(root, nullptr);
    UInt32 depth = 1;
    Node const *at = root;
    for(; at->getNChildren() == 1; at = at->getChild(0))
        ++depth;
    EXPECT_EQ(depth, Depth);
    EXPECT_EQ(at->getNChildren(), 2u);
}

TEST(OSBSceneFileType, APartThatShowsWhatItIsAPartOfIsNotWritten)
{
    LogCapture log;
    UnrecordedRefPtr<VisitSubTree> const visit(VisitSubTree::create());
    NodePtr const part = make_node(visit);
    NodePtr const root = make_group({part});
    visit->setSubTreeRoot(root);
    EXPECT_EQ(osb_bytes(part), "");
    EXPECT_EQ(
        log.texts(LOG_WARNING),
        std::vector<std::string>{"OSB: the scene could not be written: the part shows what it "
                                 "is a part of\n"});
    visit->setSubTreeRoot(nullptr);
}

TEST(OSBSceneFileType, AttachmentsThatAreNullAreLeftOutAndThoseThatComeTwiceStay)
{
    OsbText file = begin().record("Node");
    file.field("attachments", "MFUnrecAttachmentPtr", 20).u32(4).u32(0).u32(2).u32(2).u32(3).end();
    file.record("Name").end().record("Name").end();
    NodePtr const node = osb_scene(file.end().bytes());
    ASSERT_NE(node, nullptr);
    EXPECT_NE(getName(node), nullptr);
    EXPECT_EQ(node->getMFAttachments()->size(), 3u);
    EXPECT_FALSE(osb_bytes(node).empty());
}

} // namespace
} // namespace OSG
