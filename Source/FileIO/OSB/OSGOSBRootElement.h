#pragma once

/// \file
/// What the elements of one scene share while it is read or written.

#include <vector>

#include "OSGBinaryDataHandler.h"
#include "OSGFieldContainer.h"
#include "OSGFileIOApi.h"
#include "OSGOSBNumbers.h"
#include "OSGOSBReadNames.h"
#include "OSGOSBWrittenTypes.h"

namespace OSG
{
/// One read or one write of a scene: the stream, the names in it, the numbers of its containers,
/// and the pointers that wait until all containers are there. Numbers count from 1 in the order in
/// which containers are met, the scene's root first; 0 stands for null.
///
/// Without a file around it, names stand in full and every field is written (version 0x0200).
class OSG_FILEIO_API OSBRootElement
{
  public:
    using NumberList = std::vector<UInt32, MemAllocator<UInt32>>;
    /// A pointer field as it was read. The numbers of the containers that it points to stand at
    /// `begin` to `end` among the targets of all fields.
    struct PointerField
    {
        FieldContainer *container;
        FieldDescriptionBase const *field;
        std::size_t begin;
        std::size_t end;
    };
    using PointerFieldList = std::vector<PointerField, MemAllocator<PointerField>>;
    /// A place among the pointer fields, good however many follow.
    using PointerFieldIt = std::size_t;
    using ContainerList = OSBNumbers::ContainerList;

    /// `handler` is not owned.
    explicit OSBRootElement(ExceptionBinaryDataHandler &handler);
    OSBRootElement(OSBRootElement const &) = delete;
    OSBRootElement &operator=(OSBRootElement const &) = delete;
    ~OSBRootElement();

    ExceptionBinaryDataHandler &getHandler() const { return _handler; }
    /// One of OSBFormat's, which decides how names stand and whether fields are left out.
    void setVersion(UInt16 version);

    // --- reading ---
    OSBReadNames &getNames() { return _names; }
    PointerFieldList &editPointerFields() { return _pointerFields; }
    PointerFieldList const &getPointerFields() const { return _pointerFields; }
    NumberList &editTargets() { return _targets; }
    NumberList const &getTargets() const { return _targets; }
    /// Room for the containers of one field.
    ContainerList &editFound() { return _found; }
    /// Bytes of the contents of fields so far.
    UInt64 getContentBytes() const { return _contentBytes; }
    void countContent(UInt64 bytes) { _contentBytes += bytes; }

    // --- writing ---
    OSBWrittenTypes &getWrittenTypes() { return _types; }
    /// Number of a container, which is given one when it is first met. 0 for null.
    UInt32 addContainer(FieldContainer *container);
    /// Number of a container that was met; 0 for others, as for what is only looked at from within
    /// the scene and does not belong to it.
    UInt32 getNumber(FieldContainer const *container) const;
    /// All that were met, in the order of their numbers. Grows while elements look around.
    ContainerList const &getContainers() const { return _numbers.getContainers(); }
    /// For values that are looked at before they are written.
    OSBScratch &getScratch() { return _scratch; }

  private:
    ExceptionBinaryDataHandler &_handler;
    OSBReadNames _names;
    PointerFieldList _pointerFields;
    NumberList _targets;
    ContainerList _found;
    UInt64 _contentBytes = 0;
    OSBWrittenTypes _types;
    OSBNumbers _numbers;
    OSBScratch _scratch;
};
} // namespace OSG
