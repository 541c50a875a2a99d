#include "EngineKeys.h"

#include <string_view>

#include "OSGNavigatorEvent.h"

namespace Viewer
{
namespace
{
using Event = OSG::NavigatorEvent;

struct Meaning
{
    OSG::Int16 virtualKey;
    OSG::Int16 code;
};

constexpr Meaning FlyKeys[] = {{33, Event::RotateLeftKey}, {34, Event::RotateRightKey},
                               {37, Event::LeftKey},       {38, Event::ForwardKey},
                               {39, Event::RightKey},      {40, Event::BackwardKey}};
} // namespace

EngineKey engine_key(std::string const &engine, OSG::Int16 virtualKey)
{
    if(engine == "fly")
    {
        for(Meaning const &key : FlyKeys)
            if(key.virtualKey == virtualKey)
                return {key.code, 0};
    }
    return {virtualKey, Event::VirtualKey};
}

bool takes_character(std::string const &engine, unsigned int character)
{
    std::string_view const taken = engine == "walk" ? "+-*_12" : engine == "copter" ? "+-" : "";
    return character < 0x80 && taken.find(static_cast<char>(character)) != std::string_view::npos;
}
} // namespace Viewer
