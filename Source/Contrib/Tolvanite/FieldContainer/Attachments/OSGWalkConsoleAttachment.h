#pragma once

#include <string>

#include "OSGViewpointPath.h"
#include "OSGWalkConsoleAttachmentBase.h"

namespace OSG
{
/// Stores the data of a walk console with the scene: marked viewpoints, a recorded camera path and
/// a home viewpoint.
///
/// The class has no clock and no navigator. The host calls addRecorded every `TickTime`
/// milliseconds. To replay, it passes the viewpoints that the stepping operations give to its
/// navigator.
///
/// Points and vectors are in world space. Two viewpoints are equal if no component differs by more
/// than 1e-6. The stepping operations write their arguments only if they return true. The home
/// viewpoint consists of the public fields `HomeAt`, `HomeFrom` and `HasHome`.
class OSG_CONTRIBTOLVANITE_API WalkConsoleAttachment : public WalkConsoleAttachmentBase
{
  public:
    // --- marks: viewpoints with labels, and a cursor that is at one of them or at none ---
    /// Appends a mark and, if `setCurrent` is true, moves the cursor to it. If the viewpoint equals
    /// that of the last mark, nothing changes and the label is ignored.
    void addMark(Pnt3f const &from, Pnt3f const &at, Vec3f const &up, std::string const &label,
                 bool setCurrent);
    /// Removes the mark at the cursor. The cursor then is at the mark that followed, or at the last
    /// one. False if the cursor is at no mark.
    bool removeMark();
    void clearMark();
    bool startMark(Pnt3f &from, Pnt3f &at, Vec3f &up, std::string &label);
    bool endMark(Pnt3f &from, Pnt3f &at, Vec3f &up, std::string &label);
    /// Step to the next and to the previous mark. False if there is none, or if the cursor is at no
    /// mark.
    bool nextMark(Pnt3f &from, Pnt3f &at, Vec3f &up, std::string &label);
    bool prevMark(Pnt3f &from, Pnt3f &at, Vec3f &up, std::string &label);
    /// Whether there is a mark and, if `atCursor` is true, whether the cursor is at one.
    bool hasMark(bool atCursor) const;
    bool hasNextMark() const;
    bool hasPrevMark() const;

    // --- recording: one viewpoint for each tick, and a cursor ---
    //
    // Consecutive ticks with equal viewpoints are stored as one row with their number.
    /// Appends a tick. The cursor does not move. If it was at the end, it now has a next tick.
    void addRecorded(Pnt3f const &from, Pnt3f const &at, Vec3f const &up);
    /// Removes all ticks. `TickTime` and the home viewpoint do not change.
    void clearRecorded();
    /// Move the cursor to the first or the last tick. False if there is none.
    bool startRecorded(Pnt3f &from, Pnt3f &at, Vec3f &up);
    bool endRecorded(Pnt3f &from, Pnt3f &at, Vec3f &up);
    /// Move the cursor by one tick forwards or backwards. False if there is no such tick.
    bool nextRecorded(Pnt3f &from, Pnt3f &at, Vec3f &up);
    bool prevRecorded(Pnt3f &from, Pnt3f &at, Vec3f &up);
    bool hasRecorded(bool atCursor) const;
    bool hasNextRecorded() const;
    bool hasPrevRecorded() const;

  protected:
    WalkConsoleAttachment() = default;
    WalkConsoleAttachment(WalkConsoleAttachment const &) = default;
    ~WalkConsoleAttachment() override;

    friend Pattern;

  private:
    ViewpointRows<std::string> marks() const;
    ViewpointRows<UInt32> recorded() const;
    ViewpointColumns<std::string> editMarks();
    ViewpointColumns<UInt32> editRecorded();
    /// Whether the fields of the marks, or of the recording, all have the same length. Every
    /// operation of this class leaves them so.
    bool checkMarkConsistency() const;
    bool checkRecorededConsistency() const;

    TickCursor cursor() const;
    bool goToMark(std::optional<Int32> const &row, Pnt3f &from, Pnt3f &at, Vec3f &up,
                  std::string &label);
    bool goToTick(std::optional<TickCursor> const &place, Pnt3f &from, Pnt3f &at, Vec3f &up);
};
} // namespace OSG
