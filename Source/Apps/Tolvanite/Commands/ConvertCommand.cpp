#include <algorithm>
#include <filesystem>
#include <ostream>
#include <vector>

#include "OSGFileSuffix.h"
#include "OSGImage.h"
#include "OSGImageFileHandler.h"
#include "OSGImageFileType.h"
#include "OSGReachableMaterials.h"
#include "OSGReachableNodes.h"
#include "OSGSceneFileHandler.h"
#include "OSGShownText.h"
#include "Operations.h"
#include "ReplaceFile.h"
#include "SceneFile.h"
#include "Stopwatch.h"

namespace Tool
{
namespace fs = std::filesystem;

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

/// The pictures that the images of a scene were read from. Writing one again would only compress it
/// once more.
class SourcePictures
{
  public:
    explicit SourcePictures(OSG::Node *root)
    {
        OSG::ReachableMaterials const materials = OSG::materials_of(root);
        for(OSG::Image const *const image : materials.getImages())
            _files.emplace_back(image->getName());
    }

    bool contains(fs::path const &file) const
    {
        return std::any_of(_files.begin(), _files.end(),
                           [&file](fs::path const &source)
                           {
                               std::error_code error;
                               return source.filename() == file.filename() &&
                                      fs::equivalent(source, file, error);
                           });
    }

  private:
    std::vector<fs::path> _files;
};

bool can_be_written(std::string const &file)
{
    std::string const suffix = OSG::file_suffix(file);
    OSG::ImageFileType const *const type =
        OSG::ImageFileHandlerBase::the()->getFileType(suffix.c_str());
    return suffix == "mtl" || (type != nullptr && type->canWrite());
}

// A picture whose format nobody writes is named and left out. Every other failure ends the write.
bool write_files(OSG::Node *root, std::string const &path, Streams streams)
{
    OSG::SceneFileHandlerBase &handler = *OSG::SceneFileHandlerBase::the();
    if(!handler.write(root, path.c_str()))
        return false;
    for(std::string const &file : handler.getUnwrittenFiles())
    {
        if(can_be_written(file))
            return false;
        complain(streams, "cannot write " + fs::path(file).filename().string() +
                              ": no format writes '" + OSG::file_suffix(file) + "'");
    }
    return true;
}

// Empty on success, otherwise the reason of the failure.
std::string write_scene(OSG::Node *root, std::string const &target, Streams streams)
{
    SourcePictures const pictures(root);
    return replace_file(
        target, [&](std::string const &path) { return write_files(root, path, streams); },
        [&pictures](fs::path const &file) { return pictures.contains(file); });
}

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
}
} // namespace Tool
