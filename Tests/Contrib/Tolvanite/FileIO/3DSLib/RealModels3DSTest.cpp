/// \file
/// 3DS models that people made with real programs. The triangles and materials are those that
/// another library's command-line tool counts; shown meshes count each time they are shown.

#include <filesystem>

#include <gmock/gmock.h>

#include "Scene3DS.h"

using namespace OSG;
using namespace OSG::Test;

namespace
{
struct Model
{
    char const *name;
    char const *path; ///< below .cache/fixtures
    UInt64 triangles;
    Pnt3f min;
    Pnt3f max;
    std::vector<std::string> materials = {};
};
void PrintTo(Model const &model, std::ostream *out) { *out << model.path; }

class RealModels3DS : public testing::TestWithParam<Model>
{
};

TEST_P(RealModels3DS, HaveTheTrianglesBoundsAndMaterialsThatOthersFind)
{
    std::string const path = TEST_SOURCE_DIR "/.cache/fixtures/" + std::string(GetParam().path);
    if(!std::filesystem::exists(path))
        GTEST_SKIP() << path << " is missing; scripts/fixtures fetches it";
    LogCapture const log;
    Scene3DS scene;
    scene.root = UnrecordedRefPtr<Node>(SceneFileHandlerBase::the()->read(path.c_str()));
    ASSERT_NE(scene.root, nullptr);
    EXPECT_TRUE(SceneFileHandlerBase::the()->wasLastReadComplete());
    UInt64 triangles = 0;
    std::set<std::string> materials;
    for(Geometry const *geometry : scene.geometries())
    {
        triangles += geometry->getLengths()->size();
        if(chunks_of(*geometry) != nullptr)
            materials.insert(getName(chunks_of(*geometry)));
    }
    EXPECT_EQ(triangles, GetParam().triangles);
    EXPECT_EQ(std::vector<std::string>(materials.begin(), materials.end()), GetParam().materials);
    scene.root->updateVolume();
    Pnt3f min;
    Pnt3f max;
    scene.root->getVolume().getBounds(min, max);
    EXPECT_TRUE(min.equals(GetParam().min, 1e-3f)) << min[0] << " " << min[1] << " " << min[2];
    EXPECT_TRUE(max.equals(GetParam().max, 1e-3f)) << max[0] << " " << max[1] << " " << max[2];
}

Model const Models[] = {
    {"AsteroidHigh", "glmark2-data/asteroid-high.3ds", 48000,
     Pnt3f(-1.275607f, -0.947465f, -0.884713f), Pnt3f(1.151755f, 0.946463f, 0.934707f)},
    {"AsteroidLow",
     "glmark2-data/asteroid-low.3ds",
     480,
     Pnt3f(-1.275607f, -0.947465f, -0.884713f),
     Pnt3f(1.151755f, 0.946463f, 0.934575f),
     {"None"}},
    {"Cat",
     "glmark2-data/cat.3ds",
     14348,
     Pnt3f(-2.233167f, -1.353040f, -1.283225f),
     Pnt3f(2.252167f, 1.341132f, 1.244906f),
     {"Material.002"}},
    {"Horse",
     "glmark2-data/horse.3ds",
     7172,
     Pnt3f(-0.626680f, -0.851605f, -0.382131f),
     Pnt3f(0.627071f, 0.852198f, 0.391028f),
     {"Material.001"}},
    {"Room",
     "libirrlicht-doc/room.3ds",
     156,
     Pnt3f(-406.988800f, -349.043213f, -0.000240f),
     Pnt3f(402.391205f, 351.916809f, 503.769989f),
     {" -- default --"}},
    {"Fels",
     "assimp-testmodels/3DS/fels.3ds",
     768,
     Pnt3f(-2.221913f, -3.084285f, -2.564741f),
     Pnt3f(1.282885f, 0.121266f, 2.116860f),
     {"Default"}},
    {"Gear",
     "libqglviewer-doc/gear.3DS",
     2880,
     Pnt3f(-99.7058f, -99.248f, 56.9758f),
     Pnt3f(99.7541f, 100.212f, 87.8192f),
     {"Default"}},
    {"CubesWithAlpha",
     "assimp-testmodels/3DS/cubes_with_alpha.3DS",
     60,
     Pnt3f(-856.311f, -55.1009f, -268.159f),
     Pnt3f(98.8105f, 1227.14f, 248.438f),
     {"01 - Default", "03 - Default", "04 - Default", "05 - Default", "Transparent"}},
    {"RotatingCube", "assimp-testmodels/3DS/RotatingCube.3DS", 12,
     Pnt3f(-29.3447f, -34.1813f, -4.08618f), Pnt3f(37.3219f, 29.2585f, 49.2083f)},
    {"CameraRoll", "assimp-testmodels/3DS/CameraRollAnimWithChildObject.3ds", 24,
     Pnt3f(-107.233f, -24.7863f, -155.747f), Pnt3f(45.8689f, 23.0769f, 38.7464f)},
    {"Test1",
     "assimp-testmodels/3DS/test1.3ds",
     108,
     Pnt3f(-10.3432f, -0.194162f, -10.1551f),
     Pnt3f(9.85085f, 10.2303f, 10.2476f),
     {"1 - Default", "2 - Default", "3 - Default"}},
};
INSTANTIATE_TEST_SUITE_P(Real, RealModels3DS, testing::ValuesIn(Models),
                         [](auto const &row) { return std::string(row.param.name); });
} // namespace
