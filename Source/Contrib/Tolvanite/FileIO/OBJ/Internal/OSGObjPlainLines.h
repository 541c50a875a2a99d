#pragma once

/// \file
/// Reads the lines that nearly all OBJ files consist of, many at a time.
///
/// A line is plain if it begins with the same word as the line before it, if spaces stand between
/// its values, and if nothing but spaces, a carriage return and the line break stand behind them.
/// Its numbers are short: of a vertex up to seven digits and eight behind a point, and the line has
/// at most 63 characters; of a corner up to eight digits without a sign. All other lines are left
/// to the general readers, which give the same results for plain lines.
///
/// The text is looked at in two passes, some hundred numbers at a time. The first finds the numbers
/// and lays the digits of each into a word of eight bytes. The second converts the words, several
/// in an instruction. It is compiled for each of Highway's instruction sets, and all of them give
/// the same results.

#include <cstring>
#include <string_view>

#include "OSGObjRecords.h"
#include "OSGObjValueList.h"

namespace OSG
{
/// Characters behind the word of a line, up to the last that is in memory. A line break stands
/// behind them. DigitScanReach bytes from there can be read, and DigitsAtOnce before the word.
struct OSG_CONTRIBTOLVANITE_API ObjPlainText
{
    ObjPlainText(std::string_view word, std::string_view text);

    char const *begin;
    char const *end;
    /// A line break, the word and a blank, as the bytes of a number. Words of more than two
    /// characters have none; then only the rest of the first line is taken.
    UInt32 lineStart = 0;
    UInt32 lineStartMask = ~UInt32(0);
    UInt32 lineStartLength = 0;

    bool startsLine(char const *p) const
    {
        UInt32 next;
        std::memcpy(&next, p, sizeof next);
        return (next & lineStartMask) == lineStart;
    }
};

/// Lines that were taken, and the line break of the last of them. Without lines, the place where
/// the text begins.
struct ObjTakenLines
{
    UInt32 count;
    char const *end;
};

/// Take the values of the first line, and of the plain lines that follow it, and add them. Nothing
/// of a line that is not plain is added.
OSG_CONTRIBTOLVANITE_API ObjTakenLines take_plain_vertices(ObjPlainText const &text,
                                                           ObjValueList<Pnt3f> &to);
OSG_CONTRIBTOLVANITE_API ObjTakenLines take_plain_vertices(ObjPlainText const &text,
                                                           ObjValueList<Vec3f> &to);
OSG_CONTRIBTOLVANITE_API ObjTakenLines take_plain_vertices(ObjPlainText const &text,
                                                           ObjValueList<Vec2f> &to);
OSG_CONTRIBTOLVANITE_API ObjTakenLines take_plain_faces(ObjPlainText const &text, ObjRecords &to);
} // namespace OSG
