#include "Settings.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>

#include <nlohmann/json.hpp>

#include "OSGNamedEngine.h"
#include "ReplaceFile.h"

namespace Viewer
{
namespace fs = std::filesystem;
using Json = nlohmann::json;

namespace
{
// Relative paths are to be ignored, as the rules for these folders have it.
fs::path base_folder(char const *variable, char const *belowHome)
{
    char const *const set = std::getenv(variable);
    if(set != nullptr && fs::path(set).is_absolute())
        return set;
    char const *const home = std::getenv("HOME");
    return home != nullptr && fs::path(home).is_absolute() ? fs::path(home) / belowHome
                                                           : fs::path();
}

fs::path own_folder(char const *variable, char const *belowHome)
{
    fs::path const base = base_folder(variable, belowHome);
    return base.empty() ? base : base / "tolvanite";
}

fs::path settings_file() { return config_folder() / "viewer.json"; }
fs::path recent_file() { return state_folder() / "recent.json"; }

// Null where there is no such file; `complaint` where it is broken.
Json read_json(fs::path const &file, std::string &complaint)
{
    std::error_code error;
    if(!fs::is_regular_file(file, error))
        return {};
    std::ifstream in(file, std::ios::binary);
    Json json = Json::parse(in, nullptr, false);
    if(!json.is_discarded())
        return json;
    complaint = file.string() + " is broken and was not read";
    return {};
}

std::string write_json(fs::path const &file, Json const &json)
{
    std::error_code error;
    fs::create_directories(file.parent_path(), error);
    if(error)
        return error.message();
    return Tool::replace_file(file.string(),
                              [&json](std::string const &path)
                              {
                                  std::ofstream out(path, std::ios::binary);
                                  out << json.dump(4, ' ', false, Json::error_handler_t::replace)
                                      << '\n';
                                  return bool(out.flush());
                              });
}

// A value of another type than the setting's leaves the setting.
template <class T>
void take(Json const &json, char const *key, T &value)
{
    auto const found = json.is_object() ? json.find(key) : json.end();
    if(found == json.end())
        return;
    bool const fits = std::is_same_v<T, bool>  ? found->is_boolean()
                      : std::is_same_v<T, int> ? found->is_number_integer()
                                               : found->is_string();
    if(fits)
        value = found->get<T>();
}

bool is_engine(std::string const &name)
{
    std::vector<std::string> const names = OSG::engine_names();
    return std::find(names.begin(), names.end(), name) != names.end();
}
} // namespace

std::span<StyleName const> style_names()
{
    static constexpr StyleName Names[] = {
        {OSG::DrawStyle::Shaded, "shaded", "Shaded"},
        {OSG::DrawStyle::ShadedWithWires, "shadedWithWires", "Shaded with wires"},
        {OSG::DrawStyle::Wires, "wires", "Wires"}};
    return Names;
}

fs::path config_folder() { return own_folder("XDG_CONFIG_HOME", ".config"); }
fs::path state_folder() { return own_folder("XDG_STATE_HOME", ".local/state"); }

void Settings::noteFile(std::string const &file)
{
    std::error_code error;
    fs::path const absolute = fs::absolute(file, error);
    std::string const name = error ? file : absolute.lexically_normal().string();
    std::erase(recentFiles, name);
    recentFiles.insert(recentFiles.begin(), name);
    recentFiles.resize(std::min(recentFiles.size(), MostRecentFiles));
}

std::string Settings::load()
{
    constexpr int MostSamples = 16;
    std::string complaint;
    Json const json = read_json(settings_file(), complaint);
    std::string upward;
    std::string wanted;
    std::string styled;
    take(json, "dark", isDark);
    take(json, "samples", samples);
    take(json, "engine", wanted);
    take(json, "up", upward);
    take(json, "style", styled);
    take(json, "edges", showsEdges);
    take(json, "clickCenters", clickCenters);
    take(json, "zoomsToPointer", zoomsToPointer);
    take(json, "reloads", reloads);
    samples = std::clamp(samples, 0, MostSamples);
    if(is_engine(wanted))
        engine = wanted;
    for(StyleName const &name : style_names())
        if(styled == name.key)
            style = name.style;
    if(upward == "z" || upward == "y")
        sceneUp = upward == "z" ? OSG::SceneUp::Z : OSG::SceneUp::Y;

    Json const recent = read_json(recent_file(), complaint);
    if(recent.is_array())
    {
        recentFiles.clear();
        for(Json const &file : recent)
            if(file.is_string() && recentFiles.size() < MostRecentFiles)
                recentFiles.push_back(file.get<std::string>());
    }
    return complaint;
}

namespace
{
char const *key_of(OSG::DrawStyle style)
{
    for(StyleName const &name : style_names())
        if(style == name.style)
            return name.key;
    return style_names().front().key;
}
} // namespace

std::string Settings::save() const
{
    if(config_folder().empty())
        return "there is no home folder";
    std::string const reason =
        write_json(settings_file(), {{"dark", isDark},
                                     {"samples", samples},
                                     {"engine", engine},
                                     {"up", sceneUp == OSG::SceneUp::Z ? "z" : "y"},
                                     {"style", key_of(style)},
                                     {"edges", showsEdges},
                                     {"clickCenters", clickCenters},
                                     {"zoomsToPointer", zoomsToPointer},
                                     {"reloads", reloads}});
    return reason.empty() ? write_json(recent_file(), recentFiles) : reason;
}
} // namespace Viewer
