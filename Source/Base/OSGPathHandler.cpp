#include "OSGPathHandler.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

namespace OSG
{
namespace
{
std::string with_slashes(char const *name)
{
    std::string result = name != nullptr ? name : "";
    std::replace(result.begin(), result.end(), '\\', '/');
    return result;
}

bool is_absolute(std::string const &name)
{
#ifdef _WIN32
    if(name.size() > 2 && name[1] == ':' && name[2] == '/')
        return true;
#endif
    return !name.empty() && name[0] == '/';
}

bool is_regular_file(std::string const &name)
{
    try
    {
        std::error_code error;
        return std::filesystem::is_regular_file(std::filesystem::path(name), error) && !error;
    }
    catch(std::filesystem::filesystem_error const &)
    {
        return false; // the name cannot be converted to the system's character set
    }
}

/// The folder as an absolute path with a slash at its end.
std::string full_folder(std::string folder)
{
    if(!is_absolute(folder))
    {
        while(folder.compare(0, 2, "./") == 0)
            folder.erase(0, 2);
        std::error_code error;
        std::string current = std::filesystem::current_path(error).string();
        std::replace(current.begin(), current.end(), '\\', '/');
        if(!error && !current.empty())
            folder.insert(0, current.back() == '/' ? current : current + "/");
    }
    if(!folder.empty() && folder.back() != '/')
        folder.push_back('/');
    return folder;
}

std::string folder_of(std::string const &fileName)
{
    std::size_t const slash = fileName.rfind('/');
    return full_folder(slash == std::string::npos ? "" : fileName.substr(0, slash + 1));
}
} // namespace

PathHandler::PathHandler() = default;
PathHandler::~PathHandler() = default;

void PathHandler::pushBackPath(char const *folder)
{
    std::string const name = with_slashes(folder);
    if(!name.empty())
        _pathList.push_back(name);
}

void PathHandler::pushFrontPath(char const *folder)
{
    std::string const name = with_slashes(folder);
    if(!name.empty())
        _pathList.insert(_pathList.begin(), name);
}

void PathHandler::clearPathList() { _pathList.clear(); }

void PathHandler::setBaseFile(char const *fileName)
{
    _baseFolders.clear();
    if(fileName != nullptr && *fileName != '\0')
        pushBaseFile(fileName);
}

void PathHandler::pushBaseFile(char const *fileName)
{
    _baseFolders.push_back(folder_of(with_slashes(fileName)));
}

void PathHandler::popBaseFile()
{
    if(!_baseFolders.empty())
        _baseFolders.pop_back();
}

std::string PathHandler::findFile(char const *name) const
{
    std::string const wanted = with_slashes(name);
    if(wanted.empty())
        return std::string();
    if(is_absolute(wanted))
        return is_regular_file(wanted) ? wanted : std::string();
    auto const found = [&wanted](std::string const &folder)
    {
        std::string const path = full_folder(folder) + wanted;
        return is_regular_file(path) ? path : std::string();
    };
    std::string path;
    for(auto folder = _baseFolders.rbegin(); path.empty() && folder != _baseFolders.rend();
        ++folder)
        path = found(*folder);
    for(auto folder = _pathList.begin(); path.empty() && folder != _pathList.end(); ++folder)
        path = found(*folder);
    return path.empty() ? found(std::string()) : path;
}

PathHandlerBaseFile::PathHandlerBaseFile(PathHandler *handler, char const *fileName)
    : _handler(handler)
{
    if(_handler != nullptr)
        _handler->pushBaseFile(fileName);
}

PathHandlerBaseFile::~PathHandlerBaseFile()
{
    if(_handler != nullptr)
        _handler->popBaseFile();
}
} // namespace OSG
