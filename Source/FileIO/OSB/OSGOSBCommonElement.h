#pragma once

/// \file
/// Reads and writes the record layout that all containers share.

#include <string>

#include "OSGOSBElementBase.h"
#include "OSGOSBRootElement.h"

namespace OSG
{
/// A record is a list of fields. Each has a header with its name and size, so a reader can skip a
/// field that it does not know. Docs/osb.md describes the bytes.
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
    /// Reads what stands before the fields: the kind of the container, which is ignored, and the
    /// version, which the element keeps.
    void readBegin();
    /// Takes the new container. Raises ReadError for null, which means that the class cannot be
    /// instantiated.
    void takeContainer(FieldContainer *container);
    /// Reads the header of the next field. False where the name is `endMarker`, which ends the
    /// fields and has nothing behind it.
    bool readFieldHeader(std::string const &endMarker, std::string &name, std::string &typeName,
                         UInt32 &size);
    /// Reads `size` bytes and sets the field of that name from them. Pointers are set later: the
    /// field is appended to the pointer fields of the root element, at the place `pointerField`,
    /// and postMap sets its pointers. An excluded field is skipped. A field that the container does
    /// not have, or has with another type, is skipped with a warning. The result is false in these
    /// cases. Raises ReadError where the content is not `size` bytes long.
    bool readFieldContent(std::string const &name, std::string const &typeName, UInt32 size,
                          std::string const &exclude, PointerFieldIt &pointerField);
    /// Reads all fields up to the end of the record by the two functions above.
    void readFields(std::string const &exclude);

    // --- writing ---
    void writeBegin();
    /// Takes the container and numbers the targets of its counted pointers.
    void preWriteFieldContainer(FieldContainer *container, std::string const &exclude);
    /// Writes all fields that are not excluded, and the empty end marker if `writeEndMarker` is
    /// set. In a file of version 0x0300 fields with the value of a new container are left out.
    void writeFields(std::string const &exclude, bool writeEndMarker);
    /// The kind of a container in its record: 1 node, 2 core, 3 attachment, 4 anything else.
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
