#pragma once

#include "OSGOSBCommonElement.h"

namespace OSG
{
/// Serves every container that has no element of its own: all fields, under the container's type
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
    /// Leaves the fields of `exclude` out.
    OSBGenericElement(OSBRootElement *root, char const *exclude);

  private:
    std::string _exclude;
};

/// Serves nodes. A bounding volume follows from the scene and is not stored.
class OSG_FILEIO_API OSBNodeElement : public OSBGenericElement
{
  public:
    explicit OSBNodeElement(OSBRootElement *root);
};
} // namespace OSG
