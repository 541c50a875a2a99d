#pragma once

#include "OSGFileIOApi.h"
#include "OSGImageFileType.h"
#include "OSGStbCodec.h"

namespace OSG
{
/// A format of pictures that stb decodes and encodes.
///
/// stb reads zeros where a file ends early, so each format first checks that its file is complete.
/// A file that is cut off gives no picture. Memory is bounded by what the bytes of the file can
/// hold, whatever its header claims.
class OSG_FILEIO_API StbImageFileType : public ImageFileType
{
  public:
    /// True where the bytes hold everything that their headers claim.
    using IsComplete = bool (*)(PictureBytes const &bytes);
    /// Changes complete bytes before they are decoded.
    using Prepare = StbBlocks (*)(PictureBytes &bytes);

    struct Format
    {
        char const *name;
        PictureFormat format;
        UInt8 const *signature; ///< the first bytes of each file
        std::size_t signatureSize;
        IsComplete isComplete;
        UInt64 maxExpansion;       ///< bytes of a picture per byte of a file, at most
        Prepare prepare = nullptr; ///< null: no change, fixed blocks
    };

    /// `format` must live as long as the process.
    StbImageFileType(char const **suffixes, UInt16 suffixBytes, Format const &format);
    ~StbImageFileType() override;

    char const *getName() const override { return _format.name; }
    TransitPtr<Image> read(std::istream &in) const override;
    /// Converts grey to colour where the format has only colour, and drops alpha where the format
    /// has none.
    bool write(Image const &image, std::ostream &out) const override;

  private:
    Format const &_format;
};
} // namespace OSG
