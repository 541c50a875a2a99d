#include "OSGGeoProperty.h"

#include "OSGCommitStamp.h"
#include "OSGDrawEpochs.h"

namespace OSG
{
// A copy of values that are still being edited may differ from any other copy.
GeoProperty::GeoProperty(GeoProperty const &source)
    : GeoPropertyBase(source)
{
    if(source.getChangeMask() == 0)
        setOwnNumber(source.getStamp());
    else
        renewStamp();
}

GeoProperty::~GeoProperty() = default;

void GeoProperty::renewStamp()
{
    setOwnNumber(new_commit_stamp());
    DrawEpochs::noteMesh();
}

void GeoProperty::initMethod(TypeBase::InitPhase phase)
{
    GeoPropertyBase::initMethod(phase);
    if(phase == TypeBase::SystemPost)
        DrawEpochs::registerKind(getClassType(), DrawEpochs::Kind::Mesh);
}

void GeoProperty::changed(BitVector whichField, UInt32 origin, BitVector details)
{
    renewStamp();
    GeoPropertyBase::changed(whichField, origin, details);
}

void GeoProperty::execSync(GeoPropertyBase *from, BitVector whichField, AspectOffsets &offsets,
                           BitVector syncMode, UInt32 syncInfo)
{
    GeoPropertyBase::execSync(from, whichField, offsets, syncMode, syncInfo);
    renewStamp();
}
} // namespace OSG
