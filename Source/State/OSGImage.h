#pragma once

#include "OSGImageBase.h"

namespace OSG
{
/// A picture: rows of 8-bit pixels without padding, the bottom row first.
class OSG_STATE_API Image : public ImageBase
{
  public:
    static constexpr Replaced Replaces = Replaced::InitMethod | Replaced::ExecSync;

    /// Changes with each commit of an edit and with each synchronisation. As long as it is the same
    /// and no edit is open (getChangeMask() is 0), the picture is the same. 0 for one that was
    /// never committed.
    UInt32 getStamp() const { return getOwnNumber(); }

    /// Replaces the picture. `data` holds width * height * channels bytes, the bottom row first.
    /// Null fills the picture with zeros. Returns false and changes nothing where there is no
    /// pixel, or where the number of channels is not 1 to 4.
    bool set(UInt32 width, UInt32 height, UInt32 channels, UInt8 const *data);
    bool hasAlpha() const { return getChannels() == 2 || getChannels() == 4; }

    /// True where every alpha value is 0 or 255. False for a picture without alpha.
    bool calcIsAlphaBinary() const;

    // --- files; the suffix chooses the type ---
    /// Replaces the picture and its name. Returns false and changes nothing where the file holds no
    /// picture that can be read.
    bool read(char const *fileName);
    /// False where no type writes the suffix or the file cannot be written.
    bool write(char const *fileName) const;

    void changed(BitVector whichField, UInt32 origin, BitVector details) override;
    void execSync(ImageBase *from, BitVector whichField, AspectOffsets &offsets, BitVector syncMode,
                  UInt32 syncInfo);

  protected:
    Image() = default;
    Image(Image const &) = default;
    ~Image() override;

    static void initMethod(TypeBase::InitPhase phase);

    friend Pattern;

  private:
    void renewStamp();
};
} // namespace OSG
