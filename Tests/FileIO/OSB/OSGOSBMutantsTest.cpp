/// \file
/// Damaged files: cut off at every byte, with flipped bytes, and made of random bytes.

#include <fstream>
#include <iterator>
#include <random>

#include <gtest/gtest.h>

#include "LogCapture.h"
#include "OSGFieldContainerFactory.h"
#include "OSGMemManager.h"
#include "OSGSceneFileHandler.h"
#include "OsbScenes.h"
#include "SceneInvariants.h"

namespace OSG
{
namespace
{
using namespace OSG::Test;

/// The mesh of a real model that takes the fewest bytes, with its material.
std::string const &model_bytes()
{
    static std::string const bytes = []
    {
        NodePtr const model(
            SceneFileHandlerBase::the()->read(TEST_SOURCE_DIR "/Models/pavilion.obj"));
        std::string least;
        for(UInt32 i = 0; model != nullptr && i < model->getNChildren(); ++i)
        {
            std::string const mesh = osb_bytes(model->getChild(i));
            if(least.empty() || mesh.size() < least.size())
                least = mesh;
        }
        return least;
    }();
    return bytes;
}

enum class Expected
{
    Anything,
    NoScene
};

/// Reads, uses and drops a scene within the bounds that a host may rely on.
void read_within_bounds(std::string const &bytes, Expected expected)
{
    LogCapture const silence;
    UInt64 const before = get_mem_bytes();
    reset_mem_peak();
    NodePtr const root = osb_scene(bytes);
    EXPECT_EQ(fault_of_scene(root, Parts::Any), "");
    EXPECT_LE(get_mem_peak_bytes() - before, read_memory_bound(bytes.size()));
    if(expected == Expected::NoScene)
    {
        EXPECT_EQ(root, nullptr);
        EXPECT_FALSE(silence.texts(LOG_WARNING).empty());
    }
}

TEST(OSBMutants, TheModelIsAScene)
{
    EXPECT_GT(model_bytes().size(), 1000u);
    EXPECT_NE(osb_scene(model_bytes()), nullptr);
}

TEST(OSBMutants, CutOffAtAnyByteThereIsNoScene)
{
    UInt32 const containers = FieldContainerFactoryBase::the()->getNumContainers();
    for(std::size_t length = 0; length < model_bytes().size() && !HasFailure(); ++length)
        read_within_bounds(model_bytes().substr(0, length), Expected::NoScene);
    EXPECT_EQ(FieldContainerFactoryBase::the()->getNumContainers(), containers);
}

TEST(OSBMutants, FlippedBytesAreSurvived)
{
    std::mt19937 random(4501);
    for(int round = 0; round < 6000 && !HasFailure(); ++round)
    {
        SCOPED_TRACE(round);
        std::string bytes = model_bytes();
        for(std::size_t count = 1 + random() % 3; count > 0; --count)
            bytes[random() % bytes.size()] ^= static_cast<char>(1 + random() % 255);
        read_within_bounds(bytes, Expected::Anything);
    }
}

// Most bytes of a file are array values, where any value is valid. This test changes the numbers
// that control the reader.
TEST(OSBMutants, WildCountsAndNumbersAreSurvived)
{
    std::mt19937 random(4502);
    UInt32 const wild[] = {0, 1, 2, 0x7fffffff, 0x80000000, 0xffffffff, 0x00010000};
    for(int round = 0; round < 4000 && !HasFailure(); ++round)
    {
        SCOPED_TRACE(round);
        std::string bytes = model_bytes();
        std::size_t const place = random() % (bytes.size() - 4);
        UInt32 const value = wild[random() % 7];
        for(int i = 0; i < 4; ++i)
            bytes[place + i] = static_cast<char>(value >> (8 * i));
        read_within_bounds(bytes, Expected::Anything);
    }
}

TEST(OSBMutants, PiecesMovedAboutAreSurvived)
{
    std::mt19937 random(4503);
    for(int round = 0; round < 2000 && !HasFailure(); ++round)
    {
        SCOPED_TRACE(round);
        std::string bytes = model_bytes();
        std::string const piece = bytes.substr(random() % bytes.size(), random() % 400);
        bytes.insert(random() % bytes.size(), piece);
        bytes.erase(random() % bytes.size(), random() % 400);
        read_within_bounds(bytes, Expected::Anything);
    }
}

TEST(OSBMutants, BytesOfAnyKindGiveNoScene)
{
    std::mt19937 random(4504);
    for(int round = 0; round < 1000; ++round)
    {
        std::string bytes = OsbText().signature(round % 2 == 0 ? 0x0200 : 0x0300).bytes();
        for(std::size_t count = random() % 300; count > 0; --count)
            bytes += static_cast<char>(random());
        read_within_bounds(bytes, Expected::NoScene);
    }
}

TEST(OSBMutants, ManyEmptyContainersKeepTheBound)
{
    for(UInt32 version : {0x0200, 0x0300})
    {
        for(char const *type : {"Node", "Geometry", "SpotLight", "WalkConsoleAttachment"})
        {
            OsbText file;
            file.signature(version).record("Node").end();
            for(int i = 0; i < 600000; ++i)
                file.record(type).end();
            read_within_bounds(file.end().bytes(), Expected::Anything);
        }
    }
}

TEST(OSBMutants, OldFilesKeepTheBoundsToo)
{
    std::ifstream file(TEST_SOURCE_DIR "/Tests/FileIO/OSB/plant-0200.osb", std::ios::binary);
    std::string const old((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    ASSERT_FALSE(old.empty());
    std::mt19937 random(4505);
    for(int round = 0; round < 500 && !HasFailure(); ++round)
    {
        SCOPED_TRACE(round);
        std::string bytes = old;
        for(std::size_t count = 1 + random() % 5; count > 0; --count)
            bytes[random() % bytes.size()] ^= static_cast<char>(1 + random() % 255);
        read_within_bounds(bytes, Expected::Anything);
    }
}
} // namespace
} // namespace OSG
