#include "OSGNamedEngine.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "OSGCadTrackballEngine.h"
#include "OSGCopterFlyEngine.h"
#include "OSGWASDFlyEngine.h"
#include "OSGWASDWalkEngine.h"

using namespace OSG;

namespace
{
using EnginePtr = UnrecordedRefPtr<NavigatorEngine>;

template <class Engine>
bool makes(char const *name)
{
    EnginePtr const engine(make_engine(name));
    return dynamic_cast<Engine *>(engine.get()) != nullptr;
}

TEST(NamedEngine, EachNameGivesItsEngine)
{
    EXPECT_TRUE(makes<CadTrackballEngine>("cad"));
    EXPECT_TRUE(makes<WASDFlyEngine>("fly"));
    EXPECT_TRUE(makes<CopterFlyEngine>("copter"));
    EXPECT_TRUE(makes<WASDWalkEngine>("walk"));
    EXPECT_THAT(engine_names(), testing::ElementsAre("cad", "fly", "copter", "walk"));
}

TEST(NamedEngine, OtherNamesGiveNone)
{
    for(char const *name : {"", "Cad", "cad ", "orbit"})
        EXPECT_FALSE(make_engine(name)) << name;
}
} // namespace
