#include "OSGPrimitiveIndexUse.h"

#include <atomic>
#include <memory>
#include <mutex>

#include "OSGChangeList.h"
#include "OSGPrimitiveIndexSlot.h"

namespace OSG
{
namespace
{
constexpr std::size_t NumInputs = 4;
constexpr auto Relaxed = std::memory_order_relaxed;

struct Counters
{
    std::atomic<UInt64> built;
    std::atomic<UInt64> dropped;
    std::atomic<UInt64> bytes;
    std::atomic<UInt64> served;
};
constinit Counters counters = {0, 0, 0, 0};
constinit PrimitiveIndexSettings settings_now;

void destroy_index(PrimitiveIndex *index)
{
    if(index == nullptr)
        return;
    counters.dropped.fetch_add(1, Relaxed);
    counters.bytes.fetch_sub(index->getBytes(), Relaxed);
    delete index;
}

void find_inputs(Geometry const &geometry, GeoProperty const *(&inputs)[NumInputs])
{
    inputs[0] = geometry.getTypes();
    inputs[1] = geometry.getLengths();
    inputs[2] = geometry.getPositions();
    inputs[3] = geometry.getIndex(Geometry::PositionsSlot);
}

// A stamp of 0 does not tell one array from another.
bool have_open_edits(GeoProperty const *const (&inputs)[NumInputs])
{
    for(GeoProperty const *input : inputs)
        if(input != nullptr && (input->getChangeMask() != 0 || input->getStamp() == 0))
            return true;
    return false;
}
} // namespace

/// The index of one kind of primitives of a geometry.
struct PrimitiveIndexState
{
    std::atomic<PrimitiveIndex *> index = nullptr;
    std::atomic<UInt64> work = 0;        ///< of plain loops
    std::atomic<bool> isClaimed = false; ///< somebody builds or has built

    ~PrimitiveIndexState() { clear(); }

    void clear()
    {
        destroy_index(index.exchange(nullptr, Relaxed));
        work.store(0, Relaxed);
        isClaimed.store(false, Relaxed);
    }

    /// Null for the plain loop. Builds where it is due.
    PrimitiveIndex const *get(Geometry const &geometry, IndexedKind kind, UInt32 corners)
    {
        PrimitiveIndex const *const found = index.load(std::memory_order_acquire);
        if(found == nullptr && isDue(corners) &&
           !isClaimed.exchange(true, std::memory_order_acq_rel))
            return build(geometry, kind);
        return found;
    }

  private:
    bool isDue(UInt32 corners) const
    {
        return !isClaimed.load(Relaxed) &&
               (settings_now.building != PrimitiveIndexSettings::Building::Automatic ||
                work.load(Relaxed) >= corners);
    }
    PrimitiveIndex const *build(Geometry const &geometry, IndexedKind kind);
};

PrimitiveIndex const *PrimitiveIndexState::build(Geometry const &geometry, IndexedKind kind)
{
    bool const isSorted = settings_now.building == PrimitiveIndexSettings::Building::Sorted;
    try
    {
        PrimitiveIndex *const made = build_primitive_index(geometry, kind, isSorted);
        if(made == nullptr)
            return nullptr; // nor will there be one for these values
        counters.built.fetch_add(1, Relaxed);
        counters.bytes.fetch_add(made->getBytes(), Relaxed);
        index.store(made, std::memory_order_release);
        return made;
    }
    catch(std::bad_alloc const &)
    {
        work.store(0, Relaxed); // the next try is as far away as this one was
        isClaimed.store(false, std::memory_order_release);
        return nullptr;
    }
}

/// The indices of a geometry and the values that they were built of.
class PrimitiveIndexRecord : public MemObject
{
  public:
    /// Clears the indices where the values have changed.
    void check(GeoProperty const *const (&inputs)[NumInputs])
    {
        if(!matches(inputs))
            renew(inputs);
    }
    PrimitiveIndexState &getState(IndexedKind kind) { return _states[static_cast<int>(kind)]; }

