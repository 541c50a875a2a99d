#include "RandomScenes.h"

#include <set>
#include <string>

#include <gtest/gtest.h>

#include "LogCapture.h"
#include "OSGNodeWalker.h"
#include "Oracle/PictureComparison.h"

namespace OSG::Test
{
namespace
{
constexpr RandomMaterials AllMaterials[] = {RandomMaterials::Simple, RandomMaterials::Transparent,
                                            RandomMaterials::Textured, RandomMaterials::Chunks};

SlowPicture picture_of(RandomScene const &scene)
{
    return slow_picture(scene.root, view_of(scene.view));
}

struct CoreNames
{
    bool enter(Node *node)
    {
        names.insert(node->getCore() != nullptr ? node->getCore()->getType().getCName() : "none");
        return true;
    }
    void leave(Node *) {}

    std::set<std::string> names;
};

TEST(RandomScenes, TheyHoldEveryCore)
{
    LogCapture log; // of indices out of range
    CoreNames seen;
    for(std::uint64_t seed = 0; seed < 40; ++seed)
        walk_children(random_scene(seed, RandomMaterials::Chunks).root, seen);
    std::set<std::string> const expected = {"Billboard",
                                            "ComponentTransform",
                                            "ConstSizeTransform",
                                            "ConstantSizeTransform",
                                            "DirectionalLight",
                                            "DistanceLOD",
                                            "Geometry",
                                            "Group",
                                            "GroupingStage",
                                            "InverseTransform",
                                            "MaterialChunkOverrideGroup",
                                            "MaterialGroup",
                                            "MultiCore",
                                            "MultiSwitch",
                                            "PointLight",
                                            "ScreenLOD",
                                            "SpotLight",
                                            "Switch",
                                            "Transform",
                                            "VisitSubTree",
                                            "none"};
    EXPECT_EQ(seen.names, expected);
}
TEST(RandomScenes, MostOfAPictureCanBeCompared)
{
    LogCapture log;
    for(RandomMaterials const materials : AllMaterials)
    {
        PictureComparison sum;
        for(std::uint64_t seed = 0; seed < 10; ++seed)
        {
            SlowPicture const picture = picture_of(random_scene(seed, materials));
            PictureComparison const one = compare(picture, pixels_of(picture));
            sum.compared += one.compared;
            sum.covered += one.covered;
        }
        UInt32 const all = 10 * 200 * 150;
        EXPECT_GT(sum.compared, all / 2) << static_cast<int>(materials);
        EXPECT_GT(sum.covered, all / 20) << static_cast<int>(materials);
    }
}
TEST(RandomScenes, AScenesPictureIsNotThatOfTheNext)
{
    LogCapture log;
    for(RandomMaterials const materials : AllMaterials)
    {
        SlowPicture const first = picture_of(random_scene(1, materials));
        SlowPicture const second = picture_of(random_scene(2, materials));
        EXPECT_GT(compare(first, pixels_of(second)).wrong, 1000u);
    }
}
} // namespace
} // namespace OSG::Test
