#pragma once

/// \file
/// Parses the corners of one face line.

#include "OSGObjRecords.h"
#include "OSGReadBuffer.h"

namespace OSG
{
/// The numbers of positions, texture coordinates and normals before a face. Relative indices count
/// back from there.
struct ObjElementCounts
{
    std::size_t count[ObjIndexKindCount] = {0, 0, 0};
};

/// Reads the corners behind the word "f" and adds a face.
///
/// A corner has up to three decimal numbers, separated by slashes, some of which may be missing
/// ("7", "7/2", "7/2/5", "7//5"). White space separates corners. Positive numbers count from 1,
/// negative ones from -1 backwards; 0 means no index. Numbers beyond 32 bits saturate. A backslash
/// continues the face in the next line. Any other character ends the face, and the rest of its line
/// is lost. A number that has no place in the corner (a fourth one, or one behind a slash at the
/// beginning of the corner) is skipped with everything up to the next white space.
///
/// At most ReadBuffer::LineLimit characters of a line are read. Further characters and the line
/// break stay in the text. Where there is nothing to read, the text has failed afterwards, and the
/// face has the corners that were read before, which may be none.
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
    void openCorner();
    void closeCorner();

    ReadBuffer &_text;
    ObjRecords &_records;
    ObjTiePoint _corner;
    bool _cornerIsOpen =
        false; ///< the corner has its first number; no white space has followed yet
};
} // namespace OSG
