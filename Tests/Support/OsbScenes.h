#pragma once

/// \file
/// Scenes as bytes of the binary scene format, and back.

#include <sstream>
#include <string>

#include "OSGGroup.h"
#include "OSGOSBSceneFileType.h"
#include "SceneBuilders.h"

namespace OSG::Test
{
inline std::string osb_bytes(Node *scene)
{
    std::ostringstream out;
    return OSBSceneFileType::the().write(scene, out, "osb") ? out.str() : std::string();
}

inline NodePtr osb_scene(std::string const &bytes)
{
    std::istringstream in(bytes);
    return NodePtr(OSBSceneFileType::the().read(in, "osb", {}));
}

inline NodePtr through_osb(Node *scene) { return osb_scene(osb_bytes(scene)); }

/// A file put together by hand, in the order of its parts.
class OsbText
{
  public:
    OsbText &signature() { return raw("\x89OSB\r\n\x1a\n", 8).u16(0x0200); }
    OsbText &u8(UInt32 value) { return number(value, 1); }
    OsbText &u16(UInt32 value) { return number(value, 2); }
    OsbText &u32(UInt64 value) { return number(value, 4); }
    OsbText &text(std::string const &value)
    {
        return u32(value.size() + 1).raw(value.c_str(), value.size() + 1);
    }
    OsbText &raw(char const *bytes, std::size_t count)
    {
        _bytes.append(bytes, count);
        return *this;
    }
    /// Begin and end of a record.
    OsbText &record(std::string const &type) { return text(type).u8(4).u16(0x0200); }
    OsbText &end() { return text(""); }
    /// The header of a field, whose content follows.
    OsbText &field(std::string const &name, std::string const &type, UInt64 size)
    {
        return text(name).text(type).u32(size);
    }
    OsbText &children(std::initializer_list<UInt32> numbers)
    {
        field("children", "MFUnrecNodePtr", 4 + 4 * numbers.size()).u32(numbers.size());
        for(UInt32 number : numbers)
            u32(number);
        return *this;
    }

    std::string const &bytes() const { return _bytes; }

  private:
    OsbText &number(UInt64 value, int width)
    {
        for(int i = 0; i < width; ++i)
            _bytes += static_cast<char>(value >> (8 * i));
        return *this;
    }

    std::string _bytes;
};
} // namespace OSG::Test
