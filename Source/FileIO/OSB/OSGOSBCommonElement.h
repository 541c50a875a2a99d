#pragma once

/// \file
/// The layout that the records of all containers have in common.

#include <string>

#include "OSGOSBElementBase.h"
#include "OSGOSBRootElement.h"

namespace OSG
{
/// Fields one after the other, each with a header that names it, so that what a reader does not
/// know can be passed over. Docs/osb.md has the layout byte by byte.
///
/// `exclude` names fields to leave out: a list with blanks or commas between the names.
class OSG_FILEIO_API OSBCommonElement : public OSBElementBase
{
  public:
    using PointerFieldIt = OSBRootElement::PointerFieldIt;

    /// Sets the pointers of the fields that readFieldContent read.
    void postMap() override;

  protected:
    OSBCommonElement(OSBRootElement *root, UInt16 version);

    // --- reading ---
    /// What stands before the fields: the kind of the container, which is not looked at, and the
    /// version, which becomes the element's.
    void readBegin();
    /// Raises ReadError for null: a class that cannot be made.
    void takeContainer(FieldContainer *container);
    /// The header of the next field. False where its name is `endMarker`: there is no further
    /// field, and nothing behind the name.
    bool readFieldHeader(std::string const &endMarker, std::string &name, std::string &typeName,
                         UInt32 &size);
    /// Takes `size` bytes and sets the field of that name from them. Pointers wait: their field is
    /// appended to those of the root element, `pointerField` tells where, and postMap sets them. A
    /// field that the container does not have, of another type or excluded is passed over: false,
    /// with a warning where it is not excluded. Raises ReadError where the content is not `size`
    /// bytes long.
    bool readFieldContent(std::string const &name, std::string const &typeName, UInt32 size,
                          std::string const &exclude, PointerFieldIt &pointerField);

    // --- writing ---
    void writeBegin();
    /// Takes the container over and makes known what its counted pointers point to.
    void preWriteFieldContainer(FieldContainer *container, std::string const &exclude);
    /// All fields but the excluded ones, then, on demand, the end marker that is empty.
    void writeFields(std::string const &exclude, bool writeEndMarker);
    /// Kind of a container in a record: 1 a node, 2 a core, 3 an attachment, 4 anything else.
    static UInt8 getFCPtrType(FieldContainer const *container);

  private:
    PointerFieldIt readPointers(MemoryBinaryDataHandler &handler,
                                FieldDescriptionBase const &field);
    void writeField(FieldDescriptionBase const &field);
    void writePointers(ExceptionBinaryDataHandler &handler, FieldDescriptionBase const &field);

    PointerFieldIt _firstPointers;
    UInt32 _numPointerFields = 0;
};
} // namespace OSG
