#pragma once

#include "OSGOSBCommonElement.h"

namespace OSG
{
/// Serves all containers without an element of their own: all fields, under the container's type
/// name.
class OSG_FILEIO_API OSBGenericElement : public OSBCommonElement
{
  public:
    explicit OSBGenericElement(OSBRootElement *root);

    void read(std::string const &typeName) override;
    void postRead() override;
    void preWrite(FieldContainer *container) override;
    void write() override;

  protected:
    /// Leaves out the fields in the list `exclude`.
    OSBGenericElement(OSBRootElement *root, char const *exclude);

  private:
    std::string _exclude;
};

/// Serves nodes. Their bounding volumes are not stored, since they can be computed.
class OSG_FILEIO_API OSBNodeElement : public OSBGenericElement
{
  public:
    explicit OSBNodeElement(OSBRootElement *root);
};
} // namespace OSG
