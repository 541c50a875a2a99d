#include "OSGObjRecordReader.h"

#include "OSGLog.h"
#include "OSGObjMessages.h"
#include "OSGShownText.h"

namespace OSG
{
ObjReadClient::~ObjReadClient() = default;

ObjRecordReader::ObjRecordReader(ReadBuffer &text, ObjElementMap const &elements,
                                 ObjVertexArrays arrays, ObjRecords &records, ObjReadClient &client)
    : _text(text)
    , _elements(elements)
    , _arrays(arrays)
    , _records(records)
    , _client(client)
    , _faces(text, records)
{
}

void ObjRecordReader::read()
{
    readElements();
    _positions.moveTo(_arrays.positions);
    _texCoords.moveTo(_arrays.texCoords);
    _normals.moveTo(_arrays.normals);
}

void ObjRecordReader::readElements()
{
    for(;;)
    {
        std::string_view const word = _text.token();
        if(!_text.good())
            return;
        if(word[0] == '#' || word[0] == '$')
        {
            _text.ignoreLine();
            continue;
        }
        _client.elementRead();
        ObjElement const element = _elements.find(word);
        readElement(element, word);
        _previous = element;
    }
}

void ObjRecordReader::readElement(ObjElement element, std::string_view word)
{
    switch(element)
    {
    case ObjElement::Vertex:
        return readVertex();
    case ObjElement::TexCoord:
        return readTexCoord();
    case ObjElement::Normal:
        return readNormal();
    case ObjElement::Face:
        return readFace();
    case ObjElement::MaterialLibrary:
        return readLibrary();
    case ObjElement::UseMaterial:
        return readMaterialUse();
    case ObjElement::Group:
    case ObjElement::SmoothingGroup:
    case ObjElement::Object:
        return _text.ignoreLine();
    case ObjElement::Unknown:
        break;
    }
    skipUnknown(word);
}

void ObjRecordReader::readVertex()
{
    Real32 values[3];
    _text.readReal32s(values, 3);
    _positions.add() = Pnt3f(values);
}

void ObjRecordReader::readTexCoord()
{
    Real32 values[2];
    _text.readReal32s(values, 2);
    _texCoords.add() = Vec2f(values);
}

void ObjRecordReader::readNormal()
{
    Real32 values[3];
    _text.readReal32s(values, 3);
    _normals.add() = Vec3f(values);
}

void ObjRecordReader::readFace()
{
    _faces.parse({{_positions.size(), _texCoords.size(), _normals.size()}});
}

void ObjRecordReader::readLibrary()
{
    std::string const name(_text.token());
    _client.readLibrary(name);
    _text.ignoreLine();
}

void ObjRecordReader::readMaterialUse()
{
    std::string const name(_text.token());
    // An unknown material starts a mesh too, so that its faces do not get the last material.
    _records.startMesh();
    Int32 const slot = _client.findMaterial(name);
    if(slot != ObjRecords::NoMaterial)
        _records.setMaterial(slot);
    else
        OSG_LOG_FATAL(ObjMessages::MaterialUnknown, shown_text(name).c_str());
}

void ObjRecordReader::skipUnknown(std::string_view word)
{
    if(_previous != ObjElement::TexCoord)
        OSG_LOG_WARNING("Unkown obj data elem: %s\n", shown_text(word).c_str());
    _text.ignoreLine();
}
} // namespace OSG
