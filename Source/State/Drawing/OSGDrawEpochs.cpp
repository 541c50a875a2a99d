#include "OSGDrawEpochs.h"

#include <cstddef>

namespace OSG
{
constinit std::atomic<UInt64> DrawEpochs::_materials = 0;
constinit std::atomic<UInt64> DrawEpochs::_meshes = 0;
constinit std::atomic<UInt64> DrawEpochs::_shapeEnds = 0;

namespace
{
// A handful of base types. They are registered while the system starts and only read afterwards.
struct Registered
{
    FieldContainerType const *type;
    DrawEpochs::Kind kind;
};
constexpr std::size_t MostKinds = 8;
constinit Registered registered[MostKinds] = {};
constinit std::size_t numRegistered = 0;
} // namespace

void DrawEpochs::registerKind(FieldContainerType const &type, Kind kind)
{
    for(std::size_t i = 0; i < numRegistered; ++i)
    {
        if(registered[i].type == &type)
            return;
    }
    if(numRegistered < MostKinds)
        registered[numRegistered++] = {&type, kind};
}

DrawEpochs::Kind DrawEpochs::kindOf(FieldContainerType const &type)
{
    for(std::size_t i = 0; i < numRegistered; ++i)
    {
        if(type.isDerivedFrom(*registered[i].type))
            return registered[i].kind;
    }
    return Kind::Other;
}
} // namespace OSG
