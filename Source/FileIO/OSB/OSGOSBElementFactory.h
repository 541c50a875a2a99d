#pragma once

/// \file
/// Elements of the binary scene format by the type name of their records.

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

/// Made on first use, never destroyed. To be changed while libraries are loaded only.
class OSG_FILEIO_API OSBElementFactory
{
  public:
    static OSBElementFactory *the();

    /// Records of that type name are served by elements of `creator`, which is taken over. False,
    /// and `creator` is deleted, where the name is taken.
    bool registerElement(std::string const &typeName, OSBElementCreatorBase *creator);
    /// What makes elements for records of that type name: the registered creator; else the generic
    /// one where a concrete container type has that name; else null.
    OSBElementCreatorBase const *findCreator(std::string const &typeName) const;
    /// An element by that creator; null where there is none.
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
