#include "OutputFile.h"

#include <filesystem>

#include <unistd.h>

namespace Tool
{
namespace fs = std::filesystem;

namespace
{
// A link stays a link: what it leads to is replaced.
fs::path without_links(fs::path path)
{
    constexpr int MostLinks = 40;
    std::error_code error;
    for(int i = 0; i < MostLinks && fs::is_symlink(path, error); ++i)
    {
        fs::path const next = fs::read_symlink(path, error);
        path = next.is_absolute() ? next : path.parent_path() / next;
    }
    return path;
}

// Who could not read the old file shall not read the new one.
void copy_permissions(fs::path const &from, fs::path const &to)
{
    std::error_code error;
    fs::file_status const old = fs::status(from, error);
    if(fs::exists(old))
        fs::permissions(to, old.permissions(), error);
}

bool can_be_replaced(fs::path const &path)
{
    std::error_code error;
    fs::file_status const status = fs::status(path, error);
    return status.type() == fs::file_type::not_found || status.type() == fs::file_type::regular;
}
} // namespace

OutputFile::OutputFile(std::string const &target)
{
    fs::path const path = without_links(target);
    _target = path.string();
    _beside = (path.parent_path() /
               ("." + path.filename().string() + "." + std::to_string(getpid()) + ".part"))
                  .string();
    if(!can_be_replaced(path))
    {
        _out.setstate(std::ios::failbit);
        return;
    }
    _out.open(_beside, std::ios::binary | std::ios::trunc);
    copy_permissions(path, _beside);
}

OutputFile::~OutputFile()
{
    if(_beside.empty())
        return;
    _out.close();
    std::error_code error;
    fs::remove(_beside, error);
}

bool OutputFile::finish()
{
    _out.close();
    if(!_out)
        return false;
    std::error_code error;
    fs::rename(_beside, _target, error);
    if(error)
        return false;
    _beside.clear();
    return true;
}
} // namespace Tool
