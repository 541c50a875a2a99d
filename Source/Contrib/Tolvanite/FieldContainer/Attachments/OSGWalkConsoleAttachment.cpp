#include "OSGWalkConsoleAttachment.h"

namespace OSG
{
WalkConsoleAttachment::~WalkConsoleAttachment() = default;

// --- the fields as rows ---

ViewpointRows<std::string> WalkConsoleAttachment::marks() const
{
    return {getMarkLabel(), getMarkFrom(), getMarkAt(), getMarkUp()};
}

ViewpointRows<UInt32> WalkConsoleAttachment::recorded() const
{
    return {getRecordedCardinality(), getRecordedFrom(), getRecordedAt(), getRecordedUp()};
}

// A damaged file may give fields of different lengths. They are cut to the shortest one before an
// edit, which would otherwise join values of different rows.
ViewpointColumns<std::string> WalkConsoleAttachment::editMarks()
{
    UInt32 const rows = marks().size();
    bool const consistent = checkMarkConsistency();
    ViewpointColumns<std::string> columns{*editMFMarkLabel(), *editMFMarkFrom(), *editMFMarkAt(),
                                          *editMFMarkUp()};
    if(!consistent)
        columns.resize(rows);
    return columns;
}

ViewpointColumns<UInt32> WalkConsoleAttachment::editRecorded()
{
    UInt32 const rows = recorded().size();
    bool const consistent = checkRecorededConsistency();
    ViewpointColumns<UInt32> columns{*editMFRecordedCardinality(), *editMFRecordedFrom(),
                                     *editMFRecordedAt(), *editMFRecordedUp()};
    if(!consistent)
        columns.resize(rows);
    return columns;
}

bool WalkConsoleAttachment::checkMarkConsistency() const { return marks().columnsAgree(); }
bool WalkConsoleAttachment::checkRecorededConsistency() const { return recorded().columnsAgree(); }

// --- marks ---

void WalkConsoleAttachment::addMark(Pnt3f const &from, Pnt3f const &at, Vec3f const &up,
                                    std::string const &label, bool setCurrent)
{
    if(marks().endsWith(from, at, up))
        return;
    editMarks().append(label, from, at, up);
    if(setCurrent)
        setMarkIndex(static_cast<Int32>(marks().size()) - 1);
}

bool WalkConsoleAttachment::removeMark()
{
    Int32 const row = getMarkIndex();
    if(row < 0 || Int64(row) >= Int64(marks().size()))
        return false;
    editMarks().erase(static_cast<UInt32>(row));
    if(static_cast<UInt32>(row) == marks().size())
        setMarkIndex(row - 1);
    return true;
}

void WalkConsoleAttachment::clearMark()
{
    editMarks().resize(0);
    setMarkIndex(-1);
}

bool WalkConsoleAttachment::goToMark(std::optional<Int32> const &row, Pnt3f &from, Pnt3f &at,
                                     Vec3f &up, std::string &label)
{
    if(!row)
        return false;
    auto const place = static_cast<UInt32>(*row);
    from = getMarkFrom()[place];
    at = getMarkAt()[place];
    up = getMarkUp()[place];
    label = getMarkLabel()[place];
    setMarkIndex(*row);
    return true;
}

bool WalkConsoleAttachment::startMark(Pnt3f &from, Pnt3f &at, Vec3f &up, std::string &label)
{
    auto const first = marks().size() != 0 ? std::optional(Int32(0)) : std::nullopt;
    return goToMark(first, from, at, up, label);
}

bool WalkConsoleAttachment::endMark(Pnt3f &from, Pnt3f &at, Vec3f &up, std::string &label)
{
    UInt32 const rows = marks().size();
    auto const last = rows != 0 ? std::optional(static_cast<Int32>(rows) - 1) : std::nullopt;
    return goToMark(last, from, at, up, label);
}

bool WalkConsoleAttachment::nextMark(Pnt3f &from, Pnt3f &at, Vec3f &up, std::string &label)
{
    return goToMark(next_row(getMarkIndex(), marks().size()), from, at, up, label);
}

bool WalkConsoleAttachment::prevMark(Pnt3f &from, Pnt3f &at, Vec3f &up, std::string &label)
{
    return goToMark(previous_row(getMarkIndex(), marks().size()), from, at, up, label);
}

bool WalkConsoleAttachment::hasMark(bool atCursor) const
{
    return marks().size() != 0 && (!atCursor || getMarkIndex() >= 0);
}

bool WalkConsoleAttachment::hasNextMark() const
{
    return next_row(getMarkIndex(), marks().size()).has_value();
}

bool WalkConsoleAttachment::hasPrevMark() const
{
    return previous_row(getMarkIndex(), marks().size()).has_value();
}

// --- recording ---

void WalkConsoleAttachment::addRecorded(Pnt3f const &from, Pnt3f const &at, Vec3f const &up)
{
    if(recorded().endsWith(from, at, up))
        ++(*editMFRecordedCardinality())[recorded().size() - 1];
    else
        editRecorded().append(1, from, at, up);
}

void WalkConsoleAttachment::clearRecorded()
{
    editRecorded().resize(0);
    setRecordedIndex(-1);
    setTickCounter(0);
}

TickCursor WalkConsoleAttachment::cursor() const { return {getRecordedIndex(), getTickCounter()}; }

bool WalkConsoleAttachment::goToTick(std::optional<TickCursor> const &place, Pnt3f &from, Pnt3f &at,
                                     Vec3f &up)
{
    if(!place)
        return false;
    auto const row = static_cast<UInt32>(place->row);
    from = getRecordedFrom()[row];
    at = getRecordedAt()[row];
    up = getRecordedUp()[row];
    if(place->row != getRecordedIndex())
        setRecordedIndex(place->row);
    setTickCounter(place->tick);
    return true;
}

bool WalkConsoleAttachment::startRecorded(Pnt3f &from, Pnt3f &at, Vec3f &up)
{
    return recorded().size() != 0 && goToTick(TickCursor{0, 1}, from, at, up);
}

bool WalkConsoleAttachment::endRecorded(Pnt3f &from, Pnt3f &at, Vec3f &up)
{
    UInt32 const rows = recorded().size();
    if(rows == 0)
        return false;
    return goToTick(TickCursor{static_cast<Int32>(rows) - 1, getRecordedCardinality()[rows - 1]},
                    from, at, up);
}

bool WalkConsoleAttachment::nextRecorded(Pnt3f &from, Pnt3f &at, Vec3f &up)
{
    return goToTick(next_tick(cursor(), getRecordedCardinality(), recorded().size()), from, at, up);
}

bool WalkConsoleAttachment::prevRecorded(Pnt3f &from, Pnt3f &at, Vec3f &up)
{
    return goToTick(previous_tick(cursor(), getRecordedCardinality(), recorded().size()), from, at,
                    up);
}

bool WalkConsoleAttachment::hasRecorded(bool atCursor) const
{
    return recorded().size() != 0 && (!atCursor || getRecordedIndex() >= 0);
}

bool WalkConsoleAttachment::hasNextRecorded() const
{
    return next_tick(cursor(), getRecordedCardinality(), recorded().size()).has_value();
}

bool WalkConsoleAttachment::hasPrevRecorded() const
{
    return previous_tick(cursor(), getRecordedCardinality(), recorded().size()).has_value();
}
} // namespace OSG
