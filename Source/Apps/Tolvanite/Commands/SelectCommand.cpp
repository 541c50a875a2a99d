#include <iomanip>
#include <memory>
#include <sstream>

#include "OSGName.h"
#include "OSGNodePath.h"
#include "OSGShownText.h"
#include "Operations.h"
#include "SceneFile.h"
#include "SelectQueries.h"
#include "SelectionJson.h"
#include "Selector.h"

namespace Tool
{
namespace
{
using OSG::SelectionFunctor;
using Hits = std::deque<SelectionFunctor::HitT>;

struct SelectOptions : SceneOptions
{
    VolumeOptions volume;
    SelectionSettings settings;
    std::string queries; ///< the file; empty for one volume
    bool withoutIndex = false;
    std::vector<Operation> operations;
};

void write_selection(JsonWriter &json, SelectOptions const &options, Selection const &selection,
                     OperationsResult const &operations, Scene const &scene)
{
    json.beginObject().member("file", options.file);
    write_hits(json, selection, scene.root);
    json.member("complete", scene.isComplete).member("indexed", selection.isIndexed);
    write_operations(json, operations.accounts);
    json.endObject();
}

// A point as text; a dash where there is none.
std::string shown_place(SelectionFunctor::HitT const &hit)
{
    if(!hit.hasPoint)
        return "-";
    std::ostringstream text;
    text << hit.point[0] << ' ' << hit.point[1] << ' ' << hit.point[2];
    return text.str();
}

void print_selection(std::ostream &out, Selection const &selection, OSG::Node const *root)
{
    out << std::left << std::setw(14) << "distance" << std::setw(10) << "index" << std::setw(36)
        << "point"
        << "node\n";
    static Hits const none;
    Hits const &hits = selection.hits != nullptr ? *selection.hits : none;
    for(SelectionFunctor::HitT const &hit : hits)
    {
        out << std::setw(14) << hit.distance << std::setw(10) << hit.index << std::setw(36)
            << shown_place(hit) << OSG::node_path(root, hit.visitSubTreeNodes, hit.node);
        if(char const *const name = OSG::getName(hit.node))
            out << ' ' << OSG::shown_text(name);
        out << '\n';
    }
    out << hits.size() << (hits.size() == 1 ? " hit" : " hits") << " in " << selection.seconds
        << " s\n";
}

// The scene with the operations done; its root is null where there is none, or they failed.
Scene scene_after_operations(SelectOptions const &options, OperationsResult &operations,
                             Streams streams)
{
    Scene scene = read_scene(options, streams);
    if(scene.root == nullptr)
        return scene;
    operations = run_operations(scene.root, options.operations, streams);
    if(!operations.done)
        scene.root = nullptr;
    return scene;
}

int run_single(SelectOptions const &options, Streams streams)
{
    VolumeChoice const volume(values_of(options.volume));
    volume.checkPlane(options.settings.plane);
    OperationsResult operations;
    Scene const scene = scene_after_operations(options, operations, streams);
    if(scene.root == nullptr)
        return Failed;
    Selector selector(scene.root, !options.withoutIndex);
    Selection const selection = selector.select(options.settings, volume);
    if(!options.json)
    {
        print_operations(streams.out, operations.accounts);
        print_selection(streams.out, selection, scene.root);
        return Success;
    }
    JsonWriter json(streams.out);
    write_selection(json, options, selection, operations, scene);
    streams.out << '\n';
    return Success;
}

int run_queries(SelectOptions const &options, Streams streams)
{
    LineReader lines(options.queries);
    if(!lines.isOpen())
        throw CLI::ValidationError("--queries", "cannot read " + options.queries + ": " +
                                                    std::generic_category().message(lines.error()));
    QueryDefaults const defaults = {options.settings,
                                    options.volume.radius.value_or(OSG::DefaultPickRadius)};
    check_radius(defaults.radius);
    OperationsResult operations;
    Scene const scene = scene_after_operations(options, operations, streams);
    if(scene.root == nullptr)
        return Failed;
    Selector selector(scene.root, !options.withoutIndex);
    return answer_queries(lines, defaults, selector, scene, streams);
}

int run_select(SelectOptions const &options, Streams streams)
{
    return options.queries.empty() ? run_single(options, streams) : run_queries(options, streams);
}
} // namespace

void add_select_command(CLI::App &program, ChosenCommand &chosen)
{
    auto const options = std::make_shared<SelectOptions>();
    CLI::App &command =
        add_command(program, "select", "Find what lies in a volume", options, run_select, chosen);
    add_file_argument(command, *options);
    add_operation_option(command, options->operations);
    auto *const queries = command.add_option(
        "--queries", options->queries,
        "File with a JSON object a line, or -, each a volume to answer as a line of JSON");
    queries->check(CLI::Validator(
        [](std::string &file) { return file.empty() ? "a file or - is required" : ""; }, ""));
    add_volume_options(command, options->volume, queries);
    add_selection_options(command, options->settings);
    command.add_flag("--no-index", options->withoutIndex,
                     "Answer without the index of primitives, by looking at each");
}
} // namespace Tool
