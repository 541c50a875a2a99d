// Highway includes this source once for each instruction set.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "OSGObjPlainLines.cpp"
#include <hwy/foreach_target.h>
// Behind foreach_target.h: it is read for each set.
#include <hwy/highway.h>

#include "OSGObjPlainLines.h"

#include <algorithm>
#include <bit>
#include <utility>

#include "OSGDigitScan.h"
#include "OSGReadBuffer.h"
#include "OSGStreamNumber.h"

HWY_BEFORE_NAMESPACE();
namespace OSG::HWY_NAMESPACE
{
namespace
{
namespace hn = hwy::HWY_NAMESPACE;

// --- what vertices and faces share ---

/// Numbers of a kind that are converted together.
constexpr std::size_t BatchSize = 512;

// Each bit tells of a character.
#if HWY_TARGET == HWY_SCALAR
HWY_INLINE UInt64 others_at(char const *text)
{
    UInt64 others = 0;
    for(UInt32 i = 0; i < DigitWindow::Size; i += 16)
        others |= UInt64(other_than_digits_16(text + i)) << i;
    return others;
}

HWY_INLINE UInt64 bits_of(char const *text, char c)
{
    UInt64 bits = 0;
    for(UInt32 i = 0; i < DigitWindow::Size; ++i)
        bits |= UInt64(text[i] == c) << i;
    return bits;
}

HWY_INLINE void convert_words(UInt64 const *from, std::size_t count, UInt32 offset, UInt32 *to)
{
    for(std::size_t i = 0; i < count; ++i)
        to[i] = number_of_word(from[i]) + offset;
}
#else
using Characters = hn::CappedTag<UInt8, DigitWindow::Size>;

template <class Test>
HWY_INLINE UInt64 bits_where(char const *text, Test const &test)
{
    Characters const characters;
    UInt64 bits = 0;
    for(std::size_t i = 0; i < DigitWindow::Size; i += hn::Lanes(characters))
    {
        auto const some = hn::LoadU(characters, reinterpret_cast<UInt8 const *>(text) + i);
        hn::StoreMaskBits(characters, test(some), reinterpret_cast<UInt8 *>(&bits) + i / 8);
    }
    return bits;
}

HWY_INLINE UInt64 others_at(char const *text)
{
    Characters const characters;
    return bits_where(text,
                      [&](auto some)
                      {
                          auto const digits = hn::Sub(some, hn::Set(characters, UInt8('0')));
                          return hn::Gt(digits, hn::Set(characters, UInt8(9)));
                      });
}

HWY_INLINE UInt64 bits_of(char const *text, char c)
{
    Characters const characters;
    return bits_where(text, [&](auto some)
                      { return hn::Eq(some, hn::Set(characters, static_cast<UInt8>(c))); });
}

/// Adds neighbouring digits, then neighbouring pairs, then the halves of a number. The words may
/// have other bits above those of a digit.
template <class Tag, class Words = hn::Vec<Tag>>
HWY_INLINE Words numbers_of_words(Tag const words, Words const text)
{
    hn::Repartition<UInt16, Tag> const pairs;
    hn::Repartition<UInt32, Tag> const fours;
    auto const digits =
        hn::BitCast(pairs, hn::And(text, hn::Set(words, UInt64(0x0f0f0f0f0f0f0f0f))));
    auto const tens =
        hn::Mul(hn::And(digits, hn::Set(pairs, UInt16(0xff))), hn::Set(pairs, UInt16(10)));
    auto const twoDigits = hn::Add(tens, hn::ShiftRight<8>(digits));
    auto const hundreds = hn::BitCast(
        fours, hn::Mul(twoDigits, hn::BitCast(pairs, hn::Set(fours, UInt32(0x00010064)))));
    auto const fourDigits =
        hn::Add(hn::And(hundreds, hn::Set(fours, UInt32(0xffff))), hn::ShiftRight<16>(hundreds));
    auto const high = hn::MulEven(fourDigits, hn::Set(fours, UInt32(10000)));
    return hn::Add(high, hn::ShiftRight<32>(hn::BitCast(words, fourDigits)));
}

/// Converts words to numbers and adds `offset`. Goes on to the end of a group of 16; there must be
/// room.
HWY_INLINE void convert_words(UInt64 const *from, std::size_t count, UInt32 offset, UInt32 *to)
{
    hn::CappedTag<UInt64, 8> const words;
    hn::Repartition<UInt32, decltype(words)> const numbers;
    std::size_t const lanes = hn::Lanes(words);
    for(std::size_t i = 0; i < count; i += 2 * lanes)
    {
        auto const low = numbers_of_words(words, hn::LoadU(words, from + i));
        auto const high = numbers_of_words(words, hn::LoadU(words, from + i + lanes));
        auto const both =
            hn::ConcatEven(numbers, hn::BitCast(numbers, high), hn::BitCast(numbers, low));
        hn::StoreU(hn::Add(both, hn::Set(numbers, offset)), numbers, to + i);
    }
}
#endif

HWY_INLINE bool ends_line(char c) { return c == '\n' || c == '\r'; }

/// Passes a space at the place `at`. False where there is none.
HWY_INLINE bool pass_space(DigitWindow &window, UInt32 &at)
{
    if(window[at] != ' ' || at == DigitWindow::Last)
        return false;
    window.pass();
    ++at;
    return true;
}

// --- vertices ---

/// Numbers in parts: the digits before the point, those behind it, and the number of the latter.
struct RealBatch
{
    UInt64 wholeWords[BatchSize];
    UInt64 fractionWords[BatchSize];
    UInt32 wholes[BatchSize];
    UInt32 fractions[BatchSize];
    UInt32 signs[BatchSize];
    UInt8 fractionDigits[BatchSize];
};

/// So many digits make a number that a double holds exactly.
constexpr UInt32 MostWholeDigits = 7;
constexpr UInt32 MostFractionDigits = 8;

/// Finds the number at the place `at` of the window. On success `at` is behind the character that
/// ends it. False where the number is not plain or does not end in the window.
HWY_INLINE bool find_number(DigitWindow &window, UInt64 signs, UInt32 &at, RealBatch &batch,
                            std::size_t n)
{
    UInt32 const sign = static_cast<UInt32>(signs >> at) & 1;
    DigitWindow ahead = window;
    UInt32 const point = ahead.other();
    UInt32 behind = point;
    UInt32 fraction = 0;
    if(ahead[point] == '.') [[likely]]
    {
        ahead.pass();
        behind = ahead.other();
        fraction = behind - point - 1;
    }
    UInt32 const whole = point - at - sign;
    if(whole > MostWholeDigits || fraction > MostFractionDigits || whole + fraction == 0)
        return false;
    if(behind >= DigitWindow::Last || (ahead[behind] != ' ' && !ends_line(ahead[behind])))
        return false;
    batch.wholeWords[n] = digit_word(ahead.at(point), whole);
    batch.fractionWords[n] = digit_word(ahead.at(behind), fraction);
    batch.signs[n] = sign << 31;
    batch.fractionDigits[n] = static_cast<UInt8>(fraction);
    ahead.pass();
    window = ahead;
    at = behind + 1;
    return true;
}

HWY_INLINE Real32 real_of(RealBatch const &batch, std::size_t i)
{
    UInt32 const digits = batch.fractionDigits[i];
    UInt64 const mantissa =
        batch.wholes[i] * StreamNumberTables::PowersOfTen[digits] + batch.fractions[i];
    Real32 magnitude;
    if(!round_safely(static_cast<Real64>(static_cast<Int64>(mantissa)) *
                         StreamNumberTables::Fractions[digits],
                     magnitude)) [[unlikely]]
        magnitude = round_exactly(mantissa, digits);
    return std::bit_cast<Real32>(std::bit_cast<UInt32>(magnitude) | batch.signs[i]);
}

/// Finds the numbers of a line. Returns the line break behind them, or null where the line is not
/// plain or longer than a window.
template <std::size_t... I>
HWY_INLINE char const *find_numbers(char const *line, RealBatch &batch, std::size_t n,
                                    std::index_sequence<I...>)
{
    // The line break is looked for by itself, so that the next line need not wait for the numbers.
    UInt64 const lineBreaks = bits_of(line, '\n');
    if(lineBreaks == 0)
        return nullptr;
    UInt32 const lineBreak = static_cast<UInt32>(std::countr_zero(lineBreaks));
    UInt64 const signs = bits_of(line, '-') & (bits_of(line, ' ') << 1 | 1);
    DigitWindow window(line, others_at(line) & ~signs);
    UInt32 at = 0;
    auto const findNumber = [&](std::size_t i)
    {
        while(!find_number(window, signs, at, batch, n + i))
        {
            if(!pass_space(window, at))
                return false;
        }
        return true;
    };
    if(!(findNumber(I) && ...))
        return nullptr;
    // The last number has passed the character behind it.
    UInt32 end = at - 1;
    while(end < lineBreak && (line[end] == ' ' || line[end] == '\r'))
        ++end;
    return end == lineBreak ? line + lineBreak : nullptr;
}

template <class Value>
HWY_INLINE ObjTakenLines take_values(ObjPlainText const &text, ObjValueList<Value> &to)
{
    RealBatch batch;
    std::size_t n = 0;
    ObjTakenLines taken = {0, text.begin};
    std::make_index_sequence<Value::Dimension> const numbers;
    for(char const *line = text.begin; n + Value::Dimension <= BatchSize;)
    {
        char const *const lineBreak = find_numbers(line, batch, n, numbers);
        if(lineBreak == nullptr || lineBreak >= text.end)
            break;
        n += Value::Dimension;
        ++taken.count;
        taken.end = lineBreak;
        if(!text.startsLine(lineBreak))
            break;
        line = lineBreak + text.lineStartLength;
    }
    convert_words(batch.wholeWords, n, 0, batch.wholes);
    convert_words(batch.fractionWords, n, 0, batch.fractions);
    for(std::size_t i = 0; i < n;)
    {
        Value &value = to.add();
        for(UInt32 k = 0; k < Value::Dimension; ++k)
            value[k] = real_of(batch, i++);
    }
    return taken;
}

ObjTakenLines take_points(ObjPlainText const &text, ObjValueList<Pnt3f> &to)
{
    return take_values(text, to);
}
ObjTakenLines take_normals(ObjPlainText const &text, ObjValueList<Vec3f> &to)
{
    return take_values(text, to);
}
ObjTakenLines take_tex_coords(ObjPlainText const &text, ObjValueList<Vec2f> &to)
{
    return take_values(text, to);
}

// --- faces ---

/// A longer line is read in parts. One of its characters may be the blank behind the word.
constexpr std::ptrdiff_t LongestLine = ReadBuffer::LineLimit - 1;
/// The most characters of a plain corner, with the one behind it.
constexpr UInt32 CornerReach = 3 * DigitsAtOnce + 3;
constexpr UInt32 MostCornersOfWindow = DigitWindow::Size / 2;

/// The kinds of numbers that all corners of a batch have.
struct CornerForm
{
    bool texCoord;
    bool normal;
};

struct CornerBatch
{
    UInt64 words[ObjIndexKindCount][BatchSize];
    Int32 indices[ObjIndexKindCount][BatchSize];
    Int32 sizes[BatchSize];
};

/// Finds the corner of that form at the place `at`. On success `at` is the place of the character
/// that ends it. False where the corner has another form or does not end in the window.
template <CornerForm Form>
HWY_INLINE bool find_corner(DigitWindow &window, UInt32 &at, CornerBatch &batch, std::size_t n)
{
    UInt32 begin = at;
    UInt32 end = window.other();
    if(end - begin - 1 >= DigitsAtOnce)
        return false;
    batch.words[ObjPositionIndex][n] = digit_word(window.at(end), end - begin);
    if constexpr(Form.texCoord || Form.normal)
    {
        if(window[end] != '/')
            return false;
        begin = end + 1;
        window.pass();
        end = window.other();
        if(Form.texCoord ? end - begin - 1 >= DigitsAtOnce : end != begin)
            return false;
        if constexpr(Form.texCoord)
            batch.words[ObjTexCoordIndex][n] = digit_word(window.at(end), end - begin);
    }
    if constexpr(Form.normal)
    {
        if(window[end] != '/')
            return false;
        begin = end + 1;
        window.pass();
        end = window.other();
        if(end - begin - 1 >= DigitsAtOnce)
            return false;
        batch.words[ObjNormalIndex][n] = digit_word(window.at(end), end - begin);
    }
    if(window[end] != ' ' && !ends_line(window[end]))
        return false;
    at = end;
    return true;
}

/// Finds the corners of a line. Returns the line break behind them, or null where the line is not
/// plain.
template <CornerForm Form>
HWY_INLINE char const *find_corners(char const *begin, CornerBatch &batch, std::size_t &n)
{
    while(n + MostCornersOfWindow <= BatchSize)
    {
        DigitWindow window(begin, others_at(begin));
        UInt32 at = 0;
        do
        {
            while(find_corner<Form>(window, at, batch, n))
            {
                ++n;
                if(!pass_space(window, at))
                    break;
            }
        } while(pass_space(window, at));
        begin += at;
        char const *const behind = begin + (*begin == '\r');
        if(*behind == '\n')
            return behind;
        // A window that had room for a whole corner does not show a plain one.
        if(at + CornerReach <= DigitWindow::Last)
            break;
    }
    return nullptr;
}

template <CornerForm Form>
HWY_INLINE ObjTakenLines take_faces_of(ObjPlainText const &text, ObjRecords &to)
{
    CornerBatch batch;
    std::size_t corners = 0;
    ObjTakenLines taken = {0, text.begin};
    for(char const *line = text.begin; taken.count != BatchSize;)
    {
        std::size_t n = corners;
        char const *const behind = find_corners<Form>(line, batch, n);
        if(behind == nullptr || behind >= text.end || behind == text.begin ||
           behind - line >= LongestLine)
            break;
        batch.sizes[taken.count++] = static_cast<Int32>(n - corners);
        corners = n;
        taken.end = behind;
        if(!text.startsLine(behind))
            break;
        line = behind + text.lineStartLength;
    }
    constexpr bool IsThere[ObjIndexKindCount] = {true, Form.texCoord, Form.normal};
    for(UInt32 kind = 0; kind < ObjIndexKindCount; ++kind)
    {
        // The numbers of a file count from 1.
        if(IsThere[kind])
            convert_words(batch.words[kind], corners, ~UInt32(0),
                          reinterpret_cast<UInt32 *>(batch.indices[kind]));
    }
    to.addFaces({batch.sizes, taken.count},
                {batch.indices[ObjPositionIndex],
                 Form.texCoord ? batch.indices[ObjTexCoordIndex] : nullptr,
                 Form.normal ? batch.indices[ObjNormalIndex] : nullptr},
                corners);
    return taken;
}

/// The form of the first corner decides for the batch.
ObjTakenLines take_faces(ObjPlainText const &text, ObjRecords &to)
{
    DigitWindow window(text.begin, others_at(text.begin));
    UInt32 at = 0;
    while(pass_space(window, at))
    {
    }
    UInt32 const first = window.other();
    window.pass();
    UInt32 const second = window.other();
    bool const hasSecond = window[first] == '/';
    bool const hasThird = hasSecond && window[second] == '/';
    if(!hasSecond)
        return take_faces_of<CornerForm{false, false}>(text, to);
    if(!hasThird)
        return take_faces_of<CornerForm{true, false}>(text, to);
    if(second == first + 1)
        return take_faces_of<CornerForm{false, true}>(text, to);
    return take_faces_of<CornerForm{true, true}>(text, to);
}
} // namespace
} // namespace OSG::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace OSG
{
ObjPlainText::ObjPlainText(std::string_view word, std::string_view text)
    : begin(text.data())
    , end(text.data() + text.size())
{
    if(word.size() > 2)
        return;
    char start[sizeof lineStart] = {'\n'};
    char mask[sizeof lineStart] = {};
    std::copy(word.begin(), word.end(), start + 1);
    start[1 + word.size()] = ' ';
    std::fill_n(mask, 2 + word.size(), '\xff');
    std::memcpy(&lineStart, start, sizeof start);
    std::memcpy(&lineStartMask, mask, sizeof mask);
    lineStartLength = static_cast<UInt32>(2 + word.size());
}

HWY_EXPORT(take_points);
HWY_EXPORT(take_normals);
HWY_EXPORT(take_tex_coords);
HWY_EXPORT(take_faces);

ObjTakenLines take_plain_vertices(ObjPlainText const &text, ObjValueList<Pnt3f> &to)
{
    return HWY_DYNAMIC_DISPATCH(take_points)(text, to);
}

ObjTakenLines take_plain_vertices(ObjPlainText const &text, ObjValueList<Vec3f> &to)
{
    return HWY_DYNAMIC_DISPATCH(take_normals)(text, to);
}

ObjTakenLines take_plain_vertices(ObjPlainText const &text, ObjValueList<Vec2f> &to)
{
    return HWY_DYNAMIC_DISPATCH(take_tex_coords)(text, to);
}

ObjTakenLines take_plain_faces(ObjPlainText const &text, ObjRecords &to)
{
    return HWY_DYNAMIC_DISPATCH(take_faces)(text, to);
}
} // namespace OSG
#endif
