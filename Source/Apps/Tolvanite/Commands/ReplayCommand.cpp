#include <algorithm>
#include <fstream>
#include <iomanip>
#include <new>
#include <vector>

#include "Arguments.h"
#include "NumberText.h"
#include "OSGInputPlayer.h"
#include "OSGNamedEngine.h"
#include "OSGOrthographicCamera.h"
#include "OSGPathPlot.h"
#include "ReadRecording.h"
#include "ReplaceFile.h"
#include "SceneFile.h"
#include "ValueJson.h"

namespace Tool
{
namespace
{
using OSG::CameraPose;
using EnginePtr = OSG::UnrecordedRefPtr<OSG::NavigatorEngine>;

struct ReplayOptions : SceneOptions
{
    std::string events;
    std::string engine;
    std::string size;
    std::string plot;
};

/// The pose of the camera after an event.
struct Pose : CameraPose
{
    float verticalSize; ///< of an orthographic camera; 0 for others
};

Pair size_of(std::string const &text)
{
    Pair size;
    if(!parse_pair(text, 'x', size) || size.first < 1 || size.second < 1 || size.first > 32767 ||
       size.second > 32767)
        throw CLI::ValidationError("--size", text + " is not WxH in pixels up to 32767");
    return size;
}

std::vector<Pose> play(OSG::InputRecording const &recording, std::string const &engine,
                       OSG::Node *scene, Pair const &size)
{
    constexpr OSG::Int64 Milliseconds = 1000; // where no frame is recorded, any will do
    auto const desktop =
        std::make_shared<OSG::ScriptedDesktop>(recording.ticksPerSecond.value_or(Milliseconds));
    OSG::Desktop::setCurrent(desktop); // an engine takes it when it is made
    EnginePtr const mover(OSG::make_engine(engine));
    if(mover == nullptr)
        throw std::bad_alloc();
    OSG::InputPlayer player(recording, mover, scene, static_cast<OSG::UInt16>(size.first),
                            static_cast<OSG::UInt16>(size.second), desktop);
    auto const *camera = dynamic_cast<OSG::OrthographicCamera const *>(&player.getCamera());
    std::vector<Pose> poses;
    while(player.step())
        poses.push_back({player.getPose(), camera != nullptr ? camera->getVerticalSize() : 0.f});
    return poses;
}

bool has_frames(OSG::InputRecording const &recording)
{
    using Recording = OSG::InputRecording;
    return std::any_of(recording.events.begin(), recording.events.end(),
                       [](Recording::TimedEvent const &event)
                       { return event.what == Recording::What::Frame; });
}

void write_poses(JsonWriter &json, ReplayOptions const &options, std::vector<Pose> const &poses)
{
    json.beginObject().member("file", options.file).member("engine", options.engine);
    json.key("poses").beginArray();
    for(std::size_t i = 0; i < poses.size(); ++i)
    {
        json.beginObject().member("event", i);
        write_tuple(json, "from", poses[i].from, 3);
        write_tuple(json, "at", poses[i].at, 3);
        write_tuple(json, "up", poses[i].up, 3);
        json.member("distance", poses[i].distance);
        if(poses[i].verticalSize != 0)
            json.member("verticalSize", poses[i].verticalSize);
        json.endObject();
    }
    json.endArray().endObject();
}

void print_poses(std::ostream &out, std::vector<Pose> const &poses)
{
    bool const orthographic = !poses.empty() && poses.front().verticalSize != 0;
    out << std::left << std::setw(7) << "event" << ' ' << std::setw(29) << "from" << ' '
        << std::setw(29) << "at" << ' ' << std::setw(33) << "up" << ' ' << std::setw(11)
        << "distance" << (orthographic ? " height\n" : "\n");
    for(std::size_t i = 0; i < poses.size(); ++i)
    {
        out << std::setw(7) << i << ' ' << std::setw(29) << spaced(poses[i].from) << ' '
            << std::setw(29) << spaced(poses[i].at) << ' ' << std::setw(33) << spaced(poses[i].up)
            << ' ' << std::setw(11) << poses[i].distance;
        if(orthographic)
            out << ' ' << poses[i].verticalSize;
        out << '\n';
    }
}

// Empty on success, otherwise the reason of the failure.
std::string write_plot(std::string const &target, OSG::Node *scene, std::vector<Pose> const &poses)
{
    std::vector<OSG::PathPoint> path;
    path.reserve(poses.size());
    for(Pose const &pose : poses)
        path.push_back({pose.from, pose.at});
    return replace_file(target,
                        [scene, &path](std::string const &name)
                        {
                            std::ofstream out(name, std::ios::binary);
                            OSG::write_path_plot(out, scene, path);
                            return bool(out.flush());
                        });
}

int run_replay(ReplayOptions const &options, Streams streams)
{
    Pair const size = size_of(options.size);
    OSG::RecordingResult const events = read_recording_file(options.events);
    if(!events.recording)
    {
        complain(streams, options.events + ": " + events.complaint);
        return Failed;
    }
    if(options.engine == "walk" && !has_frames(*events.recording))
        complain(streams, options.events + " holds no frames, so the walk engine takes no step");
    Scene const scene = read_scene(options, streams);
    if(scene.root == nullptr)
        return Failed;
    std::vector<Pose> const poses = play(*events.recording, options.engine, scene.root, size);
    std::string const reason =
        options.plot.empty() ? std::string() : write_plot(options.plot, scene.root, poses);
    if(!reason.empty())
    {
        complain(streams, "cannot write " + options.plot + ": " + reason);
        return Failed;
    }
    if(!options.json)
    {
        print_poses(streams.out, poses);
        return Success;
    }
    JsonWriter json(streams.out);
    write_poses(json, options, poses);
    streams.out << '\n';
    return Success;
}
} // namespace

void add_replay_command(CLI::App &program, ChosenCommand &chosen)
{
    auto const options = std::make_shared<ReplayOptions>();
    CLI::App &command =
        add_command(program, "replay", "Play a recording of input events without a window", options,
                    run_replay, chosen);
    add_file_argument(command, *options);
    command.add_option("EVENTS", options->events, "Recording of input events")
        ->required()
        ->check(CLI::ExistingFile);
    command
        .add_option("--engine", options->engine,
                    "Engine that moves the camera: cad, fly, copter or walk")
        ->required()
        ->check(CLI::IsMember(OSG::engine_names()));
    command.add_option("--size", options->size, "Size of the view in pixels, WxH")->required();
    command.add_option("--plot", options->plot, "Draw the camera's path as an SVG picture");
}
} // namespace Tool
