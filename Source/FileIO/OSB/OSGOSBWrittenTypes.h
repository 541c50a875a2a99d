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

/// What is found out once for all containers of a type that are written to one file.
class OSG_FILEIO_API OSBWrittenTypes
{
  public:
    struct Field
    {
        FieldDescriptionBase const *description;
        PointerFieldAccess const *pointers; ///< null for values
        bool isMulti;
        bool isCounted;
        UInt16 number = 0; ///< in the file; 0 before it is told there
        /// What a new container holds: the values as they are written; no pointers.
        OSBScratch::Bytes inNewOne = {};
        bool mayBeLeftOut = false;
        bool isExcluded = false; ///< by the list that the type was asked for with
    };
    struct Type
    {
        OSBElementCreatorBase const *creator = nullptr;
        UInt16 number = 0;         ///< in the file; 0 before it is told there
        UInt8 kind = 0;            ///< of its containers, 0 before one was asked
        std::string exclude;       ///< the list that the fields were last compared with
        std::vector<Field> fields; ///< its parents' first
    };

    explicit OSBWrittenTypes(ExceptionBinaryDataHandler &handler);
    OSBWrittenTypes(OSBWrittenTypes const &) = delete;
    OSBWrittenTypes &operator=(OSBWrittenTypes const &) = delete;
    ~OSBWrittenTypes();

    void setVersion(UInt16 version) { _version = version; }
    /// Whether fields that hold what a new container holds are left out.
    bool leavesOut() const;

    Type &get(FieldContainerType const &type);

    // --- raises WriteError where the stream takes no more, or there are too many names ---
    void writeTypeName(FieldContainerType const &type);
    void writeFieldName(Field &field);
    /// In the place of the name of a type or field.
    void writeEnd();

  private:
    void describe(FieldContainerType const &type, Type &written) const;
    UInt16 nextNumber(UInt32 &count) const;

    ExceptionBinaryDataHandler &_handler;
    UInt16 _version;
    std::vector<UInt32> _places; // in _types plus one, by the type's id; 0 for none
    std::deque<Type> _types;
    UInt32 _numTypeNames = 0;
    UInt32 _numFieldNames = 0;
};
} // namespace OSG
