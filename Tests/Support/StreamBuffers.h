#pragma once

/// \file
/// Stream buffers as a host's streams may have them: without a get area, with short pieces, without
/// seeking, with an exception in the middle, with endless text, with little room.

#include <algorithm>
#include <stdexcept>
#include <streambuf>
#include <string>

namespace OSG::Test
{
/// A text of one character. Not inlined: the compiler warns of overruns in strings of a known great
/// length that are not there.
[[gnu::noinline]] inline std::string repeated(std::size_t count, char c)
{
    return std::string(count, c);
}

/// Hands out a text in pieces.
class PieceBuffer : public std::streambuf
{
  public:
    static constexpr std::size_t Never = static_cast<std::size_t>(-1);

    struct Habits
    {
        std::size_t piece = 16;      ///< characters per piece; 0 for a buffer without get area
        bool seekable = true;        ///< relative seeking, which giving back needs
        std::size_t throwAt = Never; ///< reading this character raises an exception
    };

    PieceBuffer(std::string text, Habits habits)
        : _text(std::move(text))
        , _habits(habits)
    {
    }

    /// The text that has not been read yet.
    std::string rest() const { return _text.substr(position()); }

  protected:
    int_type underflow() override
    {
        _next = position();
        setg(nullptr, nullptr, nullptr);
        if(_next >= _habits.throwAt)
            throw std::runtime_error("no more of this text");
        if(_next == _text.size())
            return traits_type::eof();
        if(_habits.piece != 0)
        {
            std::size_t const limit = std::min(_text.size(), _habits.throwAt);
            std::size_t const areaEnd = std::min(_next + _habits.piece, limit);
            setg(_text.data() + _next, _text.data() + _next, _text.data() + areaEnd);
        }
        return traits_type::to_int_type(_text[_next]);
    }

    int_type uflow() override
    {
        int_type const c = underflow();
        if(traits_type::eq_int_type(c, traits_type::eof()))
            return c;
        if(gptr() != nullptr)
            gbump(1);
        else
            ++_next;
        return c;
    }

    pos_type seekoff(off_type offset, std::ios_base::seekdir way, std::ios_base::openmode) override
    {
        off_type const target = static_cast<off_type>(position()) + offset;
        if(!_habits.seekable || way != std::ios_base::cur || target < 0 ||
           target > static_cast<off_type>(_text.size()))
            return pos_type(off_type(-1));
        _next = static_cast<std::size_t>(target);
        setg(nullptr, nullptr, nullptr);
        return pos_type(target);
    }

  private:
    std::size_t position() const
    {
        return gptr() == nullptr ? _next : static_cast<std::size_t>(gptr() - _text.data());
    }

    std::string _text;
    Habits _habits;
    std::size_t _next = 0;
};

/// Repeats a text until so many bytes were given; holds only one copy of it.
class RepeatBuffer : public std::streambuf
{
  public:
    RepeatBuffer(std::string head, std::string repeated, std::uint64_t bytes)
        : _piece(std::move(head))
        , _repeated(std::move(repeated))
        , _left(bytes)
    {
    }

  protected:
    int_type underflow() override
    {
        if(_started || _piece.empty())
            _piece = _repeated;
        _started = true;
        if(_left < _piece.size())
            _piece.resize(static_cast<std::size_t>(_left));
        _left -= _piece.size();
        setg(_piece.data(), _piece.data(), _piece.data() + _piece.size());
        return _piece.empty() ? traits_type::eof() : traits_type::to_int_type(_piece[0]);
    }

  private:
    std::string _piece;
    std::string _repeated;
    std::uint64_t _left;
    bool _started = false;
};

/// Takes so many characters and no more, as a full disk does.
class NarrowBuffer : public std::streambuf
{
  public:
    explicit NarrowBuffer(std::size_t room)
        : _room(room)
    {
    }

  protected:
    std::streamsize xsputn(char const *, std::streamsize count) override
    {
        std::size_t const taken = std::min(_room, static_cast<std::size_t>(count));
        _room -= taken;
        return static_cast<std::streamsize>(taken);
    }
    int_type overflow(int_type c) override
    {
        if(_room == 0)
            return traits_type::eof();
        --_room;
        return c;
    }

  private:
    std::size_t _room;
};
} // namespace OSG::Test
