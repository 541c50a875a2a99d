#include "OSGMaterial.h"

#include "OSGDrawEpochs.h"

namespace OSG
{
// Another material may get its address.
Material::~Material() { DrawEpochs::noteMaterial(); }

void Material::changed(BitVector whichField, UInt32 origin, BitVector details)
{
    DrawEpochs::noteMaterial();
    MaterialBase::changed(whichField, origin, details);
}

void Material::initMethod(TypeBase::InitPhase phase)
{
    MaterialBase::initMethod(phase);
    if(phase == TypeBase::SystemPost)
        DrawEpochs::registerKind(getClassType(), DrawEpochs::Kind::Material);
}
} // namespace OSG
