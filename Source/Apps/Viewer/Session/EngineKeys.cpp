#include "EngineKeys.h"

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
// Those of the numeric pad.
constexpr Meaning Signs[] = {{106, '*'}, {107, '+'}, {109, '-'}};
} // namespace

EngineKey engine_key(std::string const &engine, OSG::Int16 virtualKey)
{
    if(engine == "fly")
    {
        for(Meaning const &key : FlyKeys)
            if(key.virtualKey == virtualKey)
                return {key.code, 0};
    }
    if(engine == "walk" && (virtualKey == '1' || virtualKey == '2'))
        return {virtualKey, 0};
    if(engine == "walk" || engine == "copter")
    {
        for(Meaning const &sign : Signs)
            if(sign.virtualKey == virtualKey)
                return {sign.code, 0};
    }
    return {virtualKey, Event::VirtualKey};
}
} // namespace Viewer
