#pragma once

/// \file
/// What the elements of one scene share while it is read or written.

#include <list>
#include <string>
#include <unordered_map>
#include <vector>

#include "OSGBinaryDataHandler.h"
#include "OSGFieldContainer.h"
#include "OSGFileIOApi.h"

namespace OSG
{
/// One read or one write of a scene: the stream, the numbers of its containers, and the pointers
/// that wait until all containers are there. Numbers count from 1 in the order in which containers
/// are met, the scene's root first; 0 stands for null.
class OSG_FILEIO_API OSBRootElement
{
  public:
    /// A pointer field as it was read: the numbers of the containers that it points to.
    struct PointerField
    {
        FieldContainer *container;
        FieldDescriptionBase const *field;
        std::vector<UInt32, MemAllocator<UInt32>> targets;
    };
    using PointerFieldList = std::list<PointerField, MemAllocator<PointerField>>;
    using PointerFieldIt = PointerFieldList::iterator;
    using FieldList = std::vector<FieldDescriptionBase const *>;
    using ContainerList = std::vector<FieldContainer *, MemAllocator<FieldContainer *>>;

    /// `handler` is not owned.
    explicit OSBRootElement(ExceptionBinaryDataHandler &handler)
        : _handler(handler)
    {
    }
    OSBRootElement(OSBRootElement const &) = delete;
    OSBRootElement &operator=(OSBRootElement const &) = delete;

    ExceptionBinaryDataHandler &getHandler() const { return _handler; }

    // --- reading ---
    /// The name of a type or field. Raises ReadError for one with a zero byte, which some would
    /// compare in full and others up to there.
    std::string readName();
    /// A name from a file, fit for the log.
    static std::string shown(std::string const &name);
    PointerFieldList &editPointerFields() { return _pointerFields; }
    PointerFieldList const &getPointerFields() const { return _pointerFields; }

    // --- writing ---
    /// Number of a container, which is given one when it is first met. 0 for null.
    UInt32 addContainer(FieldContainer *container);
    /// Number of a container that was met; 0 for others, as for what is only looked at from within
    /// the scene and does not belong to it.
    UInt32 getNumber(FieldContainer const *container) const;
    /// All that were met, in the order of their numbers. Grows while elements look around.
    ContainerList const &getContainers() const { return _containers; }

    /// The fields of a type, its parents' first, looked up once per scene.
    FieldList const &getFields(FieldContainerType const &type);

  private:
    using Entry = std::pair<FieldContainer const *const, UInt32>;

    ExceptionBinaryDataHandler &_handler;
    PointerFieldList _pointerFields;
    ContainerList _containers;
    std::unordered_map<FieldContainerType const *, FieldList> _fields;
    std::unordered_map<FieldContainer const *, UInt32, std::hash<FieldContainer const *>,
                       std::equal_to<FieldContainer const *>, MemAllocator<Entry>>
        _numbers;
};
} // namespace OSG
