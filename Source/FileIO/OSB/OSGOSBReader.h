#pragma once

#include <memory>
#include <vector>

#include "OSGOSBElementBase.h"
#include "OSGOSBRootElement.h"
#include "OSGStreamIdMap.h"

namespace OSG
{
class Node;

/// One read of a scene from its signature to its end. Raises ReadError for whatever is no scene.
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
    void checkPointers() const;
    void setPointers();
    UInt32 numContainers() const { return static_cast<UInt32>(_elements.size()); }

    OSBRootElement _root;
    StreamIdMap _containers; // by number
    std::vector<std::unique_ptr<OSBElementBase>> _elements;
};
} // namespace OSG