  private:
    bool matches(GeoProperty const *const (&inputs)[NumInputs]) const
    {
        constexpr auto Acquire = std::memory_order_acquire;
        bool same = _numDropped.load(Acquire) == ChangeList::getNumDropped();
        for(std::size_t i = 0; i < NumInputs; ++i)
            same = same && _inputs[i].load(Acquire) == inputs[i] &&
                   _stamps[i].load(Acquire) == stampOf(inputs[i]);
        return same;
    }
    static UInt32 stampOf(GeoProperty const *input)
    {
        return input != nullptr ? input->getStamp() : 0;
    }

    // All threads that query now find the same values, so none of them reads an index of others.
    // The index goes before the values are noted: who finds the values finds no old index.
    void renew(GeoProperty const *const (&inputs)[NumInputs])
    {
        constinit static std::mutex guard;
        std::lock_guard const hold(guard);
        if(matches(inputs))
            return;
        for(PrimitiveIndexState &state : _states)
            state.clear();
        for(std::size_t i = 0; i < NumInputs; ++i)
        {
            _inputs[i].store(inputs[i], std::memory_order_release);
            _stamps[i].store(stampOf(inputs[i]), std::memory_order_release);
        }
        _numDropped.store(ChangeList::getNumDropped(), std::memory_order_release);
    }

    std::atomic<GeoProperty const *> _inputs[NumInputs] = {};
    std::atomic<UInt32> _stamps[NumInputs] = {};
    std::atomic<UInt32> _numDropped = 0;
    PrimitiveIndexState _states[3];
};

// --- slot ---

PrimitiveIndexRecord *PrimitiveIndexSlot::obtain()
{
    std::uintptr_t word = _word.load(std::memory_order_acquire);
    if(toRecord(word) != nullptr)
        return toRecord(word);
    std::unique_ptr<PrimitiveIndexRecord> made;
    try
    {
        made = std::make_unique<PrimitiveIndexRecord>();
    }
    catch(std::bad_alloc const &)
    {
        return nullptr;
    }
    while(toRecord(word) == nullptr)
    {
        std::uintptr_t const wanted = reinterpret_cast<std::uintptr_t>(made.get()) | word;
        if(_word.compare_exchange_weak(word, wanted, std::memory_order_acq_rel))
            return made.release();
    }
    return toRecord(word);
}

void PrimitiveIndexSlot::destroy()
{
    delete find();
    _word.fetch_and(Warned, Relaxed);
}

// --- use ---

namespace
{
UInt32 min_corners(IndexedKind kind)
{
    return kind == IndexedKind::Triangles ? settings_now.minTriangleCorners
                                          : settings_now.minOtherCorners;
}

UInt32 corner_count(GeoProperty const *const (&inputs)[NumInputs])
{
    if(inputs[3] != nullptr)
        return static_cast<GeoIntegralProperty const *>(inputs[3])->size();
    return inputs[2] != nullptr ? static_cast<GeoVectorProperty const *>(inputs[2])->size() : 0;
}
} // namespace

PrimitiveIndexUse::PrimitiveIndexUse(Geometry const &geometry, IndexedKind kind)
{
    GeoProperty const *inputs[NumInputs];
    find_inputs(geometry, inputs);
    _corners = corner_count(inputs);
    if(_corners == 0 || _corners < min_corners(kind) || have_open_edits(inputs))
        return;
    PrimitiveIndexRecord *const record = geometry.getIndexSlot().obtain();
    if(record == nullptr)
        return;
    record->check(inputs);
    _state = &record->getState(kind);
    _index = _state->get(geometry, kind, _corners);
    if(_index != nullptr)
        counters.served.fetch_add(1, Relaxed);
}

PrimitiveIndexUse::~PrimitiveIndexUse()
{
    if(_work != 0 && _state != nullptr)
        _state->work.fetch_add(_work, Relaxed);
}

PrimitiveIndexSettings PrimitiveIndexUse::getSettings() { return settings_now; }

void PrimitiveIndexUse::setSettings(PrimitiveIndexSettings const &settings)
{
    settings_now = settings;
}

PrimitiveIndexStatistics PrimitiveIndexUse::getStatistics()
{
    return {counters.built.load(Relaxed), counters.dropped.load(Relaxed),
            counters.bytes.load(Relaxed), counters.served.load(Relaxed)};
}
} // namespace OSG
