#pragma once

/// \file
/// The main loop over the elements of an OBJ file.

#include <string>

#include "OSGObjElements.h"
#include "OSGObjFaceParser.h"
#include "OSGObjRecords.h"
#include "OSGObjValueList.h"
#include "OSGReadBuffer.h"

namespace OSG
{
struct ObjTakenLines;

/// What the reader asks of the scene that it reads into.
class OSG_CONTRIBTOLVANITE_API ObjReadClient
{
  public:
    virtual ~ObjReadClient();

    /// Called when elements are read, with their number. Comments are not elements.
    virtual void elementsRead(UInt32 count) = 0;
    /// Called where the file names a material library. The name may be empty.
    virtual void readLibrary(std::string const &name) = 0;
    /// The slot of the material of that name; ObjRecords::NoMaterial if no library has it.
    virtual Int32 findMaterial(std::string const &name) = 0;
};

/// Reads the elements of a text and appends them to arrays and records.
///
/// Line breaks do not separate elements: the word behind the last value of an element begins the
/// next one. A word that begins with "#" or "$" makes the rest of the line a comment. An unknown
/// word is logged, and the rest of its line is skipped. Directly behind a texture coordinate
/// nothing is logged, because many files have a third value there.
///
/// The read ends at a value that cannot be read. Its element is kept, with 0 for missing values,
/// and so is everything before it. A last word without white space behind it is lost.
class OSG_CONTRIBTOLVANITE_API ObjRecordReader
{
  public:
    /// Keeps references to all of them.
    ObjRecordReader(ReadBuffer &text, ObjElementMap const &elements, ObjVertexArrays arrays,
                    ObjRecords &records, ObjReadClient &client);

    /// Reads the whole text. Afterwards `text` has failed or is at its end. The vertices are
    /// appended to the arrays at the end.
    void read();

  private:
    void readElements();
    void readElement(ObjElement element, std::string_view word);
    template <class Value>
    void readVertices(std::string_view word, ObjValueList<Value> &to);
    void readFaces(std::string_view word);
    bool take(ObjTakenLines const &lines);
    void readLibrary();
    void readMaterialUse();
    void skipUnknown(std::string_view word);

    ReadBuffer &_text;
    ObjElementFinder _elements;
    ObjVertexArrays _arrays;
    ObjValueList<Pnt3f> _positions;
    ObjValueList<Vec2f> _texCoords;
    ObjValueList<Vec3f> _normals;
    ObjRecords &_records;
    ObjReadClient &_client;
    ObjFaceParser _faces;
    ObjElement _previous = ObjElement::Unknown;
};
} // namespace OSG
