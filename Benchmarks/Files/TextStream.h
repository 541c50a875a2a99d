#pragma once

#include <istream>
#include <streambuf>
#include <string>

namespace OSG::Bench
{
/// A stream over a text that it does not own.
class TextStream : private std::streambuf, public std::istream
{
  public:
    explicit TextStream(std::string const &text)
        : std::istream(this)
    {
        char *const begin = const_cast<char *>(text.data());
        setg(begin, begin, begin + text.size());
    }

  private:
    std::streambuf::pos_type seekoff(std::streambuf::off_type offset, std::ios::seekdir from,
                                     std::ios::openmode) override
    {
        char *const base = from == std::ios::beg   ? eback()
                           : from == std::ios::cur ? gptr()
                                                   : egptr();
        if(offset < eback() - base || offset > egptr() - base)
            return -1;
        setg(eback(), base + offset, egptr());
        return gptr() - eback();
    }
    std::streambuf::pos_type seekpos(std::streambuf::pos_type place,
                                     std::ios::openmode mode) override
    {
        return seekoff(place, std::ios::beg, mode);
    }
};
} // namespace OSG::Bench
