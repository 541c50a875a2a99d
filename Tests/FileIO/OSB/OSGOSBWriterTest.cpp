#include "OSGOSBWriter.h"

#include <fstream>
#include <iterator>

#include <gtest/gtest.h>

#include "LogCapture.h"
#include "OSGName.h"
#include "OsbScenes.h"
#include "SceneInvariants.h"

namespace OSG
{
namespace
{
using namespace OSG::Test;

// --- what is left out ---

TEST(OSBWriter, WhatANewContainerHoldsIsNotWritten)
{
    NodePtr const plain = make_group();
    NodePtr const masked = make_group();
    masked->setTravMask(5);
    std::string const bytes = osb_bytes(plain);
    EXPECT_EQ(bytes.find("travMask"), std::string::npos);
    EXPECT_EQ(bytes.find("attachments"), std::string::npos);
    EXPECT_NE(osb_bytes(masked).find("travMask"), std::string::npos);
}

TEST(OSBWriter, APrototypeOfTheHostChangesNothingInAFile)
{
    NodePtr const node = make_group();
    node->setTravMask(~UInt32(0));
    std::string const bytes = osb_bytes(node);
    auto &prototype = dynamic_cast<Node &>(*Node::getClassType().getPrototype());
    prototype.setTravMask(7);
    NodePtr const back = osb_scene(bytes);
    std::string const bytesOfHost = osb_bytes(node);
    prototype.setTravMask(~UInt32(0));
    ASSERT_NE(back, nullptr);
    EXPECT_EQ(back->getTravMask(), ~UInt32(0));
    EXPECT_EQ(bytesOfHost, bytes);
}

TEST(OSBWriter, NamesStandOnceInAFile)
{
    NodePtr const root = make_group();
    for(int i = 0; i < 10; ++i)
    {
        root->addChild(make_group());
        setName(root->getChild(i), "same");
    }
    std::string const bytes = osb_bytes(root);
    for(char const *name : {"Node", "Group", "Name", "attachments", "children", "SFString"})
    {
        std::string const text = std::string(name) + '\0';
        std::size_t const first = bytes.find(text);
        ASSERT_NE(first, std::string::npos) << name;
        EXPECT_EQ(bytes.find(text, first + 1), std::string::npos) << name;
    }
}

// --- files of former times ---

TEST(OSBWriter, AFileOfVersion0200IsStillRead)
{
    LogCapture const log;
    std::ifstream file(TEST_SOURCE_DIR "/Tests/FileIO/OSB/plant-0200.osb", std::ios::binary);
    std::string const old((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    ASSERT_GT(old.size(), 80000u);
    NodePtr const scene = osb_scene(old);
    ASSERT_NE(scene, nullptr);
    EXPECT_EQ(fault_of_scene(scene, Parts::Any), "");
    std::ifstream today(TEST_SOURCE_DIR "/Models/plant.osb", std::ios::binary);
    std::string const expected((std::istreambuf_iterator<char>(today)),
                               std::istreambuf_iterator<char>());
    EXPECT_TRUE(osb_bytes(scene) == expected);
    EXPECT_LT(expected.size(), old.size());
    EXPECT_TRUE(log.texts(LOG_WARNING).empty());
}
} // namespace
} // namespace OSG
