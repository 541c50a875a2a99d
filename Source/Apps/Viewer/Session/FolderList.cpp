#include "FolderList.h"

#include <algorithm>
#include <tuple>

#include "OSGFileSuffix.h"
#include "OSGSceneFileHandler.h"

namespace Viewer
{
namespace fs = std::filesystem;

namespace
{
bool is_scene(fs::path const &file)
{
    std::string const suffix = OSG::file_suffix(file.string());
    return OSG::SceneFileHandlerBase::the()->getFileType(suffix.c_str()) != nullptr;
}
} // namespace

FolderList list_folder(fs::path const &folder)
{
    FolderList list{folder};
    std::error_code error;
    for(fs::directory_iterator it(folder, error), end; !error && it != end; it.increment(error))
    {
        std::string name = it->path().filename().string();
        std::error_code unknown; // of a link that leads nowhere, say: it is listed as a file
        bool const isFolder = it->is_directory(unknown);
        if(name.front() != '.')
            list.entries.push_back({std::move(name), isFolder, !isFolder && is_scene(it->path())});
    }
    if(error)
        list.reason = error.message();
    auto const order = [](FolderList::Entry const &entry) {
        return std::tuple(!entry.isFolder, !entry.isScene, OSG::lower_case(entry.name), entry.name);
    };
    std::sort(list.entries.begin(), list.entries.end(),
              [&order](auto const &left, auto const &right) { return order(left) < order(right); });
    return list;
}

std::vector<std::size_t> filter_entries(FolderList const &list, std::string const &text)
{
    std::string const word = OSG::lower_case(text);
    std::vector<std::size_t> numbers;
    for(std::size_t i = 0; i < list.entries.size(); ++i)
        if(OSG::lower_case(list.entries[i].name).find(word) != std::string::npos)
            numbers.push_back(i);
    return numbers;
}
} // namespace Viewer
