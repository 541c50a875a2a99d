#pragma once

/// \file
/// The corners of one face line.

#include "OSGObjRecords.h"
#include "OSGReadBuffer.h"

namespace OSG
{
/// How many elements of each kind stand before a face; relative indices count back from there.
struct ObjElementCounts
{
    std::size_t count[ObjIndexKindCount] = {0, 0, 0};
};

/// Reads what stands behind the word "f" and adds it as a face.
///
/// A corner has up to three decimal numbers between slashes, any of them left out ("7", "7/2",
/// "7/2/5", "7//5"); corners stand apart by white space. Numbers count from 1, or from -1
/// backwards; 0 is none. Numbers beyond 32 bits saturate. A backslash goes on in the next line.
/// What is neither number, slash nor white space ends the face, and the rest of its line is lost. A
/// number without a slot of its own (a fourth one, or one behind a slash before the corner's first)
/// is passed over with all that follows up to the next white space.
///
/// Of each line at most ReadBuffer::lineLimit characters are read; what is behind them stays in the
/// text, and so does the line break. Where there is nothing to read the text is in a failed state
/// afterwards, and the face has the corners that were read up to there, or none.
class OSG_CONTRIBTOLVANITE_API ObjFaceParser
{
  public:
    /// Keeps references to both.
    ObjFaceParser(ReadBuffer &text, ObjRecords &records)
        : _text(text)
        , _records(records)
    {
    }

    void parse(ObjElementCounts const &counts);

  private:
    enum class LineEnd
    {
        Face,
        Continued
    };

    LineEnd parseLine(char const *p, ObjElementCounts const &counts);
    char const *takePlainCorners(char const *p);
    void openCorner();
    void closeCorner();

    ReadBuffer &_text;
    ObjRecords &_records;
    ObjTiePoint _corner;
    bool _cornerIsOpen = false; ///< the corner has its first number and no white space followed yet
};
} // namespace OSG
