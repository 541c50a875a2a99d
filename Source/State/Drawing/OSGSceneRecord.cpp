#include "OSGSceneRecord.h"

#include <algorithm>

namespace OSG
{
namespace
{
template <class T>
UInt32 count_of(std::vector<T> const &list)
{
    return static_cast<UInt32>(list.size());
}

template <class T>
void put(std::vector<T> &list, UInt32 first, std::vector<T> const &part)
{
    std::copy(part.begin(), part.end(), list.begin() + first);
}
} // namespace

SceneRecord::Starts SceneRecord::ends() const
{
    return {count_of(items), count_of(spaces), count_of(scopes), count_of(lights), count_of(opens)};
}

SceneRecord::Starts SceneRecord::endsOf(UInt32 entry) const
{
    UInt32 const next = entries[entry].end;
    return next < entries.size() ? entries[next].starts : ends();
}

void SceneRecord::clear()
{
    entries.clear();
    items.clear();
    boxes.clear();
    spaces.clear();
    scopes.clear();
    lights.clear();
    opens.clear();
}

bool SceneRecord::replace(UInt32 entry, SceneRecord const &part)
{
    Starts const starts = entries[entry].starts;
    Starts const ends = endsOf(entry);
    Starts const counts = part.ends();
    if(count_of(part.entries) != entries[entry].end - entry ||
       starts.item + counts.item != ends.item || starts.space + counts.space != ends.space ||
       starts.scope + counts.scope != ends.scope || starts.light + counts.light != ends.light ||
       starts.open + counts.open != ends.open)
        return false;
    put(entries, entry, part.entries);
    put(items, starts.item, part.items);
    put(boxes, starts.item, part.boxes);
    put(spaces, starts.space, part.spaces);
    put(scopes, starts.scope, part.scopes);
    put(lights, starts.light, part.lights);
    put(opens, starts.open, part.opens);
    return true;
}
} // namespace OSG
