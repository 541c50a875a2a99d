#include "OSGMtlReader.h"

#include <array>

#include "OSGLog.h"
#include "OSGShownText.h"

namespace OSG
{
MtlHandler::~MtlHandler() = default;

namespace
{
class MtlLoop
{
  public:
    MtlLoop(ReadBuffer &text, MtlElementMap const &elements, char const *libraryName,
            MtlHandler &handler)
        : _text(text)
        , _elements(elements)
        , _libraryName(libraryName)
        , _handler(handler)
    {
    }

    Int32 run();

  private:
    void startMaterial();
    void readEntry(MtlElement element, std::string_view word);
    Real32 number();
    void readColor(MtlColor which);
    void dropNumbers(int count);
    void readMap(MtlColor which);
    void skipInvalid(std::string_view word);

    bool &hasMap(MtlColor which) { return _hasMap[static_cast<std::size_t>(which)]; }

    ReadBuffer &_text;
    MtlElementMap const &_elements;
    char const *_libraryName;
    MtlHandler &_handler;
    Int32 _count = 0;
    std::array<bool, 3> _hasMap = {};
};

Int32 MtlLoop::run()
{
    for(;;)
    {
        std::string_view const word = _text.token();
        if(!_text.good())
            return _count;
        if(word[0] == '#' || word[0] == '$')
        {
            _text.ignoreLine();
            continue;
        }
        MtlElement const element = find_element(_elements, word);
        if(element == MtlElement::NewMaterial)
        {
            startMaterial();
        }
        else if(_count == 0)
        {
            OSG_LOG_FATAL("Invalid Mtl token: %s, newmtl expected in %s\n",
                          shown_text(word).c_str(), shown_text(_libraryName).c_str());
            _text.ignoreLine();
        }
        else
        {
            readEntry(element, word);
        }
    }
}

void MtlLoop::startMaterial()
{
    _handler.newMaterial(std::string(_text.token()));
    ++_count;
    _hasMap.fill(false);
}

void MtlLoop::readEntry(MtlElement element, std::string_view word)
{
    switch(element)
    {
    case MtlElement::Diffuse:
        return readColor(MtlColor::Diffuse);
    case MtlElement::Ambient:
        return readColor(MtlColor::Ambient);
    case MtlElement::Specular:
        return readColor(MtlColor::Specular);
    case MtlElement::Shininess:
        return _handler.setShininess(number());
    case MtlElement::Transparency:
        return _handler.setTransparency(number());
    case MtlElement::Dissolve:
        return _handler.setTransparency(1 - number());
    case MtlElement::Refraction:
    case MtlElement::Sharpness:
        return dropNumbers(1);
    case MtlElement::TransmissionFilter:
        return dropNumbers(3);
    case MtlElement::DiffuseMap:
        return readMap(MtlColor::Diffuse);
    case MtlElement::AmbientMap:
        return readMap(MtlColor::Ambient);
    case MtlElement::SpecularMap:
        return readMap(MtlColor::Specular);
    case MtlElement::Reflection:
        return _handler.setEnvMap(true);
    case MtlElement::Illumination:
    case MtlElement::Decal:
    case MtlElement::Bump:
        _text.token();
        return;
    case MtlElement::NewMaterial:
    case MtlElement::DissolveMap:
    case MtlElement::Unknown:
        break;
    }
    skipInvalid(word);
}

Real32 MtlLoop::number()
{
    Real32 value;
    _text.readReal32(value);
    return value;
}

void MtlLoop::readColor(MtlColor which)
{
    Real32 values[3];
    _text.readReal32s(values, 3);
    // The numbers are read in any case, so that the next word is a key again.
    if(!hasMap(which))
        _handler.setColor(which, Color3f(values[0], values[1], values[2]));
}

void MtlLoop::dropNumbers(int count)
{
    for(; count > 0; --count)
        number();
}

void MtlLoop::readMap(MtlColor which)
{
    std::string const imageName(_text.token());
    if(!_handler.setImage(imageName))
    {
        OSG_LOG_FATAL("Can not find %s texture file in mtl %s \n", shown_text(imageName).c_str(),
                      shown_text(_libraryName).c_str());
        return;
    }
    hasMap(which) = true;
    _handler.setColor(which, Color3f(1, 1, 1));
}

void MtlLoop::skipInvalid(std::string_view word)
{
    OSG_LOG_WARNING("Invalid %s entry in %s\n", shown_text(word).c_str(),
                    shown_text(_libraryName).c_str());
    _text.ignoreLine();
}
} // namespace

Int32 read_mtl(ReadBuffer &text, MtlElementMap const &elements, char const *libraryName,
               MtlHandler &handler)
{
    return MtlLoop(text, elements, libraryName, handler).run();
}
} // namespace OSG
