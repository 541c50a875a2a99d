#include "OSGLineStates.h"

namespace OSG
{
namespace
{
DrawState unlit(SurfaceValues const &surface)
{
    DrawState state;
    state.surface = surface;
    state.surface.lit = false;
    state.surface.diffuse[3] = 1;
    return state;
}

SurfaceValues of_color(Color3f const &color)
{
    SurfaceValues surface;
    surface.diffuse = Color4f(color[0], color[1], color[2], 1);
    return surface;
}
} // namespace

LineStates::LineStates(DrawLook const &look, std::vector<DrawState const *> const &states)
{
    if(look.style == DrawStyle::Shaded)
        return;
    if(look.style != DrawStyle::Wires)
    {
        _values.push_back(unlit(of_color(look.lineColor)));
        _states.assign(states.size(), _values.data());
        return;
    }
    _values.reserve(states.size());
    for(DrawState const *state : states)
    {
        _values.push_back(unlit(state->surface));
        _states.push_back(&_values.back());
    }
}
} // namespace OSG
