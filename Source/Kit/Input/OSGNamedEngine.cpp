#include "OSGNamedEngine.h"

#include "OSGCadTrackballEngine.h"
#include "OSGCopterFlyEngine.h"
#include "OSGWASDFlyEngine.h"
#include "OSGWASDWalkEngine.h"

namespace OSG
{
namespace
{
constexpr Real32 BallRadius = 0.8f; // in normalised coordinates of the viewport

using EnginePtr = TransitPtr<NavigatorEngine>;

struct Row
{
    char const *name;
    EnginePtr (*create)();
};

Row const Rows[] = {
    {"cad", []() -> EnginePtr { return CadTrackballEngine::create(BallRadius); }},
    {"fly", []() -> EnginePtr { return WASDFlyEngine::create(); }},
    {"copter", []() -> EnginePtr { return CopterFlyEngine::create(); }},
    {"walk", []() -> EnginePtr { return WASDWalkEngine::create(); }},
};
} // namespace

TransitPtr<NavigatorEngine> make_engine(std::string const &name)
{
    for(Row const &row : Rows)
    {
        if(name == row.name)
            return row.create();
    }
    return nullptr;
}

std::vector<std::string> engine_names()
{
    std::vector<std::string> names;
    for(Row const &row : Rows)
        names.emplace_back(row.name);
    return names;
}
} // namespace OSG
