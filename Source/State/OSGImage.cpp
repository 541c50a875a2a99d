#include "OSGImage.h"

#include "OSGCommitStamp.h"
#include "OSGDrawEpochs.h"
#include "OSGGLObjectStore.h"
#include "OSGImageFileHandler.h"

namespace OSG
{
Image::~Image() { GLObjectStore::forget(*this); }

void Image::renewStamp()
{
    setOwnNumber(new_commit_stamp());
    DrawEpochs::noteMaterial();
}

void Image::changed(BitVector whichField, UInt32 origin, BitVector details)
{
    renewStamp();
    ImageBase::changed(whichField, origin, details);
}

void Image::execSync(ImageBase *from, BitVector whichField, AspectOffsets &offsets,
                     BitVector syncMode, UInt32 syncInfo)
{
    ImageBase::execSync(from, whichField, offsets, syncMode, syncInfo);
    renewStamp();
}

void Image::initMethod(TypeBase::InitPhase phase)
{
    ImageBase::initMethod(phase);
    if(phase == TypeBase::SystemPost)
        DrawEpochs::registerKind(getClassType(), DrawEpochs::Kind::Material);
}

bool Image::set(UInt32 width, UInt32 height, UInt32 channels, UInt8 const *data)
{
    if(width == 0 || height == 0 || channels == 0 || channels > 4)
        return false;
    std::size_t const bytes = std::size_t(width) * height * channels;
    MField<UInt8> &pixel = editPixel();
    if(data != nullptr)
        pixel.assign(data, data + bytes);
    else
        pixel.assign(bytes, 0);
    setWidth(width);
    setHeight(height);
    setChannels(channels);
    return true;
}

bool Image::calcIsAlphaBinary() const
{
    if(!hasAlpha())
        return false;
    UInt32 const channels = getChannels();
    MField<UInt8> const &pixel = getPixel();
    for(std::size_t i = channels - 1; i < pixel.size(); i += channels)
    {
        if(pixel[i] != 0 && pixel[i] != 255)
            return false;
    }
    return true;
}

bool Image::read(char const *fileName)
{
    TransitPtr<Image> const other = ImageFileHandlerBase::the()->read(fileName, nullptr);
    if(!other)
        return false;
    setName(other->getName());
    return set(other->getWidth(), other->getHeight(), other->getChannels(),
               other->getPixel().data());
}

bool Image::write(char const *fileName) const
{
    return ImageFileHandlerBase::the()->write(*this, fileName, nullptr);
}
} // namespace OSG
