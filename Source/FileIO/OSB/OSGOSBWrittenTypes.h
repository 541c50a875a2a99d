#pragma once

#include <deque>
#include <string>
#include <vector>

#include "OSGFieldContainer.h"
#include "OSGFileIOApi.h"
#include "OSGOSBStreams.h"

namespace OSG
{
class OSBElementCreatorBase;

/// Data about a container type that are computed once per file.
class OSG_FILEIO_API OSBWrittenTypes
{
  public:
    struct Field
    {
        FieldDescriptionBase const *description;
        PointerFieldAccess const *pointers; ///< null for values
        bool isMulti;
        bool isCounted;
        UInt16 number = 0; ///< in the file; 0 before its name is written
        /// The value of a new container, as it is written; empty for pointers.
        OSBScratch::Bytes inNewOne = {};
        bool mayBeLeftOut = false;
        bool isExcluded = false; ///< by the list of excluded fields
    };
    struct Type
    {
        OSBElementCreatorBase const *creator = nullptr;
        UInt16 number = 0;         ///< in the file; 0 before its name is written
        UInt8 kind = 0;            ///< of its containers; 0 while not known
        std::string exclude;       ///< the list of excluded fields that was used last
        std::vector<Field> fields; ///< those of parent types first
    };

    explicit OSBWrittenTypes(ExceptionBinaryDataHandler &handler);
    OSBWrittenTypes(OSBWrittenTypes const &) = delete;
    OSBWrittenTypes &operator=(OSBWrittenTypes const &) = delete;
    ~OSBWrittenTypes();

    void setVersion(UInt16 version) { _version = version; }
    /// Whether fields with the value of a new container are left out.
    bool leavesOut() const;

    Type &get(FieldContainerType const &type);

    // --- raises WriteError where the stream fails or there are too many names ---
    void writeTypeName(FieldContainerType const &type);
    void writeFieldName(Field &field);
    /// Writes the end marker, which stands in place of a type or field name.
    void writeEnd();

  private:
    void describe(FieldContainerType const &type, Type &written) const;
    UInt16 nextNumber(UInt32 &count) const;

    ExceptionBinaryDataHandler &_handler;
    UInt16 _version;
    std::vector<UInt32> _places; // index in _types plus one, by type id; 0 for none
    std::deque<Type> _types;
    UInt32 _numTypeNames = 0;
    UInt32 _numFieldNames = 0;
};
} // namespace OSG
