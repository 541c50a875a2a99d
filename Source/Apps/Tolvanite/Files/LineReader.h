#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace Tool
{
/// Reads the lines of a file, a pipe or a terminal, and holds no more of it than a block and the
/// line that is being read.
class LineReader
{
  public:
    /// The longest line that is handed out, in bytes.
    static constexpr std::size_t MostBytes = std::size_t(4) << 20;

    /// "-" stands for standard input.
    explicit LineReader(std::string const &file);
    LineReader(LineReader const &) = delete;
    LineReader &operator=(LineReader const &) = delete;
    ~LineReader();

    /// False where the file could not be opened.
    bool isOpen() const { return _file >= 0; }
    /// Why the file was not opened, or why reading ended before the end.
    int error() const { return _error; }

    struct Line
    {
        std::string_view text; ///< without its end; valid until the next line is asked for
        bool isTooLong;        ///< of such a line only a part is handed out
    };
    /// The next line, which ends with "\n", "\r\n" or the file. `beforeRead` is called each time
    /// before the file is asked for more, which may take any time. False at the end.
    bool next(Line &line, std::function<void()> const &beforeRead);

  private:
    bool fill();

    int _file = -1;
    int _error = 0;
    std::string _block;
    std::size_t _begin = 0; // of what has not been handed out
    bool _isAtEnd = false;
};
} // namespace Tool
