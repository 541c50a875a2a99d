#pragma once

#include <ostream>
#include <string>

#include "OSGBaseTypes.h"
#include "OSGSystemApi.h"

namespace OSG
{
/// Text output of field values over a standard stream, which must outlive it.
class OSG_SYSTEM_API OutStream
{
  public:
    explicit OutStream(std::ostream &out) : _out(out) {}

    OutStream &operator<<(int value);
    OutStream &operator<<(UInt32 value);
    OutStream &operator<<(UInt64 value);
    /// Shortest text that reads back to the same value, whatever the locale.
    OutStream &operator<<(Real32 value);
    OutStream &operator<<(void const *value);
    OutStream &operator<<(char const *text);
    OutStream &operator<<(std::string const &text);

  private:
    std::ostream &_out;
};
} // namespace OSG
