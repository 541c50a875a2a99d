#include "OSGIOFileType.h"

#include <memory>

#include <gmock/gmock.h>

namespace
{
using namespace OSG;
using testing::ElementsAre;

class SomeFileType : public IOFileTypeBase
{
  public:
    SomeFileType(char const *suffixes[], UInt16 size, UInt32 flags)
        : IOFileTypeBase(suffixes, size, true, 20, flags)
    {
    }
    char const *getName() const override { return "Some"; }
};

TEST(IOFileType, KeepsWhatItWasMadeWith)
{
    char const *suffixes[] = {"obj", nullptr, "OBJ2"};
    SomeFileType type(suffixes, sizeof(suffixes), 3);
    EXPECT_THAT(type.suffixList(), ElementsAre("obj", "OBJ2"));
    EXPECT_TRUE(type.doOverride());
    EXPECT_EQ(type.getOverridePriority(), 20u);
    EXPECT_EQ(type.getFlags(), 3u);
    EXPECT_STREQ(type.getName(), "Some");
}

TEST(IOFileType, FlagsTellWhatItCan)
{
    char const *suffixes[] = {"3ds"};
    SomeFileType const reader(suffixes, sizeof(suffixes), IOFileTypeBase::ReadSupported);
    EXPECT_TRUE(reader.canRead());
    EXPECT_FALSE(reader.canWrite());
}

TEST(IOFileType, CopyHasAListOfItsOwn)
{
    char const *suffixes[] = {"obj"};
    SomeFileType const type(suffixes, sizeof(suffixes), 1);
    auto copy = std::make_unique<SomeFileType>(type);
    copy->suffixList().push_back("more");
    EXPECT_THAT(SomeFileType(type).suffixList(), ElementsAre("obj"));
    EXPECT_THAT(copy->suffixList(), ElementsAre("obj", "more"));
}
} // namespace
