#pragma once

#include <memory>
#include <vector>

#include "OSGOSBElementBase.h"
#include "OSGOSBRootElement.h"

namespace OSG
{
class Node;

/// Writes one scene. Raises WriteError where the stream fails.
class OSBWriter
{
  public:
    explicit OSBWriter(ExceptionBinaryDataHandler &handler);
    ~OSBWriter();

    void write(Node *scene);

  private:
    void meetContainers(Node *scene);

    OSBRootElement _root;
    std::vector<std::unique_ptr<OSBElementBase>> _elements;
};
} // namespace OSG
