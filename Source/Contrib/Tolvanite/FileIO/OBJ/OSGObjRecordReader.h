#pragma once

/// \file
/// The main loop over the elements of an OBJ file.

#include <string>

#include "OSGObjElements.h"
#include "OSGObjFaceParser.h"
#include "OSGObjRecords.h"
#include "OSGReadBuffer.h"

namespace OSG
{
/// What reading asks of the scene that the file is read into.
class OSG_CONTRIBTOLVANITE_API ObjReadClient
{
  public:
    virtual ~ObjReadClient();

    /// Called once per element that is not a comment, before it is read.
    virtual void elementRead() = 0;
    /// A material library is named; the name may be empty.
    virtual void readLibrary(std::string const &name) = 0;
    /// Slot of the material of that name, or ObjRecords::noMaterial if no library had it.
    virtual Int32 findMaterial(std::string const &name) = 0;
};

/// Reads elements until the text ends, appending to arrays, records and log.
///
/// A word begins an element wherever it stands; values that an element does not take begin the next
/// one. "#" or "$" in front of a word make a comment of the rest of the line. Unknown words are
/// logged and their line is skipped; directly behind a texture coordinate this happens silently, as
/// many files give it a third value.
///
/// A value that cannot be read ends the file: its element is kept with 0 in place of what is
/// missing, and everything before it stands. A last word without white space behind it is lost.
class OSG_CONTRIBTOLVANITE_API ObjRecordReader
{
  public:
    /// Keeps references to all of them.
    ObjRecordReader(ReadBuffer &text, ObjElementMap const &elements, ObjVertexArrays arrays,
                    ObjRecords &records, ObjReadClient &client);

    /// The whole text; `text` has failed or is at its end afterwards.
    void read();

  private:
    void readElement(ObjElement element, std::string_view word);
    void readVertex();
    void readTexCoord();
    void readNormal();
    void readFace();
    void readLibrary();
    void readMaterialUse();
    void skipUnknown(std::string_view word);

    ReadBuffer &_text;
    ObjElementFinder _elements;
    ObjVertexArrays _arrays;
    ObjRecords &_records;
    ObjReadClient &_client;
    ObjFaceParser _faces;
    ObjElement _previous = ObjElement::Unknown;
};
} // namespace OSG
