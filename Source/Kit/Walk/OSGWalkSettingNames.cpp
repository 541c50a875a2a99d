#include "OSGWalkSettingNames.h"

#include <charconv>
#include <cmath>
#include <limits>
#include <map>
#include <variant>

namespace OSG
{
namespace
{
using Engine = WASDWalkEngine;
using Setter = std::variant<void (Engine::*)(bool), void (Engine::*)(Real32),
                            void (Engine::*)(UInt32), void (Engine::*)(Vec3f const &)>;

std::map<std::string, Setter> const &setters()
{
    static std::map<std::string, Setter> const all = {
        {"normal", static_cast<void (Engine::*)(Vec3f const &)>(&Engine::normal)},
        {"height", static_cast<void (Engine::*)(Real32)>(&Engine::height)},
        {"height_eye", static_cast<void (Engine::*)(Real32)>(&Engine::height_eye)},
        {"width", static_cast<void (Engine::*)(Real32)>(&Engine::width)},
        {"fatness", static_cast<void (Engine::*)(Real32)>(&Engine::fatness)},
        {"ground_distance", static_cast<void (Engine::*)(Real32)>(&Engine::ground_distance)},
        {"wall_distance", static_cast<void (Engine::*)(Real32)>(&Engine::wall_distance)},
        {"jump_strength", static_cast<void (Engine::*)(Real32)>(&Engine::jump_strength)},
        {"jump_staircase_strength",
         static_cast<void (Engine::*)(Real32)>(&Engine::jump_staircase_strength)},
        {"walk_mode", static_cast<void (Engine::*)(bool)>(&Engine::walk_mode)},
        {"god_mode", static_cast<void (Engine::*)(bool)>(&Engine::god_mode)},
        {"staircase_mode", static_cast<void (Engine::*)(bool)>(&Engine::staircase_mode)},
        {"motion_factor", static_cast<void (Engine::*)(Real32)>(&Engine::motion_factor)},
        {"motion_delta", static_cast<void (Engine::*)(Real32)>(&Engine::motion_delta)},
        {"motion_multiplier", static_cast<void (Engine::*)(Real32)>(&Engine::motion_multiplier)},
        {"motion_max_factor", static_cast<void (Engine::*)(Real32)>(&Engine::motion_max_factor)},
        {"fast_motion_factor", static_cast<void (Engine::*)(Real32)>(&Engine::fast_motion_factor)},
        {"slow_motion_factor", static_cast<void (Engine::*)(Real32)>(&Engine::slow_motion_factor)},
        {"rot_factor", static_cast<void (Engine::*)(Real32)>(&Engine::rot_factor)},
        {"rot_delta", static_cast<void (Engine::*)(Real32)>(&Engine::rot_delta)},
        {"rot_multiplier", static_cast<void (Engine::*)(Real32)>(&Engine::rot_multiplier)},
        {"rot_max_factor", static_cast<void (Engine::*)(Real32)>(&Engine::rot_max_factor)},
        {"fast_rot_factor", static_cast<void (Engine::*)(Real32)>(&Engine::fast_rot_factor)},
        {"slow_rot_factor", static_cast<void (Engine::*)(Real32)>(&Engine::slow_rot_factor)},
        {"num_step_loop", static_cast<void (Engine::*)(UInt32)>(&Engine::num_step_loop)},
        {"out_of_camera_console",
         static_cast<void (Engine::*)(bool)>(&Engine::out_of_camera_console)},
        {"god_perspecitve_console",
         static_cast<void (Engine::*)(bool)>(&Engine::god_perspecitve_console)},
        {"wasd_walk_console", static_cast<void (Engine::*)(bool)>(&Engine::wasd_walk_console)},
        {"rotate_on_idle", static_cast<void (Engine::*)(bool)>(&Engine::rotate_on_idle)},
        {"camera_field_of_view",
         static_cast<void (Engine::*)(Real32)>(&Engine::camera_field_of_view)}};
    return all;
}

template <class Number>
bool read_whole(std::string const &text, Number &number)
{
    char const *const end = text.data() + text.size();
    auto const [rest, error] = std::from_chars(text.data(), end, number);
    return error == std::errc() && rest == end;
}

bool read(std::string const &text, UInt32 &value) { return read_whole(text, value); }

bool read(std::string const &text, bool &value)
{
    value = text == "true" || text == "1";
    return value || text == "false" || text == "0";
}

bool read(std::string const &text, Real32 &value)
{
    constexpr Real32 Infinity = std::numeric_limits<Real32>::infinity();
    static std::map<std::string, Real32> const words = {
        {"nan", std::numeric_limits<Real32>::quiet_NaN()}, {"inf", Infinity}, {"-inf", -Infinity}};
    auto const word = words.find(text);
    if(word == words.end())
        return read_whole(text, value) && std::isfinite(value);
    value = word->second;
    return true;
}

bool read(std::string const &text, Vec3f &value)
{
    std::size_t const first = text.find(',');
    std::size_t const second = first == std::string::npos ? first : text.find(',', first + 1);
    if(second == std::string::npos)
        return false;
    std::string const parts[] = {text.substr(0, first), text.substr(first + 1, second - first - 1),
                                 text.substr(second + 1)};
    for(UInt32 i = 0; i < 3; ++i)
    {
        if(!read_whole(parts[i], value[i]) || !std::isfinite(value[i]))
            return false;
    }
    return true;
}

template <class Value>
bool set_from_text(Engine &engine, void (Engine::*setter)(Value), std::string const &text)
{
    std::remove_cvref_t<Value> value{};
    if(!read(text, value))
        return false;
    (engine.*setter)(value);
    return true;
}
} // namespace

WalkSettingResult set_walk_setting(WASDWalkEngine &engine, std::string const &name,
                                   std::string const &value)
{
    auto const setter = setters().find(name);
    if(setter == setters().end())
        return WalkSettingResult::UnknownName;
    bool const isSet = std::visit([&engine, &value](auto function)
                                  { return set_from_text(engine, function, value); },
                                  setter->second);
    return isSet ? WalkSettingResult::Set : WalkSettingResult::BadValue;
}

std::vector<std::string> walk_setting_names()
{
    std::vector<std::string> names;
    for(auto const &entry : setters())
        names.push_back(entry.first);
    return names;
}
} // namespace OSG
