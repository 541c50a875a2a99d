#pragma once

/// \file
/// Scenes as bytes of the binary scene format, and back.

#include <map>
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

/// A file put together by hand, in the order of its parts: with names in full (0x0200), or with
/// names that are numbers from their second time on (0x0300).
class OsbText
{
  public:
    OsbText &signature(UInt32 version = 0x0200)
    {
        _namesOnce = version == 0x0300;
        return raw("\x89OSB\r\n\x1a\n", 8).u16(version);
    }
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
    /// Begin and end of a record, or of the file.
    OsbText &typeName(std::string const &type)
    {
        if(tell(_types, type))
            text(type);
        return *this;
    }
    OsbText &record(std::string const &type) { return typeName(type).u8(4).u16(0x0200); }
    OsbText &end() { return _namesOnce ? u16(0) : text(""); }
    /// The header of a field, whose content follows.
    OsbText &field(std::string const &name, std::string const &type, UInt64 size)
    {
        if(tell(_fields, name + '\0' + type))
            text(name).text(type);
        return u32(size);
    }
    OsbText &children(std::initializer_list<UInt32> numbers)
    {
        field("children", "MFUnrecNodePtr", 4 + 4 * numbers.size()).u32(numbers.size());
        for(UInt32 number : numbers)
            u32(number);
        return *this;
    }
    OsbText &pointers(char const *name, char const *type, std::initializer_list<UInt32> numbers)
    {
        field(name, type, 4 + 4 * numbers.size()).u32(numbers.size());
        for(UInt32 number : numbers)
            u32(number);
        return *this;
    }
    OsbText &pointer(char const *name, char const *type, UInt32 number)
    {
        return field(name, type, 4).u32(number);
    }

    std::string const &bytes() const { return _bytes; }

  private:
    using Numbers = std::map<std::string, UInt32>;

    /// Writes the number of a name, if it has one; true where the name itself has to follow.
    bool tell(Numbers &numbers, std::string const &name)
    {
        if(!_namesOnce)
            return true;
        auto const [place, isNew] =
            numbers.try_emplace(name, static_cast<UInt32>(numbers.size()) + 1);
        u16(place->second);
        return isNew;
    }

    OsbText &number(UInt64 value, int width)
    {
        for(int i = 0; i < width; ++i)
            _bytes += static_cast<char>(value >> (8 * i));
        return *this;
    }

    std::string _bytes;
    bool _namesOnce = false;
    Numbers _types;
    Numbers _fields;
};
} // namespace OSG::Test
