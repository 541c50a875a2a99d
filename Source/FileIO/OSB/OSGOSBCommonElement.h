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
    /// All fields up to the end of the record, as the two functions above read them.
    void readFields(std::string const &exclude);

    // --- writing ---
    void writeBegin();
    /// Takes the container over and makes known what its counted pointers point to.
    void preWriteFieldContainer(FieldContainer *container, std::string const &exclude);
    /// All fields but the excluded ones, then, on demand, the end marker that is empty. In a file
    /// of version 0x0300 fields that hold what a new container holds are left out.
    void writeFields(std::string const &exclude, bool writeEndMarker);
    /// Kind of a container in a record: 1 a node, 2 a core, 3 an attachment, 4 anything else.
    static UInt8 getFCPtrType(FieldContainer const *container);

  private:
    using WrittenField = OSBWrittenTypes::Field;

    bool readContent(OSBReadNames::Field const &named, FieldDescriptionBase const *field,
                     UInt32 size, bool isExcluded, PointerFieldIt &pointerField);
    PointerFieldIt readPointers(OSBContent &content, FieldDescriptionBase const &field);
    void writeField(WrittenField &field);
    void writeValues(WrittenField &field);
    void writePointers(WrittenField &field);
    void writeFieldHeader(WrittenField &field, UInt64 size);

    PointerFieldIt _firstPointers = 0;
    UInt32 _numPointerFields = 0;
};
} // namespace OSG
