#pragma once

#include "OSGImageBase.h"

namespace OSG
{
/// A picture: rows of 8-bit pixels without padding, the bottom row first.
class OSG_STATE_API Image : public ImageBase
{
  public:
    /// Replaces the picture. `data` holds width * height * channels bytes, the bottom row first;
    /// null fills with zero. False, and nothing changed, for no pixels or other than 1 to 4
    /// channels.
    bool set(UInt32 width, UInt32 height, UInt32 channels, UInt8 const *data);
    bool hasAlpha() const { return getChannels() == 2 || getChannels() == 4; }

    /// True where every alpha value is 0 or 255; false for a picture without alpha.
    bool calcIsAlphaBinary() const;

    // --- files; the type is chosen by the suffix ---
    /// Replaces the picture and its name. False, and nothing changed, where the file gives no
    /// picture.
    bool read(char const *fileName);
    /// False where no type writes the suffix, or the file could not be written.
    bool write(char const *fileName) const;

  protected:
    Image() = default;
    Image(Image const &) = default;
    ~Image() override;

    friend Pattern;
};
} // namespace OSG
