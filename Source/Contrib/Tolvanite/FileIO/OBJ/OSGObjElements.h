#pragma once

/// \file
/// The words that begin an element of an OBJ scene file or of an MTL material library.
///
/// The tables alone decide which words are known. Words are case sensitive.

#include <array>
#include <functional>
#include <map>
#include <string>
#include <string_view>

#include "OSGBaseTypes.h"
#include "OSGContribTolvaniteApi.h"

namespace OSG
{
enum class ObjElement : Int32
{
    Unknown = 0,
    Vertex = 1,
    TexCoord = 2,
    Normal = 3,
    Face = 4,
    MaterialLibrary = 5,
    UseMaterial = 6,
    Group = 7,
    SmoothingGroup = 8,
    Object = 9
};

enum class MtlElement : Int32
{
    Unknown = 0,
    NewMaterial = 1,
    Diffuse = 2,
    Ambient = 3,
    Specular = 4,
    Shininess = 5,
    Illumination = 6,
    Transparency = 7,
    Dissolve = 8,
    Refraction = 9,
    TransmissionFilter = 10,
    Sharpness = 11,
    DiffuseMap = 12,
    AmbientMap = 13,
    SpecularMap = 14,
    DissolveMap = 15, ///< known but not supported: reported like an unknown word
    Decal = 16,
    Bump = 17,
    Reflection = 18
};

using ObjElementMap = std::map<std::string, ObjElement, std::less<>>;
using MtlElementMap = std::map<std::string, MtlElement, std::less<>>;

/// Fill a table if it is empty; otherwise do nothing.
OSG_CONTRIBTOLVANITE_API void fill_element_map(ObjElementMap &elements);
OSG_CONTRIBTOLVANITE_API void fill_element_map(MtlElementMap &elements);

/// The element of a word; Unknown for a word that is not in the table.
OSG_CONTRIBTOLVANITE_API MtlElement find_element(MtlElementMap const &elements,
                                                 std::string_view word);

/// Gives the same results as the table, but compares no strings for words of one or two characters,
/// with which nearly every line begins. Keeps a reference to the table, which must not change.
class OSG_CONTRIBTOLVANITE_API ObjElementFinder
{
  public:
    explicit ObjElementFinder(ObjElementMap const &elements);

    ObjElement find(std::string_view word) const
    {
        UInt16 const key = shortKey(word);
        Place const &place = _places[placeOf(key)];
        return key != 0 && place.key == key ? place.element : findInMap(word);
    }

  private:
    struct Place
    {
        UInt16 key = 0; ///< 0 for a free place
        ObjElement element = ObjElement::Unknown;
    };

    /// The characters of a word of one or two characters as a number. 0 for longer words and for
    /// words that begin with a zero byte.
    static UInt16 shortKey(std::string_view word)
    {
        if(word.size() == 1)
            return static_cast<unsigned char>(word[0]);
        if(word.size() == 2 && word[1] != '\0')
            return static_cast<UInt16>(static_cast<unsigned char>(word[0]) |
                                       static_cast<unsigned char>(word[1]) << 8);
        return 0;
    }
    static std::size_t placeOf(UInt16 key) { return (key ^ (key >> 5)) & 63; }

    ObjElement findInMap(std::string_view word) const;

    ObjElementMap const &_elements;
    std::array<Place, 64> _places;
};
} // namespace OSG
