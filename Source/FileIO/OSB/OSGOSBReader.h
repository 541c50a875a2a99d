#pragma once

#include <memory>
#include <vector>

#include "OSGOSBElementBase.h"
#include "OSGOSBRootElement.h"
#include "OSGStreamIdMap.h"

namespace OSG
{
class Node;

/// Reads one scene from its signature to its end. Raises ReadError where the stream holds no valid
/// scene, and std::bad_alloc. Everything that was made is destroyed then.
class OSBReader
{
  public:
    explicit OSBReader(ExceptionBinaryDataHandler &handler);
    OSBReader(OSBReader const &) = delete;
    OSBReader &operator=(OSBReader const &) = delete;
    ~OSBReader();

    TransitPtr<Node> read();

  private:
    void readHeader();
    void readRecords();
    void readRecord(UInt32 type);
    void passOver(OSBReadNames::Type &type);
    void addContainer(FieldContainer *container);
    void checkMemory() const;
    void checkPointers();
    void setPointers();
    void takeApart() noexcept;

    OSBRootElement _root;
    StreamIdMap _containers;                                // by number
    std::vector<std::unique_ptr<OSBElementBase>> _elements; // null where a type is unknown
    OSBRootElement::ContainerList _byNumber;
    UInt64 _containerBytes = 0;
};
} // namespace OSG
