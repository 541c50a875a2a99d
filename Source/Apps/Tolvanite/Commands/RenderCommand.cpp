#include <new>
#include <vector>

#include "OSGOffscreenContext.h"
#include "OSGPicture.h"
#include "OSGShownText.h"
#include "Operations.h"
#include "PictureOptions.h"
#include "SceneFile.h"
#include "Stopwatch.h"
#include "WritePicture.h"

namespace Tool
{
namespace
{
struct RenderOptions : SceneOptions
{
    PictureOptions picture;
    std::vector<Operation> operations;
};

struct Outcome
{
    OSG::UInt64 triangles = 0;
    double seconds = 0;
    std::string renderer;
};

int no_picture(std::string const &reason, Streams streams)
{
    complain(streams, "no picture: " + reason);
    return Failed;
}

void print_outcome(std::ostream &out, RenderOptions const &options, PictureChoice const &choice,
                   Outcome const &outcome)
{
    out << OSG::shown_text(options.picture.target) << ": " << choice.width() << 'x'
        << choice.height() << ", " << outcome.triangles << " triangles, " << outcome.seconds
        << " s by " << OSG::shown_text(outcome.renderer) << '\n';
}

void write_outcome(JsonWriter &json, RenderOptions const &options, PictureChoice const &choice,
                   Outcome const &outcome, std::vector<OSG::GraphOpAccount> const &operations)
{
    OSG::UInt32 const size[] = {choice.width(), choice.height()};
    json.beginObject()
        .member("file", options.file)
        .member("out", options.picture.target)
        .key("size")
        .array(size, 2)
        .member("triangles", outcome.triangles)
        .member("seconds", outcome.seconds)
        .member("renderer", outcome.renderer);
    write_operations(json, operations);
    json.endObject();
}

void print_result(RenderOptions const &options, PictureChoice const &choice, Outcome const &outcome,
                  std::vector<OSG::GraphOpAccount> const &operations, std::ostream &out)
{
    if(!options.json)
    {
        print_operations(out, operations);
        print_outcome(out, options, choice, outcome);
        return;
    }
    JsonWriter json(out);
    write_outcome(json, options, choice, outcome, operations);
    out << '\n';
}

// The context comes first: a machine that cannot draw need not read.
int make_picture(RenderOptions const &options, PictureChoice const &choice, Streams streams)
{
    std::string const refusal = refusal_of_size(choice.width(), choice.height());
    if(!refusal.empty())
        return no_picture(refusal, streams);
    OSG::OffscreenContext context(choice.width(), choice.height());
    if(!context.missing().empty())
        return no_picture(context.missing(), streams);
    Scene const scene = read_scene(options, streams);
    if(scene.root == nullptr)
        return Failed;
    OperationsResult const operations = run_operations(scene.root, options.operations, streams);
    if(!operations.done)
        return Failed;
    Stopwatch const watch;
    OSG::Picture const picture = OSG::draw_picture(
        context, scene.root, choice.inScene(OSG::bounds_of(scene.root)), choice.background());
    if(!picture.missing.empty())
        return no_picture(picture.missing, streams);
    std::string const reason =
        write_picture(options.picture.target, picture.pixels, choice.width(), choice.height());
    if(!reason.empty())
        return no_picture(reason, streams);
    print_result(options, choice, {picture.triangles, watch.seconds(), context.getRenderer()},
                 operations.accounts, streams.out);
    return Success;
}

int run_render(RenderOptions const &options, Streams streams)
{
    PictureChoice const choice(options.picture);
    try
    {
        return make_picture(options, choice, streams);
    }
    catch(std::bad_alloc const &)
    {
        return no_picture("out of memory", streams);
    }
}
} // namespace

void add_render_command(CLI::App &program, ChosenCommand &chosen)
{
    auto const options = std::make_shared<RenderOptions>();
    CLI::App &command = add_command(program, "render", "Make a picture without a display", options,
                                    run_render, chosen);
    add_file_argument(command, *options);
    add_picture_options(command, options->picture);
    add_operation_option(command, options->operations);
}
} // namespace Tool
