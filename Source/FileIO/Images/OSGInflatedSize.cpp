#include "OSGInflatedSize.h"

#include <algorithm>
#include <array>

namespace OSG
{
namespace
{
class BitReader
{
  public:
    explicit BitReader(PictureBytes const &bytes)
        : _at(bytes)
    {
    }

    bool isGood() const { return _at.isGood(); }
    UInt32 bit()
    {
        if(_left == 0)
        {
            _byte = _at.byte();
            _left = 8;
        }
        UInt32 const value = _byte & 1u;
        _byte >>= 1;
        --_left;
        return value;
    }
    /// Reads a number. Its lowest bit comes first.
    UInt32 bits(int count)
    {
        UInt32 value = 0;
        for(int i = 0; i < count; ++i)
            value |= bit() << i;
        return value;
    }
    ByteCursor &wholeBytes()
    {
        _left = 0;
        return _at;
    }

  private:
    ByteCursor _at;
    UInt32 _byte = 0;
    int _left = 0;
};

constexpr int MaxCodeLength = 15;
constexpr UInt32 NoSymbol = ~UInt32(0);

/// A canonical Huffman code (RFC 1951, 3.2.2): the codes of one length are consecutive numbers in
/// the order of their symbols. The counts by length and the sorted symbols are therefore enough to
/// decode, without a tree.
class Codes
{
  public:
    Codes(UInt8 const *lengths, UInt32 count)
    {
        for(UInt32 symbol = 0; symbol < count; ++symbol)
            ++_count[lengths[symbol]];
        _count[0] = 0;
        UInt32 start[MaxCodeLength + 2] = {};
        for(int length = 1; length <= MaxCodeLength; ++length)
            start[length + 1] = start[length] + _count[length];
        for(UInt32 symbol = 0; symbol < count; ++symbol)
        {
            if(lengths[symbol] != 0)
                _symbols[start[lengths[symbol]]++] = static_cast<UInt16>(symbol);
        }
    }

    UInt32 read(BitReader &in) const
    {
        Int64 code = 0;
        Int64 first = 0;
        Int64 index = 0;
        for(int length = 1; length <= MaxCodeLength; ++length)
        {
            code |= in.bit();
            if(code - first < _count[length])
                return _symbols[static_cast<std::size_t>(index + code - first)];
            index += _count[length];
            first = (first + _count[length]) << 1;
            code <<= 1;
        }
        return NoSymbol;
    }

  private:
    std::array<Int32, MaxCodeLength + 1> _count{};
    std::array<UInt16, 320> _symbols{};
};

enum Symbol : UInt32
{
    EndOfBlock = 256,
    FirstLength = 257,
    LastLength = 285
};
// A match length is a base and the value of further bits, by symbol (RFC 1951, 3.2.5).
constexpr UInt16 LengthBase[] = {3,  4,  5,  6,  7,  8,  9,  10, 11,  13,  15,  17,  19,  23, 27,
                                 31, 35, 43, 51, 59, 67, 83, 99, 115, 131, 163, 195, 227, 258};
constexpr UInt8 LengthBits[] = {0, 0, 0, 0, 0, 0, 0, 0, 1, 1, 1, 1, 2, 2, 2,
                                2, 3, 3, 3, 3, 4, 4, 4, 4, 5, 5, 5, 5, 0};

class Counter
{
  public:
    Counter(PictureBytes const &bytes, UInt64 wanted)
        : _in(bytes)
        , _wanted(wanted)
    {
        _in.bits(16); // the header of the zlib format, whose content does not matter here
    }

    bool reaches()
    {
        for(bool isLast = false; !isLast && !isDone();)
        {
            isLast = _in.bit() != 0;
            if(!countBlock(_in.bits(2)))
                break;
        }
        return isDone();
    }

  private:
    bool isDone() const { return _made >= _wanted; }

