#include <charconv>
#include <filesystem>
#include <fstream>
#include <optional>

#include "Arguments.h"
#include "OSGPathPlot.h"
#include "OSGWalkSettingNames.h"
#include "ReplaceFile.h"
#include "SceneFile.h"
#include "Stopwatch.h"
#include "VolumeOptions.h"
#include "WalkResult.h"
#include "WalkScriptFile.h"

namespace Tool
{
namespace
{
struct WalkOptions : SceneOptions
{
    std::string from;
    std::string at;
    std::string up = "0,1,0";
    std::vector<std::string> settings; ///< NAME=VALUE, in order
    std::string script;
    std::string frameMilliseconds = "16";
    std::optional<std::string> motionFactor;
    std::optional<std::string> rotationAngle;
    std::optional<std::string> goal;
    std::optional<std::string> within;
    std::optional<std::string> plot;
};

float number_of(char const *option, std::string const &text)
{
    float number[1];
    if(!parse_numbers(text, number))
        throw CLI::ValidationError(option, text + " is not a number");
    return number[0];
}

OSG::UInt32 frame_of(std::string const &text)
{
    OSG::UInt32 milliseconds = 0;
    char const *const end = text.data() + text.size();
    auto const [rest, error] = std::from_chars(text.data(), end, milliseconds);
    if(error != std::errc() || rest != end || milliseconds < 1)
        throw CLI::ValidationError("--step-ms", text + " is not a whole number from 1");
    return milliseconds;
}

void apply_setting(OSG::WASDWalkEngine &engine, std::string const &text)
{
    std::size_t const end = text.find('=');
    if(end == std::string::npos)
        throw CLI::ValidationError("--set", text + " is not NAME=VALUE");
    std::string const name = text.substr(0, end);
    std::string const value = text.substr(end + 1);
    switch(OSG::set_walk_setting(engine, name, value))
    {
    case OSG::WalkSettingResult::Set:
        break;
    case OSG::WalkSettingResult::UnknownName:
        throw CLI::ValidationError("--set", "no setting " + name);
    case OSG::WalkSettingResult::BadValue:
        throw CLI::ValidationError("--set", value + " is no value of " + name);
    }
}

void apply_settings(OSG::WalkPlayer &player, WalkOptions const &options)
{
    player.setFrameMilliseconds(frame_of(options.frameMilliseconds));
    if(options.motionFactor)
        player.getNavigator().setMotionFactor(number_of("--motion-factor", *options.motionFactor));
    if(options.rotationAngle)
        player.getNavigator().setRotationAngle(
            number_of("--rotation-angle", *options.rotationAngle));
    for(std::string const &setting : options.settings)
        apply_setting(player.getEngine(), setting);
}

std::optional<WalkGoal> goal_of(WalkOptions const &options)
{
    if(!options.goal)
        return std::nullopt;
    WalkGoal goal;
    goal.place = point_of("--goal", *options.goal);
    if(options.within)
        goal.within = number_of("--within", *options.within);
    if(goal.within < 0)
        throw CLI::ValidationError("--within", *options.within + " is negative");
    return goal;
}

/// Where the person begins.
struct Start
{
    OSG::Pnt3f from, at;
    OSG::Vec3f up;
};

Start start_of(WalkOptions const &options)
{
    return {point_of("--from", options.from), point_of("--at", options.at),
            point_of("--up", options.up).subZero()};
}

// Empty on success, otherwise the reason of the failure.
std::string write_plot(std::string const &target, OSG::Node *scene, Start const &start,
                       OSG::WalkPlayer const &player)
{
    std::vector<OSG::PathPoint> path = {{start.from, start.at}};
    for(OSG::WalkPose const &pose : player.getPoses())
        path.push_back({pose.from, pose.at});
    std::vector<OSG::PathMark> marks;
    for(OSG::WalkEvent const &event : player.getEvents())
        marks.push_back({event.position, OSG::name_of(event.kind)});
    return replace_file(target,
                        [scene, &path, &marks, &up = start.up](std::string const &name)
                        {
                            std::ofstream out(name, std::ios::binary);
                            OSG::write_path_plot(out, scene, path, marks, up);
                            return bool(out.flush());
                        });
}

void print_result(WalkOptions const &options, WalkResult const &result, std::ostream &out)
{
    if(!options.json)
    {
        print_walk(out, result);
        return;
    }
    JsonWriter json(out);
    write_walk(json, result);
    out << '\n';
}

// A plot in the place of what is read would be the end of it.
void check_plot(WalkOptions const &options)
{
    std::error_code error;
    for(std::string const *const source : {&options.file, &options.script})
    {
        if(options.plot && std::filesystem::equivalent(*options.plot, *source, error))
            throw CLI::ValidationError("--plot", *options.plot + " is read by this command");
    }
}

int run_walk(WalkOptions const &options, Streams streams)
{
    check_plot(options);
    OSG::WalkPlayer player;
    apply_settings(player, options);
    std::optional<WalkGoal> const goal = goal_of(options);
    Start const start = start_of(options);
    std::vector<OSG::WalkScriptLine> const script = read_walk_script("--script", options.script);
    Scene const scene = read_scene(options, streams);
    if(scene.root == nullptr)
        return Failed;

    Stopwatch const watch;
    player.begin(scene.root, start.from, start.at, start.up);
    for(OSG::WalkScriptLine const &line : script)
        player.play(line);
    WalkResult result{options.file, scene.root, player, std::nullopt, watch.seconds()};
    if(goal)
        result.goal = judge_goal(*goal, start.from, player.getPoses());

    std::string const reason =
        options.plot ? write_plot(*options.plot, scene.root, start, player) : std::string();
    if(!reason.empty())
    {
        complain(streams, "cannot write " + *options.plot + ": " + reason);
        return Failed;
    }
    print_result(options, result, streams.out);
    if(!result.goal || result.goal->milliseconds)
        return Success;
    complain(streams, "the goal was not reached");
    return Failed;
}
} // namespace

void add_walk_command(CLI::App &program, ChosenCommand &chosen)
{
    auto const options = std::make_shared<WalkOptions>();
    CLI::App &command = add_command(program, "walk", "Walk through a scene by a script of keys",
                                    options, run_walk, chosen);
    add_file_argument(command, *options);
    command.add_option("--from", options->from, "Where the eye begins, x,y,z")->required();
    command.add_option("--at", options->at, "What it looks at, x,y,z")->required();
    command.add_option("--up", options->up, "Up, 0,1,0 unless given");
    command.add_option("--set", options->settings, "A setting, NAME=VALUE; may be repeated")
        ->type_size(1)
        ->expected(1)
        ->allow_extra_args(false)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
    command
        .add_option("--script", options->script,
                    "File, or -, of lines KEYS MILLISECONDS: W+Shift 1500")
        ->required();
    command.add_option("--step-ms", options->frameMilliseconds,
                       "Milliseconds between frames, 16 unless given");
    command.add_option("--motion-factor", options->motionFactor,
                       "The navigator's motion factor, 1 unless given");
    command.add_option("--rotation-angle", options->rotationAngle,
                       "The navigator's rotation angle, 0.05 unless given");
    auto *const goal =
        command.add_option("--goal", options->goal, "Fail unless the eye comes here, x,y,z");
    command.add_option("--within", options->within, "How near it has to come, 0.5 unless given")
        ->needs(goal);
    command.add_option("--plot", options->plot, "Draw the path and the events as an SVG picture");
}
} // namespace Tool
