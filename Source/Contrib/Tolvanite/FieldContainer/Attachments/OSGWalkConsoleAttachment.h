#pragma once

#include <string>

#include "OSGViewpointPath.h"
#include "OSGWalkConsoleAttachmentBase.h"

namespace OSG
{
/// What a walk console keeps with the scene: marked viewpoints, a recorded camera path and a home
/// viewpoint. It neither times nor drives a navigator: the host calls addRecorded at each tick of
/// `TickTime` milliseconds and feeds what the stepping operations deliver into its navigator.
///
/// Points and vectors are in world space. Two viewpoints are equal where no component differs by
/// more than 1e-6. The stepping operations write their arguments only where they return true. Home
/// is the three public fields `HomeAt`, `HomeFrom` and `HasHome`.
class OSG_CONTRIBTOLVANITE_API WalkConsoleAttachment : public WalkConsoleAttachmentBase
{
  public:
    // --- marks: labelled viewpoints and a cursor, which stands at one of them or nowhere ---
    /// Appends a mark and, with `setCurrent`, sets the cursor to it. A viewpoint equal to that of
    /// the last mark is dropped with its label, and the cursor stays.
    void addMark(Pnt3f const &from, Pnt3f const &at, Vec3f const &up, std::string const &label,
                 bool setCurrent);
    /// Removes the mark at the cursor, which then stands at the one that followed, or at the last.
    /// False where the cursor stands nowhere.
    bool removeMark();
    void clearMark();
    bool startMark(Pnt3f &from, Pnt3f &at, Vec3f &up, std::string &label);
    bool endMark(Pnt3f &from, Pnt3f &at, Vec3f &up, std::string &label);
    /// False at the last mark, and where the cursor stands nowhere.
    bool nextMark(Pnt3f &from, Pnt3f &at, Vec3f &up, std::string &label);
    bool prevMark(Pnt3f &from, Pnt3f &at, Vec3f &up, std::string &label);
    /// Whether there is a mark; `atCursor`: whether the cursor stands at one.
    bool hasMark(bool atCursor) const;
    bool hasNextMark() const;
    bool hasPrevMark() const;

    // --- recording: a viewpoint per tick, equal ones in a row stored once, and a cursor ---
    /// Appends a tick. The cursor stays: at the former end it then has a next tick.
    void addRecorded(Pnt3f const &from, Pnt3f const &at, Vec3f const &up);
    /// Empties the recording; `TickTime` and home stay.
    void clearRecorded();
    /// The first and the last tick.
    bool startRecorded(Pnt3f &from, Pnt3f &at, Vec3f &up);
    bool endRecorded(Pnt3f &from, Pnt3f &at, Vec3f &up);
    /// One tick on or back.
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
    /// Whether the fields of a group have one length, as all operations here leave them.
    bool checkMarkConsistency() const;
    bool checkRecorededConsistency() const;

    TickCursor cursor() const;
    bool goToMark(std::optional<Int32> const &row, Pnt3f &from, Pnt3f &at, Vec3f &up,
                  std::string &label);
    bool goToTick(std::optional<TickCursor> const &place, Pnt3f &from, Pnt3f &at, Vec3f &up);
};
} // namespace OSG
