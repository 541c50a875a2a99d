#pragma once

/// \file
/// Makes elements of the binary scene format by the type names of records.

#include <memory>
#include <string>
#include <unordered_map>

#include "OSGOSBElementBase.h"
#include "OSGSingletonHolder.h"

namespace OSG
{
class OSG_FILEIO_API OSBElementCreatorBase : public MemObject
{
  public:
    virtual ~OSBElementCreatorBase();
    /// A new element, owned by the caller.
    virtual OSBElementBase *createElement(OSBRootElement *root) const = 0;
};

/// Makes elements of the class `Element`, which has a constructor from OSBRootElement *.
template <class Element>
class OSBElementCreator : public OSBElementCreatorBase
{
  public:
    OSBElementBase *createElement(OSBRootElement *root) const override { return new Element(root); }
};

/// Made on first use and never destroyed. Elements may be registered only while libraries are being
/// loaded.
class OSG_FILEIO_API OSBElementFactory
{
  public:
    static OSBElementFactory *the();

    /// Registers `creator` for records of that type name and takes ownership of it. Where the name
    /// is taken, the result is false and `creator` is deleted.
    bool registerElement(std::string const &typeName, OSBElementCreatorBase *creator);
    /// The registered creator for records of that type name. Without one, the generic creator if a
    /// concrete container type has the name; otherwise null.
    OSBElementCreatorBase const *findCreator(std::string const &typeName) const;
    /// A new element. Null where there is no creator for the name.
    std::unique_ptr<OSBElementBase> createElement(std::string const &typeName,
                                                  OSBRootElement *root) const;

  private:
    OSBElementFactory() = default;

    std::unordered_map<std::string, std::unique_ptr<OSBElementCreatorBase>> _creators;
};

using OSBElementFactorySingleton = SingletonHolder<OSBElementFactory>;

template <>
OSG_FILEIO_API OSBElementFactory *SingletonHolder<OSBElementFactory>::the();
} // namespace OSG
