#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "FieldContainer/ContainerTable.h"
#include "OSGStartUpRecord.h"

namespace OSG
{
namespace
{
void add_types(std::vector<StartUpEntry> &entries, std::string const &name)
{
    auto const add = [&entries](std::string const &one) {
        entries.push_back({StartUpKind::Type, one});
    };
    add(name + "Ptr");
    for(char const *cardinality : {"SF", "MF"})
    {
        for(char const *policy : {"Rec", "Unrec", "Weak", "Unrefd"})
            add(std::string(cardinality) + policy + name + "Ptr");
    }
    add(name);
}

TEST(ModuleStartUp, TheLibraryComesUpInItsOrder)
{
    std::vector<StartUpEntry> expected;
    for(char const *name :
        {"CommandNameAttachment", "ForeignFileAttachment", "GeoToEntityAttachment",
         "HighlightMaterialAttachment", "WalkConsoleAttachment"})
        add_types(expected, name);
    expected.push_back({StartUpKind::FileType, "3ds"});
    expected.push_back({StartUpKind::FileType, "obj"});
    expected.push_back({StartUpKind::SceneElement, "GeoToEntAttachment"});
    for(char const *operation : {"GrpMerge", "Mrg", "SimplifyRenderEngine"})
        expected.push_back({StartUpKind::InitFunction, operation});
    add_types(expected, "EnhPassiveViewport");
    add_types(expected, "ConstSizeTransform");
    expected.push_back({StartUpKind::StateChunkClass, "ViewportTranslate"});
    add_types(expected, "ViewportTranslateChunk");

    std::vector<StartUpEntry> const all = start_up_record();
    auto const first = std::find(all.begin(), all.end(), expected.front());
    auto const last = std::find(all.begin(), all.end(), expected.back());
    ASSERT_NE(last, all.end());
    EXPECT_EQ(std::vector<StartUpEntry>(first, last + 1), expected);
}
} // namespace
} // namespace OSG
