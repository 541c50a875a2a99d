#include "SelectionSettings.h"

#include <map>
#include <sstream>

namespace Tool
{
namespace
{
using OSG::SelectionFunctor;

std::map<std::string, OSG::UInt32> const KindNames = {
    {"triangles", SelectionFunctor::SelectTriangles},
    {"lines", SelectionFunctor::SelectLines},
    {"points", SelectionFunctor::SelectPoints}};
std::map<std::string, SelectionFunctor::PlaneType> const PlaneNames = {
    {"near", SelectionFunctor::NearPlane}, {"far", SelectionFunctor::FarPlane},
    {"left", SelectionFunctor::LeftPlane}, {"right", SelectionFunctor::RightPlane},
    {"top", SelectionFunctor::TopPlane},   {"bottom", SelectionFunctor::BottomPlane}};
std::map<std::string, SelectionFunctor::HitType> const HitNames = {
    {"front", SelectionFunctor::FrontHits},
    {"back", SelectionFunctor::BackHits},
    {"all", SelectionFunctor::AllHits}};

template <class Value>
Value value_of(std::map<std::string, Value> const &names, char const *option,
               std::string const &word)
{
    auto const found = names.find(word);
    if(found != names.end())
        return found->second;
    std::string known;
    for(auto const &[name, value] : names)
        known += (known.empty() ? "" : ",") + name;
    throw CLI::ValidationError(option, word + " is not one of " + known);
}
} // namespace

void set_kinds(SelectionSettings &settings, std::string const &names)
{
    OSG::UInt32 mask = 0;
    std::istringstream in(names + ',');
    for(std::string name; std::getline(in, name, ',');)
    {
        auto const kind = KindNames.find(name);
        if(kind == KindNames.end())
            throw CLI::ValidationError("--kinds", names + " is not of triangles,lines,points");
        mask |= kind->second;
    }
    settings.kinds = mask;
}

void set_plane(SelectionSettings &settings, std::string const &name)
{
    settings.plane = value_of(PlaneNames, "--plane", name);
}

void set_hits(SelectionSettings &settings, std::string const &name)
{
    settings.hits = value_of(HitNames, "--hits", name);
}

void add_selection_options(CLI::App &command, SelectionSettings &settings)
{
    command
        .add_option_function<std::string>(
            "--kinds", [&settings](std::string const &names) { set_kinds(settings, names); },
            "Kinds of primitives: triangles,lines,points")
        ->default_str("triangles");
    command
        .add_option_function<std::string>(
            "--plane", [&settings](std::string const &name) { set_plane(settings, name); },
            "Side of the volume that distances count from: near,far,left,right,top,bottom")
        ->default_str("near");
    command
        .add_option_function<std::string>(
            "--hits", [&settings](std::string const &name) { set_hits(settings, name); },
            "The nearest or farthest of each node, or all: front,back,all")
        ->default_str("front");
    command.add_flag("--fast", settings.fast,
                     "Only which nodes are hit, without places and distances");
    command.add_flag("--enclosed", settings.enclosed,
                     "Only nodes whose own vertices all lie inside");
}
} // namespace Tool
