#include "OSGSelectionRecords.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <utility>

namespace OSG
{
namespace
{
// A list that has grown beyond this is freed instead of emptied.
constexpr std::size_t KeptBytes = 1024;

template <class List>
void empty_list(List &list)
{
    if(list.capacity() * sizeof(typename List::value_type) > KeptBytes)
        List().swap(list);
    else
        list.clear();
}

/// A place that is to be sorted and a key that orders like the distance.
struct SortItem
{
    UInt32 key;
    UInt32 place;
};
using SortItems = SelectionRecords::List<SortItem>;

// Floats order like integers once the bits of negative ones are turned round. Both zeros are equal.
UInt32 sort_key(Real32 distance)
{
    UInt32 const bits = std::bit_cast<UInt32>(distance + 0.f);
    return (bits >> 31) != 0 ? ~bits : bits | 0x80000000u;
}

// Sorting by counting, from the lowest digit on. It is stable.
void radix_sort(SortItems &items)
{
    constexpr UInt32 Bits = 11;
    constexpr UInt32 Digits = 1u << Bits;
    SortItems other(items.size());
    for(UInt32 shift = 0; shift < 32; shift += Bits)
    {
        std::array<UInt32, Digits> begins{};
        for(SortItem const &item : items)
            ++begins[item.key >> shift & (Digits - 1)];
        UInt32 sum = 0;
        for(UInt32 &begin : begins)
            sum += std::exchange(begin, sum);
        for(SortItem const &item : items)
            other[begins[item.key >> shift & (Digits - 1)]++] = item;
        items.swap(other);
    }
}

void sort_items(SortItems &items)
{
    constexpr std::size_t FewItems = 2048;
    auto const less = [](SortItem const &a, SortItem const &b) { return a.key < b.key; };
    if(std::is_sorted(items.begin(), items.end(), less))
        return;
    if(items.size() < FewItems)
        std::stable_sort(items.begin(), items.end(), less);
    else
        radix_sort(items);
}
} // namespace

// --- recording ---

void SelectionRecords::clear()
{
    empty_list(_visits);
    empty_list(_records);
    empty_list(_first);
    empty_list(_last);
    if(_paths.size() > 1)
        _paths = {Path()};
}

void SelectionRecords::addVisit(Node *node, UInt32 selectionType, Matrix const &matrix,
                                Path const &path)
{
    if(path.empty())
    {
        _visits.push_back({node, selectionType, 0, matrix});
        return;
    }
    if(_paths.back() != path)
        _paths.push_back(path);
    _visits.push_back({node, selectionType, static_cast<UInt32>(_paths.size() - 1), matrix});
}

void SelectionRecords::add(Record &record, Order &order)
{
    record.visit = static_cast<UInt32>(_visits.size() - 1);
    order.push_back(static_cast<UInt32>(_records.size()));
    _records.push_back(record);
}

// --- orders ---

SelectionRecords::Order SelectionRecords::recorded() const
{
    Order order(_first.rbegin(), _first.rend());
    order.insert(order.end(), _last.begin(), _last.end());
    return order;
}

SelectionRecords::Order SelectionRecords::sorted() const
{
    Order order = recorded();
    SortItems items;
    items.reserve(order.size());
    for(UInt32 place : order)
        items.push_back({sort_key(_records[place].distance), place});
    sort_items(items);
    std::transform(items.begin(), items.end(), order.begin(),
                   [](SortItem const &item) { return item.place; });
    return order;
}

// Gives each visit a number that visits of the same node share. The table of visits is open: a
// visit stands in the first free slot from the one that its node's address chooses.
SelectionRecords::Order SelectionRecords::numbersOfNodes() const
{
    constexpr UInt32 Free = ~0u;
    std::size_t const slots = std::bit_ceil(_visits.size() * 2 + 2);
    int const shift = 64 - std::countr_zero(slots);
    Order table(slots, Free);
    Order numbers(_visits.size());
    for(UInt32 visit = 0; visit < _visits.size(); ++visit)
    {
        auto const address = reinterpret_cast<std::uintptr_t>(_visits[visit].node);
        // The golden ratio spreads neighbouring addresses (Knuth, volume 3, 6.4).
        std::size_t slot = static_cast<UInt64>(address) * 0x9E3779B97F4A7C15u >> shift;
        while(table[slot] != Free && _visits[table[slot]].node != _visits[visit].node)
            slot = slot + 1 < slots ? slot + 1 : 0;
        if(table[slot] == Free)
            table[slot] = visit;
        numbers[visit] = table[slot];
    }
    return numbers;
}

SelectionRecords::Order SelectionRecords::nearestOfNodes() const
{
    Order const numbers = numbersOfNodes();
    List<bool> seen(_visits.size(), false);
    Order order = sorted();
    std::size_t kept = 0;
    for(UInt32 place : order)
    {
        UInt32 const number = numbers[_records[place].visit];
        if(!seen[number])
            order[kept++] = place;
        seen[number] = true;
    }
    order.resize(kept);
    return order;
}

SelectionRecords::Order SelectionRecords::farthestOfNodes() const
{
    Order const numbers = numbersOfNodes();
    List<bool> seen(_visits.size(), false);
    Order const all = sorted();
    Order order;
    for(auto place = all.rbegin(); place != all.rend(); ++place)
    {
        UInt32 const number = numbers[_records[*place].visit];
        if(!seen[number])
            order.push_back(*place);
        seen[number] = true;
    }
    // Runs of equal distance are in reverse so far.
    for(auto run = order.begin(); run != order.end();)
    {
        Real32 const distance = _records[*run].distance;
        auto const end = std::find_if(
            run, order.end(), [&](UInt32 place) { return _records[place].distance != distance; });
        std::reverse(run, end);
        run = end;
    }
    return order;
}
} // namespace OSG
