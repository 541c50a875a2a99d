#pragma once

#include "OSGGeoPropertyBase.h"

namespace OSG
{
/// An array that geometry is made of.
///
/// Structures that are computed from the values keep the stamp. As long as the stamp is the same
/// and no edit is open (getChangeMask() is 0), the values are the same.
class OSG_DRAWABLE_API GeoProperty : public GeoPropertyBase
{
  public:
    static constexpr Replaced Replaces = Replaced::InitMethod | Replaced::ExecSync;

    /// Changes with each commit of an edit and with each synchronisation. No two properties have
    /// the same stamp, save copies of the same values; 0 stands for an array that was never
    /// committed. Stamps repeat after 4,294,967,295 commits.
    UInt32 getStamp() const { return getOwnNumber(); }

    void changed(BitVector whichField, UInt32 origin, BitVector details) override;
    void execSync(GeoPropertyBase *from, BitVector whichField, AspectOffsets &offsets,
                  BitVector syncMode, UInt32 syncInfo);

  protected:
    GeoProperty() = default;
    GeoProperty(GeoProperty const &source);
    ~GeoProperty() override;

    /// Has open edits of arrays looked for by those who draw them.
    static void initMethod(TypeBase::InitPhase phase);

    friend Pattern;

  private:
    void renewStamp();
};
} // namespace OSG
