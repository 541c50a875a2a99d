#pragma once

/// \file
/// What scene file types and image file types have in common: suffixes, priority, abilities.

#include <list>
#include <string>

#include "OSGBaseApi.h"
#include "OSGBaseTypes.h"
#include "OSGMemManager.h"

namespace OSG
{
/// One kind of file, found by the suffixes of its names. Where two types claim a suffix, a handler
/// takes the one that overrides with the higher priority. Types are made once, at the load of their
/// library, and registered with a handler that does not own them.
class OSG_BASE_API IOFileTypeBase : public MemObject
{
  public:
    enum Flags : UInt32
    {
        ReadSupported = 1,
        WriteSupported = 2
    };

    virtual ~IOFileTypeBase();
    IOFileTypeBase &operator=(IOFileTypeBase const &) = delete;
    /// Name of the kind for people.
    virtual char const *getName() const = 0;
    /// The suffixes without dots, as they were given.
    virtual std::list<std::string> &suffixList();

    /// Whether it may displace a type that claimed a suffix earlier.
    bool doOverride() const { return _override; }
    UInt32 getOverridePriority() const { return _overridePriority; }
    /// A sum of Flags.
    UInt32 getFlags() const { return _flags; }
    bool canRead() const { return (_flags & ReadSupported) != 0; }
    bool canWrite() const { return (_flags & WriteSupported) != 0; }

  protected:
    /// `suffixes` is an array of `sizeInBytes` bytes, as sizeof tells; the texts are copied, null
    /// entries are left out.
    IOFileTypeBase(char const *suffixes[], UInt16 sizeInBytes, bool override,
                   UInt32 overridePriority, UInt32 flags);
    IOFileTypeBase(IOFileTypeBase const &);

  private:
    std::list<std::string> _suffixList;
    bool _override;
    UInt32 _overridePriority;
    UInt32 _flags;
};
} // namespace OSG
