#pragma once

/// \file
/// The state that the elements of one scene share while it is read or written.

#include <vector>

#include "OSGBinaryDataHandler.h"
#include "OSGFieldContainer.h"
#include "OSGFileIOApi.h"
#include "OSGOSBNumbers.h"
#include "OSGOSBReadNames.h"
#include "OSGOSBWrittenTypes.h"

namespace OSG
{
/// One read or one write of a scene: its stream, its names, the numbers of its containers, and the
/// pointers that are set when all containers exist. Containers are numbered from 1 in the order in
/// which they are met. The root is number 1, and 0 stands for null.
///
/// Until setVersion() is called, names are written in full and no field is left out (version
/// 0x0200).
class OSG_FILEIO_API OSBRootElement
{
  public:
    using NumberList = std::vector<UInt32, MemAllocator<UInt32>>;
    /// A pointer field that was read. The numbers of the containers that it points to are the
    /// elements `begin` to `end` of the list of all targets.
    struct PointerField
    {
        FieldContainer *container;
        FieldDescriptionBase const *field;
        std::size_t begin;
        std::size_t end;
    };
    using PointerFieldList = std::vector<PointerField, MemAllocator<PointerField>>;
    /// The index of a pointer field. It stays valid when further fields are appended.
    using PointerFieldIt = std::size_t;
    using ContainerList = OSBNumbers::ContainerList;

    /// `handler` is not owned.
    explicit OSBRootElement(ExceptionBinaryDataHandler &handler);
    OSBRootElement(OSBRootElement const &) = delete;
    OSBRootElement &operator=(OSBRootElement const &) = delete;
    ~OSBRootElement();

    ExceptionBinaryDataHandler &getHandler() const { return _handler; }
    /// Sets one of the versions of OSBFormat. It decides how names are stored and whether fields
    /// are left out.
    void setVersion(UInt16 version);

    // --- reading ---
    OSBReadNames &getNames() { return _names; }
    PointerFieldList &editPointerFields() { return _pointerFields; }
    PointerFieldList const &getPointerFields() const { return _pointerFields; }
    NumberList &editTargets() { return _targets; }
    NumberList const &getTargets() const { return _targets; }
    /// A buffer for the containers of one field, used again for each field.
    ContainerList &editFound() { return _found; }
    /// Total size in bytes of the field contents read so far.
    UInt64 getContentBytes() const { return _contentBytes; }
    void countContent(UInt64 bytes) { _contentBytes += bytes; }

    // --- writing ---
    OSBWrittenTypes &getWrittenTypes() { return _types; }
    /// The number of a container. A container that is new gets the next number. 0 for null.
    UInt32 addContainer(FieldContainer *container);
    /// The number of a container; 0 where it was not added. A target of an uncounted pointer may
    /// lie outside the scene and then has no number.
    UInt32 getNumber(FieldContainer const *container) const;
    /// All numbered containers in order. The list grows during preWrite.
    ContainerList const &getContainers() const { return _numbers.getContainers(); }
    /// A buffer for values that are compared before they are written.
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
