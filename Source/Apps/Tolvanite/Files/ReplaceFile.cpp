#include "ReplaceFile.h"

#include <cerrno>
#include <filesystem>

namespace Tool
{
namespace fs = std::filesystem;

namespace
{
// Follows links, so that the file that a link leads to is replaced and the link stays.
fs::path without_links(fs::path path)
{
    constexpr int MostLinks = 40; // the kernel's own limit
    std::error_code error;
    for(int i = 0; i < MostLinks && fs::is_symlink(path, error); ++i)
    {
        fs::path const next = fs::read_symlink(path, error);
        path = next.is_absolute() ? next : path.parent_path() / next;
    }
    return path;
}

// Empty if the target can be replaced, otherwise the reason.
std::string obstacle_at(fs::path const &path)
{
    std::error_code error;
    fs::file_status const status = fs::status(path, error);
    if(status.type() == fs::file_type::not_found || status.type() == fs::file_type::regular)
        return {};
    if(status.type() == fs::file_type::directory)
        return "it is a folder";
    return error ? error.message() : "it is no regular file";
}

std::string reason_of(int number)
{
    return number != 0 ? std::generic_category().message(number) : "the format could not write it";
}

// `target` may be a link to `file`.
std::string write_and_move(fs::path const &file, fs::path const &target,
                           std::function<bool(std::string const &path)> const &write,
                           WorkFolder::Stays const &stays)
{
    WorkFolder folder(file.parent_path());
    std::string const name = target.filename().string();
    errno = 0; // a stream does not keep the reason of a failure
    if(!write((folder.path() / name).string()))
        return reason_of(errno);
    return folder.moveOut(name, file, target.parent_path(), stays);
}
} // namespace

std::string replace_file(std::string const &target,
                         std::function<bool(std::string const &path)> const &write,
                         WorkFolder::Stays const &stays)
{
    fs::path const file = without_links(target);
    std::string obstacle = obstacle_at(file);
    if(!obstacle.empty())
        return obstacle;
    try
    {
        return write_and_move(file, target, write, stays);
    }
    catch(fs::filesystem_error const &error)
    {
        return error.code().message();
    }
}
} // namespace Tool
