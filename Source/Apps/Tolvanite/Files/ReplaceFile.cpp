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

// The new file gets the permissions of the old one, so that nobody can read it who could not read
// the old one.
void copy_permissions(fs::path const &from, fs::path const &to)
{
    std::error_code error;
    fs::file_status const old = fs::status(from, error);
    if(fs::exists(old))
        fs::permissions(to, old.permissions(), error);
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

std::string write_and_move(fs::path const &target, std::string const &name,
                           std::function<bool(std::string const &path)> const &write,
                           WorkFolder::Stays const &stays)
{
    WorkFolder folder(target.parent_path());
    std::string const path = (folder.path() / name).string();
    errno = 0; // a stream does not keep the reason of a failure
    if(!write(path))
        return reason_of(errno);
    copy_permissions(target, path);
    std::error_code error;
    return folder.moveOut(name, target, stays, error) ? std::string() : error.message();
}
} // namespace

std::string replace_file(std::string const &target,
                         std::function<bool(std::string const &path)> const &write,
                         WorkFolder::Stays const &stays)
{
    fs::path const path = without_links(target);
    std::string obstacle = obstacle_at(path);
    if(!obstacle.empty())
        return obstacle;
    try
    {
        return write_and_move(path, fs::path(target).filename().string(), write, stays);
    }
    catch(fs::filesystem_error const &error)
    {
        return error.code().message();
    }
}
} // namespace Tool
