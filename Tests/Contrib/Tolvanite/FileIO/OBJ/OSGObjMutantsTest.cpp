/// \file
/// Damaged files, read by the library and by the obvious readers.

#include <gtest/gtest.h>

#include "ModelTexts.h"
#include "ReferenceObjReader.h"

using namespace OSG;
using namespace OSG::Test;

namespace
{
constexpr std::size_t BlockSizes[] = {1, 3, 17, 64, 1000, 256 * 1024};

ObjSettings random_settings(std::mt19937 &random, std::size_t textSize)
{
    ObjSettings settings;
    settings.habits.piece = random() % 40;
    if(random() % 8 == 0)
        settings.habits.throwAt = random() % (textSize + 1);
    settings.blockSize = BlockSizes[random() % std::size(BlockSizes)];
    return settings;
}
} // namespace

TEST(ObjMutants, WholeModelsReadAlike)
{
    for(std::string const &text : model_texts())
    {
        for(std::size_t blockSize : BlockSizes)
            EXPECT_EQ(read_obj(text, {{}, blockSize}).describe(), read_obj_slowly(text).describe());
    }
}

TEST(ObjMutants, ModelsCutOffAtEveryByteReadAlike)
{
    for(std::string const &text : model_texts())
    {
        for(std::size_t length = 0; length <= text.size() && !HasFailure(); ++length)
            EXPECT_EQ(read_obj(text.substr(0, length)).describe(),
                      read_obj_slowly(text.substr(0, length)).describe());
    }
}

TEST(ObjMutants, HurtModelsReadAlike)
{
    std::mt19937 random(8191);
    for(int round = 0; round < 3000 && !HasFailure(); ++round)
    {
        SCOPED_TRACE(round);
        std::string const text = hurt(model_texts()[random() % model_texts().size()], random);
        ObjSettings const settings = random_settings(random, text.size());
        EXPECT_EQ(read_obj(text, settings).describe(),
                  read_obj_slowly(text, settings.habits).describe());
    }
}

TEST(MtlMutants, WholeLibrariesReadAlike)
{
    for(std::string const &text : library_texts())
    {
        for(std::size_t blockSize : BlockSizes)
            EXPECT_EQ(read_mtl(text, {{}, blockSize}).describe(), read_mtl_slowly(text).describe());
    }
}

TEST(MtlMutants, LibrariesCutOffAtEveryByteReadAlike)
{
    for(std::string const &text : library_texts())
    {
        for(std::size_t length = 0; length <= text.size() && !HasFailure(); ++length)
            EXPECT_EQ(read_mtl(text.substr(0, length)).describe(),
                      read_mtl_slowly(text.substr(0, length)).describe());
    }
}

TEST(MtlMutants, HurtLibrariesReadAlike)
{
    std::mt19937 random(2703);
    for(int round = 0; round < 2000 && !HasFailure(); ++round)
    {
        SCOPED_TRACE(round);
        std::string const text = hurt(library_texts()[random() % library_texts().size()], random);
        ObjSettings const settings = random_settings(random, text.size());
        EXPECT_EQ(read_mtl(text, settings).describe(),
                  read_mtl_slowly(text, settings.habits).describe());
    }
}
