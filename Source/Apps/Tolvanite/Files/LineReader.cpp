#include "LineReader.h"

#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Tool
{
namespace
{
constexpr std::size_t BlockBytes = std::size_t(256) << 10;

bool is_folder(int file)
{
    struct stat what = {};
    return fstat(file, &what) == 0 && S_ISDIR(what.st_mode);
}
} // namespace

LineReader::LineReader(std::string const &file)
{
    _file = file == "-" ? STDIN_FILENO : open(file.c_str(), O_RDONLY | O_CLOEXEC);
    if(_file < 0)
        _error = errno;
    else if(is_folder(_file))
    {
        _error = EISDIR;
        if(_file != STDIN_FILENO)
            close(_file);
        _file = -1;
    }
}

LineReader::~LineReader()
{
    if(_file > STDIN_FILENO)
        close(_file);
}

// Adds what the file gives at once. False at its end.
bool LineReader::fill()
{
    _block.erase(0, _begin);
    _begin = 0;
    std::size_t const size = _block.size();
    _block.resize(size + BlockBytes);
    ssize_t count = -1;
    do
        count = read(_file, _block.data() + size, BlockBytes);
    while(count < 0 && errno == EINTR);
    if(count < 0)
        _error = errno;
    _block.resize(size + static_cast<std::size_t>(count > 0 ? count : 0));
    return count > 0;
}

bool LineReader::next(Line &line, std::function<void()> const &beforeRead)
{
    line.isTooLong = false;
    std::size_t searched = _begin;
    std::size_t end = _block.find('\n', searched);
    while(end == std::string::npos && !_isAtEnd)
    {
        searched = _block.size() - _begin;
        if(searched > MostBytes)
        {
            line.isTooLong = true;
            _begin = _block.size() - 1; // keeps a last "\r"
            searched = 1;
        }
        beforeRead();
        _isAtEnd = !fill();
        end = _block.find('\n', searched);
    }
    if(end == std::string::npos)
        end = _block.size();
    bool const isThere = end < _block.size() || end > _begin || line.isTooLong;
    line.text = std::string_view(_block).substr(_begin, end - _begin);
    if(line.text.ends_with('\r'))
        line.text.remove_suffix(1);
    line.isTooLong = line.isTooLong || line.text.size() > MostBytes;
    _begin = end < _block.size() ? end + 1 : end;
    return isThere;
}
} // namespace Tool
