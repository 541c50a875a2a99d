#include "OSGDressedRecord.h"

#include <algorithm>

#include "OSGCountOf.h"
#include "OSGEntryTable.h"

namespace OSG
{
class DressedRecord::Places : public EntryTable<ByPlace>
{
  public:
    using EntryTable::EntryTable;
};

DressedRecord::DressedRecord() = default;
DressedRecord::~DressedRecord() = default;

void DressedRecord::forgetPlaces() { _places.reset(); }

void DressedRecord::clear()
{
    _taken.clear();
    _items.clear();
    _opens.clear();
}

// From the outermost visiting node inwards. A host may walk a tree twice, which gives two entries.
void DressedRecord::addMarks(NodePath const &path, Appearance const &appearance,
                             SceneRecord const &record, std::vector<Mark> &marks)
{
    if(_places == nullptr)
        _places = std::make_shared<Places>(record.entries);
    auto const forEachIn = [this](UInt32 visiting, Node *node, auto use) {
        _places->forEach({node, 0, 0, {}, visiting}, use);
    };
    std::vector<Node *> const visiting = path.getVisiting();
    std::vector<UInt32> outer(1, SceneRecord::NoEntry);
    for(Node *node : visiting)
    {
        std::vector<UInt32> inner;
        for(UInt32 const entry : outer)
            forEachIn(entry, node, [&inner](UInt32 found) { inner.push_back(found); });
        outer.swap(inner);
    }
    for(UInt32 const entry : outer)
        forEachIn(entry, path.getNode(),
                  [&](UInt32 found) {
                      marks.push_back({found, appearance});
                  });
}

/// Entries below one another are ranges within one another: the marks that hold form a stack.
class DressedRecord::Sweep
{
  public:
    Sweep(SceneRecord const &record, AppearanceTable const &table, DrawStateTable &states,
          DressedRecord &result)
        : _record(record)
        , _table(table)
        , _states(states)
        , _result(result)
    {
    }

    /// `marks` in the order of the entries.
    void run(std::vector<Mark> const &marks)
    {
        for(Mark const &mark : marks)
        {
            leaveBefore(mark.entry);
            advanceTo(mark.entry);
            _open.push_back({_record.entries[mark.entry].end, appearance().with(mark.appearance)});
        }
        UInt32 const end = count_of(_record.entries);
        leaveBefore(end);
        advanceTo(end);
    }

  private:
    struct OpenMark
    {
        UInt32 end;
        Appearance appearance;
    };

    Appearance appearance() const { return _open.empty() ? Appearance() : _open.back().appearance; }

    void leaveBefore(UInt32 entry)
    {
        while(!_open.empty() && _open.back().end <= entry)
        {
            advanceTo(_open.back().end);
            _open.pop_back();
        }
    }

    // The appearance that holds now is that of the entries up to `entry`.
    void advanceTo(UInt32 entry)
    {
        bool const isDrawn = _table.isDrawn(appearance());
        SceneRecord::Starts const end = startsOf(entry);
        if(!isDrawn || appearance().material != nullptr)
        {
            for(UInt32 item = startsOf(_entry).item; item < end.item; ++item)
                take(item, isDrawn);
        }
        std::fill(_result._opens.begin() + startsOf(_entry).open, _result._opens.begin() + end.open,
                  appearance());
        _entry = entry;
    }

    SceneRecord::Starts startsOf(UInt32 entry) const
    {
        return entry < _record.entries.size() ? _record.entries[entry].starts : _record.ends();
    }

    void take(UInt32 item, bool isDrawn)
    {
        _result._taken.resize((_record.items.size() + 63) / 64, 0);
        _result._taken[item / 64] |= UInt64(1) << item % 64;
        if(isDrawn)
            _result._items.push_back(
                {item, _states.numberOf(appearance().material,
                                        _states.overridingOf(_record.items[item].state))});
    }

    SceneRecord const &_record;
    AppearanceTable const &_table;
    DrawStateTable &_states;
    DressedRecord &_result;
    std::vector<OpenMark> _open; // innermost last
    UInt32 _entry = 0;           // those before have their appearance
};

void DressedRecord::make(SceneRecord const &record, AppearanceTable const &table,
                         DrawStateTable &states)
{
    clear();
    if(table.isEmpty())
        return;
    std::vector<Mark> marks;
    table.forEach([&](NodePath const &path, Appearance const &appearance)
                  { addMarks(path, appearance, record, marks); });
    std::sort(marks.begin(), marks.end(),
              [](Mark const &a, Mark const &b) { return a.entry < b.entry; });
    _opens.resize(record.opens.size());
    Sweep(record, table, states, *this).run(marks);
}
} // namespace OSG
