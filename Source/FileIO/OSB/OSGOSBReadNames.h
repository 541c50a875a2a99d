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

/// The names of types and fields of a file that is being read, by number. In a file of version
/// 0x0300 the file numbers them: a number that is the next one is followed by its name. In one of
/// 0x0200 names stand in full, and are numbered here.
///
/// Functions that read raise ReadError for a short stream, a number beyond the next one, and a name
/// with a zero byte, which some would compare in full and others up to there.
class OSG_FILEIO_API OSBReadNames
{
  public:
    /// The name in the place of a type or a field that ends a list of them.
    static constexpr UInt32 End = 0;

    struct Type
    {
        std::string name;
        OSBElementCreatorBase const *creator;    ///< null where nothing serves the name
        FieldContainerType const *containerType; ///< null where none has the name
        bool isReported = false;
    };
    struct Field
    {
        std::string name;
        std::string typeName;
        // What the name means in the type that asked last.
        FieldContainerType const *askedBy = nullptr;
        FieldDescriptionBase const *meant = nullptr;
    };

    explicit OSBReadNames(ExceptionBinaryDataHandler &handler);
    OSBReadNames(OSBReadNames const &) = delete;
    OSBReadNames &operator=(OSBReadNames const &) = delete;
    ~OSBReadNames();

    void setVersion(UInt16 version) { _version = version; }

    /// Number of the next record's type, or End.
    UInt32 readType();
    Type &getType(UInt32 number) { return _types[number - 1]; }
    /// Number of the next field of a record, or End. Where names stand in full, the one that is
    /// `endMarker` ends the fields as the empty one does.
    UInt32 readField(std::string const &endMarker = {});
    Field &getField(UInt32 number) { return _fields[number - 1]; }

    /// The field of that name and type of a container's type; null where it has none.
    FieldDescriptionBase const *findField(UInt32 number, FieldContainerType const &type);
    /// The concrete container type of that name; null where there is none.
    FieldContainerType const *findContainerType(std::string const &name);

    /// A name from a file, fit for the log.
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
