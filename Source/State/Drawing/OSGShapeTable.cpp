#include "OSGShapeTable.h"

#include <atomic>

namespace OSG
{
ShapeTable::ShapeTable() { renew(); }

void ShapeTable::renew()
{
    constinit static std::atomic<UInt64> last = 0;
    _number = last.fetch_add(1, std::memory_order_relaxed) + 1;
}

UInt32 ShapeTable::numberOf(DrawShape const *shape)
{
    auto const [place, isNew] = _numbers.try_emplace(shape, static_cast<UInt32>(_shapes.size()));
    if(!isNew)
        return place->second;
    _shapes.push_back(shape);
    renew();
    return place->second;
}

void ShapeTable::clear()
{
    _shapes.clear();
    _numbers.clear();
    renew();
}
} // namespace OSG
