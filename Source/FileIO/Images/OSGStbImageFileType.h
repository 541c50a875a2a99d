#pragma once

#include "OSGFileIOApi.h"
#include "OSGImageFileType.h"
#include "OSGStbCodec.h"

namespace OSG
{
/// A format of pictures that stb decodes and encodes.
///
/// stb reads zeros where a file ends early, so each format first checks that its file is complete:
/// a cut-off file is no picture. Memory is bounded by what the bytes that are there can hold, or do
/// hold where that can be told: a header alone claims little.
class OSG_FILEIO_API StbImageFileType : public ImageFileType
{
  public:
    /// True where the bytes hold all that their headers claim.
    using IsComplete = bool (*)(PictureBytes const &bytes);
    /// Brings complete bytes into the form that the decoder takes best.
    using Prepare = StbBlocks (*)(PictureBytes &bytes);

    struct Format
    {
        char const *name;
        PictureFormat format;
        UInt8 const *signature; ///< how each file begins
        std::size_t signatureSize;
        IsComplete isComplete;
        UInt64 maxExpansion;       ///< most bytes of a picture that one byte of a file can make
        Prepare prepare = nullptr; ///< null: as they are, in blocks that don't grow
    };

    /// `format` lives as long as the process.
    StbImageFileType(char const **suffixes, UInt16 suffixBytes, Format const &format);
    ~StbImageFileType() override;

    char const *getName() const override { return _format.name; }
    TransitPtr<Image> read(std::istream &in) const override;
    /// Grey becomes colour where the format has only colour; alpha is lost where it has none.
    bool write(Image const &image, std::ostream &out) const override;

  private:
    Format const &_format;
};
} // namespace OSG
