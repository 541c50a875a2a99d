#include <ostream>
#include <vector>

#include "GroupMaterials.h"
#include "OSGFileSuffix.h"
#include "OSGReachableNodes.h"
#include "OSGShownText.h"
#include "Operations.h"
#include "SceneFile.h"
#include "Stopwatch.h"
#include "WriteScene.h"

namespace Tool
{
namespace
{
struct ConvertOptions : SceneOptions
{
    std::string target;
    std::vector<Operation> operations;
    bool groupsMaterials = false; ///< see group_materials
};

struct Outcome
{
    OSG::UInt64 nodesBefore = 0;
    OSG::UInt64 nodesAfter = 0;
    double seconds = 0;
    bool isComplete = false; ///< the source was read completely
};

void print_outcome(std::ostream &out, ConvertOptions const &options, Outcome const &outcome)
{
    out << OSG::shown_text(options.file) << " to " << OSG::shown_text(options.target) << ": "
        << outcome.nodesBefore << " nodes";
    if(outcome.nodesAfter != outcome.nodesBefore)
        out << " to " << outcome.nodesAfter;
    out << ", " << outcome.seconds << " s\n";
}

void write_outcome(JsonWriter &json, ConvertOptions const &options, Outcome const &outcome,
                   std::vector<OSG::GraphOpAccount> const &operations)
{
    json.beginObject()
        .member("in", options.file)
        .member("out", options.target)
        .member("nodesBefore", outcome.nodesBefore)
        .member("nodesAfter", outcome.nodesAfter)
        .member("seconds", outcome.seconds)
        .member("complete", outcome.isComplete);
    write_operations(json, operations);
    json.endObject();
}

int run_convert(ConvertOptions const &options, Streams streams)
{
    Stopwatch const watch;
    Scene const scene = read_scene(options, streams);
    if(scene.root == nullptr)
        return Failed;
    Outcome outcome;
    outcome.isComplete = scene.isComplete;
    outcome.nodesBefore = OSG::count_reachable_nodes(scene.root);
    OperationsResult const operations = run_operations(scene.root, options.operations, streams);
    if(!operations.done)
        return Failed;
    if(options.groupsMaterials)
        group_materials(scene.root);
    outcome.nodesAfter = OSG::count_reachable_nodes(scene.root);
    std::string const reason = write_scene(scene.root, options.target, streams);
    if(!reason.empty())
    {
        complain(streams, "cannot write " + options.target + ": " + reason);
        return Failed;
    }
    outcome.seconds = watch.seconds();
    if(options.json)
    {
        JsonWriter json(streams.out);
        write_outcome(json, options, outcome, operations.accounts);
        streams.out << '\n';
        return Success;
    }
    print_operations(streams.out, operations.accounts);
    print_outcome(streams.out, options, outcome);
    return Success;
}
} // namespace

void add_convert_command(CLI::App &program, ChosenCommand &chosen)
{
    auto const options = std::make_shared<ConvertOptions>();
    CLI::App &command = add_command(program, "convert", "Write a scene in another format", options,
                                    run_convert, chosen);
    add_file_argument(command, *options);
    command.add_option("OUT", options->target, "File to write; its suffix tells the format")
        ->required()
        ->check(
            [](std::string const &target)
            {
                std::string const suffix = OSG::file_suffix(target);
                return is_written(suffix) ? std::string() : "no format writes '" + suffix + "'";
            });
    add_operation_option(command, options->operations);
    command.add_flag("--group-materials", options->groupsMaterials,
                     "Put materials of geometries on groups, as readers of OBJ files need it");
}
} // namespace Tool