    // Adds the size of one block. False where the stream ends early or is invalid.
    bool countBlock(UInt32 kind)
    {
        if(kind == 0)
            return countStored();
        if(kind == 1)
            return countFixed();
        return kind == 2 && countDynamic();
    }

    bool countStored()
    {
        ByteCursor &at = _in.wholeBytes();
        UInt32 const length = at.little16();
        if((at.little16() ^ length) != 0xffff || !at.skip(length))
            return false;
        _made += length;
        return true;
    }

    bool countFixed()
    {
        // The fixed codes of RFC 1951, 3.2.6.
        UInt8 lengths[288];
        std::fill(lengths, lengths + 144, UInt8(8));
        std::fill(lengths + 144, lengths + 256, UInt8(9));
        std::fill(lengths + 256, lengths + 280, UInt8(7));
        std::fill(lengths + 280, lengths + 288, UInt8(8));
        UInt8 distances[30];
        std::fill(distances, distances + 30, UInt8(5));
        return countCodes(Codes(lengths, 288), Codes(distances, 30));
    }

    bool countDynamic()
    {
        UInt32 const literals = _in.bits(5) + 257;
        UInt32 const distances = _in.bits(5) + 1;
        UInt32 const lengthCodes = _in.bits(4) + 4;
        // The code lengths are themselves coded. The lengths of that code come in this order (RFC
        // 1951, 3.2.7).
        constexpr UInt8 Order[19] = {16, 17, 18, 0, 8,  7, 9,  6, 10, 5,
                                     11, 4,  12, 3, 13, 2, 14, 1, 15};
        UInt8 lengthLengths[19] = {};
        for(UInt32 i = 0; i < lengthCodes; ++i)
            lengthLengths[Order[i]] = static_cast<UInt8>(_in.bits(3));
        Codes const code(lengthLengths, 19);
        UInt8 lengths[320] = {};
        return readLengths(code, lengths, literals + distances) &&
               countCodes(Codes(lengths, literals), Codes(lengths + literals, distances));
    }

    bool readLengths(Codes const &code, UInt8 *lengths, UInt32 count)
    {
        for(UInt32 i = 0; i < count;)
        {
            UInt32 const symbol = code.read(_in);
            // 0 to 15 are lengths. 16 repeats the last length, 17 and 18 repeat zero.
            if(symbol > 18 || !_in.isGood())
                return false;
            if(symbol < 16)
            {
                lengths[i++] = static_cast<UInt8>(symbol);
                continue;
            }
            if(symbol == 16 && i == 0)
                return false;
            UInt8 const repeated = symbol == 16 ? lengths[i - 1] : UInt8(0);
            UInt32 const times = symbol == 16   ? 3 + _in.bits(2)
                                 : symbol == 17 ? 3 + _in.bits(3)
                                                : 11 + _in.bits(7);
            if(times > count - i)
                return false;
            std::fill(lengths + i, lengths + i + times, repeated);
            i += times;
        }
        return true;
    }

    bool countCodes(Codes const &literals, Codes const &distances)
    {
        while(!isDone())
        {
            UInt32 const symbol = literals.read(_in);
            if(!_in.isGood() || symbol > LastLength)
                return false;
            if(symbol == EndOfBlock)
                return true;
            if(symbol < EndOfBlock)
            {
                ++_made;
                continue;
            }
            UInt32 const row = symbol - FirstLength;
            UInt32 const length = LengthBase[row] + _in.bits(LengthBits[row]);
            // Distance symbols run to 29. Their further bits are skipped.
            UInt32 const distance = distances.read(_in);
            if(distance > 29)
                return false;
            _in.bits(distance < 4 ? 0 : static_cast<int>(distance / 2 - 1));
            if(!_in.isGood())
                return false;
            _made += length;
        }
        return true;
    }

    BitReader _in;
    UInt64 _wanted;
    UInt64 _made = 0;
};
} // namespace

bool inflates_to(PictureBytes const &bytes, UInt64 wanted)
{
    return Counter(bytes, wanted).reaches();
}
} // namespace OSG
