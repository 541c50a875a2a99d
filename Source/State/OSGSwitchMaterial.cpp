#include "OSGSwitchMaterial.h"

namespace OSG
{
SwitchMaterial::~SwitchMaterial() = default;

Material const *SwitchMaterial::getChosen() const
{
    return getChoice() < _mfMaterials.size() ? _mfMaterials[getChoice()] : nullptr;
}

// Brent's search for a cycle: a mark is left behind at the steps 1, 2, 4, ... of the chain, and a
// chain that goes in a circle comes back to a mark.
Material const *SwitchMaterial::findChosen() const
{
    SwitchMaterial const *mark = this;
    Material const *chosen = getChosen();
    UInt64 steps = 0;
    UInt64 nextMark = 1;
    while(auto const *const next = dynamic_cast<SwitchMaterial const *>(chosen))
    {
        if(next == mark)
            return nullptr;
        if(++steps == nextMark)
        {
            mark = next;
            nextMark *= 2;
        }
        chosen = next->getChosen();
    }
    return chosen;
}

void SwitchMaterial::addTo(StateParts &parts) const
{
    if(Material const *const chosen = findChosen())
        chosen->addTo(parts);
}
} // namespace OSG
