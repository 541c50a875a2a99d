#include "Operations.h"
#include "SceneDump.h"
#include "SceneFile.h"

namespace Tool
{
namespace
{
struct DumpOptions : SceneOptions
{
    bool arrays = false;
    std::vector<Operation> operations;
};

int run_dump(DumpOptions const &options, Streams streams)
{
    Scene const scene = readScene(options, streams);
    if(scene.root == nullptr)
        return Failed;
    OperationsResult const operations = runOperations(scene.root, options.operations, streams);
    if(!operations.done)
        return Failed;
    if(!options.json)
    {
        printOperations(streams.out, operations.accounts);
        printTree(streams.out, scene.root);
        return Success;
    }
    JsonWriter json(streams.out);
    json.beginObject().member("file", options.file).key("root");
    writeTree(json, scene.root, options.arrays ? Arrays::Written : Arrays::Counted);
    json.member("complete", scene.isComplete);
    writeOperations(json, operations.accounts);
    json.endObject();
    streams.out << '\n';
    return Success;
}
} // namespace

void addDumpCommand(CLI::App &program, ChosenCommand &chosen)
{
    auto const options = std::make_shared<DumpOptions>();
    CLI::App &command =
        addCommand(program, "dump", "Print the tree of a scene", options, run_dump, chosen);
    addFileArgument(command, *options);
    addOperationOption(command, options->operations);
    command.add_flag("--arrays", options->arrays, "Write the values of arrays too, in JSON");
}
} // namespace Tool
