#include "OSGObjRecordReader.h"

#include "OSGLog.h"
#include "OSGObjMessages.h"
#include "OSGObjPlainLines.h"
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
        _client.elementsRead(1);
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
        return readVertices(word, _positions);
    case ObjElement::TexCoord:
        return readVertices(word, _texCoords);
    case ObjElement::Normal:
        return readVertices(word, _normals);
    case ObjElement::Face:
        return readFaces(word);
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

/// Reads the vertex of this line, and those of plain lines behind it.
template <class Value>
void ObjRecordReader::readVertices(std::string_view word, ObjValueList<Value> &to)
{
    if(_text.good() && take(take_plain_vertices({word, _text.atHand()}, to)))
        return;
    Real32 values[Value::Dimension];
    _text.readReal32s(values, Value::Dimension);
    to.add() = Value(values);
}

void ObjRecordReader::readFaces(std::string_view word)
{
    if(_text.good() && take(take_plain_faces({word, _text.atHand()}, _records)))
        return;
    _faces.parse({{_positions.size(), _texCoords.size(), _normals.size()}});
}

bool ObjRecordReader::take(ObjTakenLines const &lines)
{
    if(lines.count == 0)
        return false;
    _text.takeAtHand(static_cast<std::size_t>(lines.end - _text.atHand().data()));
    // The element of the first line is counted already.
    _client.elementsRead(lines.count - 1);
    return true;
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
