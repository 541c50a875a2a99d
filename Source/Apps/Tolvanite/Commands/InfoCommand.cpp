#include <iomanip>

#include "OSGMemManager.h"
#include "OSGSceneAccount.h"
#include "SceneFile.h"
#include "ValueJson.h"

namespace Tool
{
namespace
{
struct Row
{
    char const *name;
    OSG::UInt64 OSG::SceneAccount::*count;
};
constexpr Row Rows[] = {
    {"nodes", &OSG::SceneAccount::nodes},         {"geometries", &OSG::SceneAccount::geometries},
    {"materials", &OSG::SceneAccount::materials}, {"images", &OSG::SceneAccount::images},
    {"vertices", &OSG::SceneAccount::vertices},   {"triangles", &OSG::SceneAccount::triangles},
    {"lines", &OSG::SceneAccount::lines},         {"points", &OSG::SceneAccount::points},
};

void write_account(JsonWriter &json, SceneOptions const &options, OSG::SceneAccount const &account,
                   Scene const &scene)
{
    json.beginObject().member("file", options.file);
    for(Row const &row : Rows)
        json.member(row.name, account.*row.count);
    json.key("cores").beginObject();
    for(auto const &[core, count] : account.cores)
        json.member(core, count);
    json.endObject().key("bounds");
    write_bounds(json, account.bounds);
    json.member("loadSeconds", scene.loadSeconds)
        .member("peakBytes", OSG::get_mem_peak_bytes())
        .member("complete", scene.isComplete)
        .endObject();
}

template <class Value>
std::ostream &print_row(std::ostream &out, std::string const &name, Value const &value)
{
    return out << std::left << std::setw(12) << name << ' ' << value;
}

void print_account(std::ostream &out, OSG::SceneAccount const &account, Scene const &scene)
{
    for(Row const &row : Rows)
        print_row(out, row.name, account.*row.count) << '\n';
    std::string name = "cores";
    for(auto const &[core, count] : account.cores)
    {
        print_row(out, name, core) << ' ' << count << '\n';
        name.clear();
    }
    if(!account.bounds.isEmpty() && !account.bounds.isInfinite())
    {
        OSG::Pnt3f const &min = account.bounds.getMin();
        OSG::Pnt3f const &max = account.bounds.getMax();
        print_row(out, "bounds", min[0]) << ' ' << min[1] << ' ' << min[2] << " to " << max[0]
                                         << ' ' << max[1] << ' ' << max[2] << '\n';
    }
    if(!scene.isComplete)
        print_row(out, "complete", "no") << '\n';
    print_row(out, "loaded in", scene.loadSeconds) << " s\n";
    print_row(out, "peak", OSG::get_mem_peak_bytes()) << " bytes\n";
}

int run_info(SceneOptions const &options, Streams streams)
{
    Scene const scene = read_scene(options, streams);
    if(scene.root == nullptr)
        return Failed;
    OSG::SceneAccount const account = OSG::account_of(scene.root);
    if(!options.json)
    {
        print_account(streams.out, account, scene);
        return Success;
    }
    JsonWriter json(streams.out);
    write_account(json, options, account, scene);
    streams.out << '\n';
    return Success;
}
} // namespace

void add_info_command(CLI::App &program, ChosenCommand &chosen)
{
    auto const options = std::make_shared<SceneOptions>();
    CLI::App &command =
        add_command(program, "info", "Count what a scene holds", options, run_info, chosen);
    add_file_argument(command, *options);
}
} // namespace Tool
