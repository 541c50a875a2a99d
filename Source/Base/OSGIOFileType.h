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
/// One kind of file, found by suffix. Where two types claim a suffix, the handler takes the type
/// that overrides, and of two such types the one with the higher priority. A type is a static
/// object of its library. It registers with a handler, which does not own it.
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
    /// Name of the kind, to be shown to people.
    virtual char const *getName() const = 0;
    /// The suffixes as the constructor received them, without dots.
    virtual std::list<std::string> &suffixList();

    /// Whether this type may replace a type that claimed a suffix earlier.
    bool doOverride() const { return _override; }
    UInt32 getOverridePriority() const { return _overridePriority; }
    /// A combination of Flags.
    UInt32 getFlags() const { return _flags; }
    bool canRead() const { return (_flags & ReadSupported) != 0; }
    bool canWrite() const { return (_flags & WriteSupported) != 0; }

  protected:
    /// `sizeInBytes` is the size of the array `suffixes` in bytes, as sizeof gives it. The texts
    /// are copied. Null entries are left out.
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
