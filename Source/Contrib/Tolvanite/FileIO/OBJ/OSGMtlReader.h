#pragma once

/// \file
/// The loop over the entries of an MTL material library.

#include <string>

#include "OSGColor.h"
#include "OSGObjElements.h"
#include "OSGReadBuffer.h"

namespace OSG
{
/// The colours of a material, each of which a map of the same name turns white.
enum class MtlColor
{
    Diffuse,
    Ambient,
    Specular
};

/// Makes the materials that a library describes. All but newMaterial() speak of the material that
/// it made last; the values come as they stand in the library.
class OSG_CONTRIBTOLVANITE_API MtlHandler
{
  public:
    virtual ~MtlHandler();

    /// Replaces a material of the same name. The name may be empty.
    virtual void newMaterial(std::string const &name) = 0;
    virtual void setColor(MtlColor which, Color3f const &color) = 0;
    virtual void setShininess(Real32 shininess) = 0;
    virtual void setTransparency(Real32 transparency) = 0;
    virtual void setEnvMap(bool on) = 0;
    /// Loads the image, or takes it from those that the library has loaded before, and gives it to
    /// the material. False if it cannot be had; the material is then left as it was.
    virtual bool setImage(std::string const &imageName) = 0;
};

/// Reads entries until the text ends or a value cannot be read, and returns how many "newmtl" there
/// were. A value that is cut short counts as 0, its entry as read.
///
/// A word begins an entry wherever it stands: only comments ("#", "$"), unknown words and words
/// before the first "newmtl" skip their line. A map that was loaded makes its colour white for
/// good: the colour's own entries are read and dropped until the next "newmtl".
///
/// `libraryName` is what the messages call the library.
OSG_CONTRIBTOLVANITE_API Int32 read_mtl(ReadBuffer &text, MtlElementMap const &elements,
                                        char const *libraryName, MtlHandler &handler);
} // namespace OSG
