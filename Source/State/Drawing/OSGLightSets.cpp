#include "OSGLightSets.h"

#include <algorithm>
#include <utility>

#include "OSGLightSource.h"
#include "OSGLog.h"

namespace OSG
{
void LightSets::make(std::vector<Light> const &lights, LightSet const &base,
                     std::vector<LightSet> &sets)
{
    std::vector<bool> const isChosen = chooseLights(lights);
    sets.assign(1, base);
    _setOf.resize(lights.size());
    for(std::size_t i = 0; i < lights.size(); ++i)
    {
        _setOf[i] = setOf(lights[i].outer);
        if(!isChosen[i])
            continue;
        LightSet set = sets[_setOf[i]];
        set.push_back(lights[i].source->makeValues(lights[i].toEye));
        sets.push_back(std::move(set));
        _setOf[i] = static_cast<UInt32>(sets.size() - 1);
    }
}

std::vector<bool> LightSets::chooseLights(std::vector<Light> const &lights)
{
    std::vector<std::size_t> shining;
    for(std::size_t i = 0; i < lights.size(); ++i)
    {
        if(lights[i].source->shines())
            shining.push_back(i);
    }
    std::stable_sort(shining.begin(), shining.end(),
                     [&lights](std::size_t a, std::size_t b)
                     { return lights[a].order < lights[b].order; });
    if(shining.size() > MaxLights && !std::exchange(_hasWarned, true))
        OSG_LOG_WARNING("RenderAction: only the first eight lights of the scene shine\n");
    shining.resize(std::min(shining.size(), MaxLights));
    std::vector<bool> isChosen(lights.size(), false);
    for(std::size_t i : shining)
        isChosen[i] = true;
    return isChosen;
}
} // namespace OSG
