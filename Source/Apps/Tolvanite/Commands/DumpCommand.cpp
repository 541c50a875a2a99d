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
    Scene const scene = read_scene(options, streams);
    if(scene.root == nullptr)
        return Failed;
    OperationsResult const operations = run_operations(scene.root, options.operations, streams);
    if(!operations.done)
        return Failed;
    if(!options.json)
    {
        print_operations(streams.out, operations.accounts);
        print_tree(streams.out, scene.root);
        return Success;
    }
    JsonWriter json(streams.out);
    json.beginObject().member("file", options.file).key("root");
    write_tree(json, scene.root, options.arrays ? Arrays::Written : Arrays::Counted);
    json.member("complete", scene.isComplete);
    write_operations(json, operations.accounts);
    json.endObject();
    streams.out << '\n';
    return Success;
}
} // namespace

void add_dump_command(CLI::App &program, ChosenCommand &chosen)
{
    auto const options = std::make_shared<DumpOptions>();
    CLI::App &command =
        add_command(program, "dump", "Print the tree of a scene", options, run_dump, chosen);
    add_file_argument(command, *options);
    add_operation_option(command, options->operations);
    command.add_flag("--arrays", options->arrays, "Write the values of arrays too, in JSON");
}
} // namespace Tool
