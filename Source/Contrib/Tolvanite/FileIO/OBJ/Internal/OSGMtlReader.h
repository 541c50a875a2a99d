#pragma once

/// \file
/// The loop over the entries of an MTL material library.

#include <string>

#include "OSGColor.h"
#include "OSGObjElements.h"
#include "OSGReadBuffer.h"

namespace OSG
{
/// The colours of a material. A map of the same name makes the colour white.
enum class MtlColor
{
    Diffuse,
    Ambient,
    Specular
};

/// Receives the contents of a material library. All functions but newMaterial() set a value of the
/// material that was made last. Values are passed unchanged.
class OSG_CONTRIBTOLVANITE_API MtlHandler
{
  public:
    virtual ~MtlHandler();

    /// Makes a material. It replaces one of the same name. The name may be empty.
    virtual void newMaterial(std::string const &name) = 0;
    virtual void setColor(MtlColor which, Color3f const &color) = 0;
    virtual void setShininess(Real32 shininess) = 0;
    virtual void setTransparency(Real32 transparency) = 0;
    virtual void setEnvMap(bool on) = 0;
    /// Loads the image, or takes it from the images that the library has loaded already, and sets
    /// it. False, with the material unchanged, if there is no such image.
    virtual bool setImage(std::string const &imageName) = 0;
};

/// Reads entries until the text ends or a value cannot be read. Returns the number of "newmtl"
/// entries. A missing value counts as 0, and its entry is used.
///
/// Line breaks do not separate entries: a known word begins an entry anywhere. Comments ("#", "$"),
/// unknown words, and words before the first "newmtl" skip the rest of their line. A map that was
/// loaded makes its colour white. Later entries of this colour are read and ignored until the next
/// "newmtl".
///
/// `libraryName` is the name of the library in messages.
OSG_CONTRIBTOLVANITE_API Int32 read_mtl(ReadBuffer &text, MtlElementMap const &elements,
                                        char const *libraryName, MtlHandler &handler);
} // namespace OSG
