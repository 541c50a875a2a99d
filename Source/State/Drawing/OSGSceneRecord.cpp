#include "OSGSceneRecord.h"

#include <algorithm>

#include "OSGCountOf.h"

namespace OSG
{
namespace
{
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

bool SceneRecord::fits(UInt32 entry, SceneRecord const &part) const
{
    Starts const starts = entries[entry].starts;
    Starts const counts = part.ends();
    Starts const wanted{starts.item + counts.item, starts.space + counts.space,
                        starts.scope + counts.scope, starts.light + counts.light,
                        starts.open + counts.open};
    return count_of(part.entries) == entries[entry].end - entry && wanted == endsOf(entry);
}

bool SceneRecord::hasSameNodes(UInt32 entry, SceneRecord const &part) const
{
    return std::equal(part.entries.begin(), part.entries.end(), entries.begin() + entry,
                      [](Entry const &a, Entry const &b)
                      { return a.node == b.node && a.end == b.end && a.visiting == b.visiting; });
}

bool SceneRecord::hasSameItems(UInt32 entry, SceneRecord const &part) const
{
    return std::equal(part.items.begin(), part.items.end(),
                      items.begin() + entries[entry].starts.item);
}

void SceneRecord::replace(UInt32 entry, SceneRecord const &part)
{
    Starts const starts = entries[entry].starts;
    put(entries, entry, part.entries);
    put(items, starts.item, part.items);
    put(boxes, starts.item, part.boxes);
    put(spaces, starts.space, part.spaces);
    put(scopes, starts.scope, part.scopes);
    put(lights, starts.light, part.lights);
    put(opens, starts.open, part.opens);
}
} // namespace OSG
