#include <ostream>

#include "OSGFileSuffix.h"
#include "OSGReachableNodes.h"
#include "OSGSceneFileHandler.h"
#include "Operations.h"
#include "OutputFile.h"
#include "SceneFile.h"
#include "Stopwatch.h"

namespace Tool
{
namespace
{
struct ConvertOptions : SceneOptions
{
    std::string target;
    std::vector<Operation> operations;
};

bool is_written(std::string const &suffix)
{
    return OSG::SceneFileHandlerBase::the()->getFileType(
               suffix.c_str(), OSG::IOFileTypeBase::WriteSupported) != nullptr;
}

bool write_scene(OSG::Node *root, std::string const &target)
{
    OutputFile file(target);
    return file.stream() &&
           OSG::SceneFileHandlerBase::the()->write(root, file.stream(),
                                                   OSG::file_suffix(target).c_str()) &&
           file.finish();
}

struct Outcome
{
    OSG::UInt64 nodesBefore = 0;
    OSG::UInt64 nodesAfter = 0;
    double seconds = 0;
};

void print_outcome(std::ostream &out, ConvertOptions const &options, Outcome const &outcome)
{
    out << options.file << " to " << options.target << ": " << outcome.nodesBefore << " nodes";
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
        .member("seconds", outcome.seconds);
    writeOperations(json, operations);
    json.endObject();
}

int run_convert(ConvertOptions const &options, Streams streams)
{
    Stopwatch const watch;
    Scene const scene = readScene(options, streams);
    if(scene.root == nullptr)
        return Failed;
    Outcome outcome;
    outcome.nodesBefore = OSG::count_reachable_nodes(scene.root);
    OperationsResult const operations = runOperations(scene.root, options.operations, streams);
    if(!operations.done)
        return Failed;
    outcome.nodesAfter = OSG::count_reachable_nodes(scene.root);
    if(!write_scene(scene.root, options.target))
    {
        streams.err << "tolvanite: cannot write " << options.target << '\n';
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
    printOperations(streams.out, operations.accounts);
    print_outcome(streams.out, options, outcome);
    return Success;
}
} // namespace

void addConvertCommand(CLI::App &program, ChosenCommand &chosen)
{
    auto const options = std::make_shared<ConvertOptions>();
    CLI::App &command = addCommand(program, "convert", "Write a scene in another format", options,
                                   run_convert, chosen);
    addFileArgument(command, *options);
    command.add_option("OUT", options->target, "File to write; its suffix tells the format")
        ->required()
        ->check(
            [](std::string const &target)
            {
                std::string const suffix = OSG::file_suffix(target);
                return is_written(suffix) ? std::string() : "no format writes '" + suffix + "'";
            });
    addOperationOption(command, options->operations);
}
} // namespace Tool
