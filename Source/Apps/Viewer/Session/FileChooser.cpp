#include "FileChooser.h"

#include <algorithm>
#include <cstdlib>

#include "OSGFileSuffix.h"
#include "WriteScene.h"

namespace Viewer
{
namespace fs = std::filesystem;

namespace
{
fs::path home_folder()
{
    char const *const home = std::getenv("HOME");
    return home != nullptr ? home : "/";
}
} // namespace

void FileChooser::begin(Purpose purpose, std::string const &file)
{
    _purpose = purpose;
    _isAsking = true;
    _replaced.reset();
    std::error_code error;
    fs::path const path = fs::absolute(file.empty() ? "." : file, error).lexically_normal();
    fs::path folder = fs::is_directory(path, error) ? path : path.parent_path();
    while(!fs::is_directory(folder, error) && folder.has_relative_path())
        folder = folder.parent_path();
    _typed.clear();
    enter(folder);
    type(isForSaving() && !file.empty() ? path.stem().string() + ".osb" : "");
}

void FileChooser::enter(fs::path const &folder)
{
    _list = list_folder(folder);
    if(!isForSaving())
        _typed.clear();
    type(_typed);
}

void FileChooser::enterParent()
{
    std::string const left = _list.folder.filename().string();
    enter(_list.folder.parent_path());
    for(std::size_t i = 0; i < _shown.size(); ++i)
        if(_list.entries[_shown[i]].name == left)
            _atHand = i;
}

void FileChooser::enterHome() { enter(home_folder()); }

void FileChooser::type(std::string const &text)
{
    _typed = text;
    _atHand = 0;
    _shown = filter_entries(_list, isForSaving() ? "" : text);
    _note = noteOnTyped();
}

void FileChooser::take(std::size_t shown)
{
    if(shown >= _shown.size())
        return;
    _atHand = shown;
    FolderList::Entry const &entry = _list.entries[_shown[shown]];
    if(isForSaving() && !entry.isFolder)
        _typed = entry.name;
    _note = noteOnTyped();
}

void FileChooser::step(int by)
{
    if(_shown.empty())
        return;
    auto const last = static_cast<long>(_shown.size()) - 1;
    take(static_cast<std::size_t>(std::clamp(static_cast<long>(_atHand) + by, 0L, last)));
}

fs::path FileChooser::typedPath() const
{
    if(_typed == "~" || _typed.starts_with("~/"))
        return home_folder() / fs::path(_typed.substr(std::min<std::size_t>(2, _typed.size())));
    return (_list.folder / _typed).lexically_normal();
}

// With the suffix of a binary scene where that of the name is not written.
fs::path FileChooser::savedPath() const
{
    fs::path path = typedPath();
    if(!Tool::is_written(OSG::file_suffix(path.string())))
        path += ".osb";
    return path;
}

std::string FileChooser::noteOnTyped() const
{
    std::error_code error;
    fs::path const path = typedPath();
    if(_typed.empty() || fs::is_directory(path, error))
        return {};
    if(!isForSaving())
        return _shown.empty() && !fs::exists(path, error) ? "There is no such file." : "";
    fs::path const saved = savedPath();
    return saved != path ? "Will be saved as " + saved.filename().string() + '.' : "";
}

std::optional<std::string> FileChooser::accept()
{
    return isForSaving() ? acceptSave() : acceptOpen();
}

std::optional<std::string> FileChooser::acceptOpen()
{
    std::error_code error;
    fs::path path = typedPath();
    bool const isTypedWhole = !_typed.empty() && fs::exists(path, error);
    if(!isTypedWhole)
    {
        if(_shown.empty())
            return {};
        path = _list.folder / _list.entries[_shown[_atHand]].name;
    }
    if(!fs::is_directory(path, error))
        return give(path.string());
    enter(path);
    return {};
}

std::optional<std::string> FileChooser::acceptSave()
{
    if(_typed.empty())
        return {};
    std::error_code error;
    if(fs::is_directory(typedPath(), error))
    {
        fs::path const folder = typedPath();
        _typed.clear();
        enter(folder);
        return {};
    }
    fs::path const path = savedPath();
    if(!fs::exists(path, error))
        return give(path.string());
    _replaced = path.string();
    return {};
}

std::optional<std::string> FileChooser::confirm()
{
    std::string const file = _replaced.value_or("");
    return file.empty() ? std::nullopt : give(file);
}

std::optional<std::string> FileChooser::give(std::string const &file)
{
    end();
    _replaced.reset();
    return file;
}
} // namespace Viewer
