#include "OSGObjElements.h"

namespace OSG
{
namespace
{
template <class Map>
typename Map::mapped_type find_or_unknown(Map const &elements, std::string_view word)
{
    auto const found = elements.find(word);
    return found != elements.end() ? found->second : Map::mapped_type::Unknown;
}
} // namespace

void fill_element_map(ObjElementMap &elements)
{
    if(!elements.empty())
        return;
    elements = {{"", ObjElement::Unknown},
                {"v", ObjElement::Vertex},
                {"vt", ObjElement::TexCoord},
                {"vn", ObjElement::Normal},
                {"f", ObjElement::Face},
                {"fo", ObjElement::Face},
                {"mtllib", ObjElement::MaterialLibrary},
                {"usemtl", ObjElement::UseMaterial},
                {"g", ObjElement::Group},
                {"s", ObjElement::SmoothingGroup},
                {"o", ObjElement::Object}};
}

void fill_element_map(MtlElementMap &elements)
{
    if(!elements.empty())
        return;
    elements = {{"", MtlElement::Unknown},
                {"newmtl", MtlElement::NewMaterial},
                {"Kd", MtlElement::Diffuse},
                {"Ka", MtlElement::Ambient},
                {"Ks", MtlElement::Specular},
                {"Ns", MtlElement::Shininess},
                {"illum", MtlElement::Illumination},
                {"Tr", MtlElement::Transparency},
                {"d", MtlElement::Dissolve},
                {"Ni", MtlElement::Refraction},
                {"Tf", MtlElement::TransmissionFilter},
                {"sharpness", MtlElement::Sharpness},
                {"map_Kd", MtlElement::DiffuseMap},
                {"map_Ka", MtlElement::AmbientMap},
                {"map_Ks", MtlElement::SpecularMap},
                {"map_d", MtlElement::DissolveMap},
                {"decal", MtlElement::Decal},
                {"bump", MtlElement::Bump},
                {"refl", MtlElement::Reflection}};
}

MtlElement find_element(MtlElementMap const &elements, std::string_view word)
{
    return find_or_unknown(elements, word);
}

ObjElementFinder::ObjElementFinder(ObjElementMap const &elements)
    : _elements(elements)
{
    for(auto const &[word, element] : elements)
    {
        UInt16 const key = shortKey(word);
        if(key != 0 && _places[placeOf(key)].key == 0)
            _places[placeOf(key)] = {key, element};
    }
}

ObjElement ObjElementFinder::findInMap(std::string_view word) const
{
    return find_or_unknown(_elements, word);
}
} // namespace OSG
