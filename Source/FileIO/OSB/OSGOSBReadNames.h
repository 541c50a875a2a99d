#pragma once

#include <deque>
#include <string>
#include <unordered_map>
#include <vector>

#include "OSGBinaryDataHandler.h"
#include "OSGFieldContainerType.h"
#include "OSGFileIOApi.h"

namespace OSG
{
class OSBElementCreatorBase;

/// The names of types and fields of a file that is being read, by number. A file of version 0x0300
/// has numbers; the name follows a number when it is first used. A file of version 0x0200 has full
/// names, which are numbered here.
///
/// Reading functions raise ReadError for a stream that is too short, for a number beyond the next
/// new one, and for a name with a zero byte, which string comparisons would treat differently.
class OSG_FILEIO_API OSBReadNames
{
  public:
    /// The number that ends a list of types or fields.
    static constexpr UInt32 End = 0;

    struct Type
    {
        std::string name;
        OSBElementCreatorBase const *creator;    ///< null where no element can be made
        FieldContainerType const *containerType; ///< null where no type has the name
        bool isReported = false;
    };
    struct Field
    {
        std::string name;
        std::string typeName;
        // Cache: the field of this name in the type `askedBy`.
        FieldContainerType const *askedBy = nullptr;
        FieldDescriptionBase const *meant = nullptr;
    };

    explicit OSBReadNames(ExceptionBinaryDataHandler &handler);
    OSBReadNames(OSBReadNames const &) = delete;
    OSBReadNames &operator=(OSBReadNames const &) = delete;
    ~OSBReadNames();

    void setVersion(UInt16 version) { _version = version; }

    /// Reads the number of the next record's type, or End.
    UInt32 readType();
    Type &getType(UInt32 number) { return _types[number - 1]; }
    /// Reads the number of the next field, or End. In a file with full names both the empty name
    /// and `endMarker` end the fields.
    UInt32 readField(std::string const &endMarker = {});
    Field &getField(UInt32 number) { return _fields[number - 1]; }

    /// The field of `type` with the name and type that belong to `number`. Null where there is
    /// none.
    FieldDescriptionBase const *findField(UInt32 number, FieldContainerType const &type);
    /// The concrete container type of that name. Null where there is none.
    FieldContainerType const *findContainerType(std::string const &name);

    /// A name from a file, cut and without control characters, for the log.
    static std::string shown(std::string const &name);

  private:
    std::string readName();
    bool namesStandInFull() const;
    UInt32 readTypeNumber();
    UInt32 readNumber(std::size_t numKnown, bool &isNew);
    UInt32 addType(std::string name);
    UInt32 addField(std::string name, std::string typeName);

    ExceptionBinaryDataHandler &_handler;
    UInt16 _version;
    std::deque<Type> _types;
    std::deque<Field> _fields;
    std::unordered_map<std::string, UInt32> _typeNumbers;  // of names in full
    std::unordered_map<std::string, UInt32> _fieldNumbers; // name, zero byte, type name
    Type const *_current = nullptr;                        // of the record that is being read
};
} // namespace OSG
