#include <cmath>
#include <iomanip>
#include <map>
#include <memory>
#include <set>
#include <sstream>

#include "NodePath.h"
#include "OSGFastSelectionFunctor.h"
#include "OSGName.h"
#include "OSGSelectionAction.h"
#include "OSGShownText.h"
#include "OSGSimpleSelectionFunctor.h"
#include "Operations.h"
#include "SceneFile.h"
#include "Stopwatch.h"
#include "ValueJson.h"
#include "VolumeOptions.h"

namespace Tool
{
namespace
{
using OSG::SelectionFunctor;
using Hits = std::deque<SelectionFunctor::HitT>;

struct SelectOptions : SceneOptions
{
    VolumeOptions volume;
    OSG::UInt32 kinds = SelectionFunctor::SelectTriangles;
    SelectionFunctor::PlaneType plane = SelectionFunctor::NearPlane;
    SelectionFunctor::HitType hits = SelectionFunctor::FrontHits;
    bool fast = false;
    std::vector<Operation> operations;
};

std::map<std::string, OSG::UInt32> const KindNames = {
    {"triangles", SelectionFunctor::SelectTriangles},
    {"lines", SelectionFunctor::SelectLines},
    {"points", SelectionFunctor::SelectPoints}};
std::map<std::string, SelectionFunctor::PlaneType> const PlaneNames = {
    {"near", SelectionFunctor::NearPlane}, {"far", SelectionFunctor::FarPlane},
    {"left", SelectionFunctor::LeftPlane}, {"right", SelectionFunctor::RightPlane},
    {"top", SelectionFunctor::TopPlane},   {"bottom", SelectionFunctor::BottomPlane}};
std::map<std::string, SelectionFunctor::HitType> const HitNames = {
    {"front", SelectionFunctor::FrontHits},
    {"back", SelectionFunctor::BackHits},
    {"all", SelectionFunctor::AllHits}};

// The mask for comma-separated kinds of primitives; 0 if one of them is unknown.
OSG::UInt32 mask_of(std::string const &names)
{
    OSG::UInt32 mask = 0;
    std::istringstream in(names + ',');
    for(std::string name; std::getline(in, name, ',');)
    {
        auto const kind = KindNames.find(name);
        if(kind == KindNames.end())
            return 0;
        mask |= kind->second;
    }
    return mask;
}

struct Selection
{
    Hits hits;
    std::optional<OSG::Pnt3f> eye; ///< the eye of the view; none for a volume without a view
    double seconds = 0;
};

Hits select_with(SelectionFunctor &functor, SelectOptions const &options,
                 OSG::Frustum const &volume, OSG::Node *root)
{
    functor.setSelectionType(options.kinds);
    functor.setPlaneType(options.plane);
    functor.getAction()->pushFrustum(volume);
    functor.getAction()->apply(root);
    return functor.hits(options.hits);
}

Selection select(SelectOptions const &options, VolumeChoice const &choice, OSG::Node *root)
{
    Selection result;
    result.eye = choice.eye();
    std::optional<OSG::Frustum> const volume = choice.inScene(root->getVolume());
    if(!volume)
        return result;
    OSG::UnrecordedRefPtr<OSG::SelectionAction> const action(OSG::SelectionAction::create());
    Stopwatch const watch;
    if(options.fast)
    {
        OSG::FastSelectionFunctor functor(action);
        result.hits = select_with(functor, options, *volume, root);
    }
    else
    {
        OSG::SimpleSelectionFunctor functor(action, options.kinds, options.plane);
        result.hits = select_with(functor, options, *volume, root);
    }
    result.seconds = watch.seconds();
    return result;
}

// Computed in double precision and rounded once, because far from the origin the distance is small
// compared with the coordinates.
float distance_between(OSG::Pnt3f const &a, OSG::Pnt3f const &b)
{
    return static_cast<float>(
        std::hypot(double(a[0]) - b[0], double(a[1]) - b[1], double(a[2]) - b[2]));
}

// Writes the members "eyeDistance" and "point" of a hit.
void write_place(JsonWriter &json, SelectionFunctor::HitT const &hit,
                 std::optional<OSG::Pnt3f> const &eye)
{
    if(eye)
        json.key("eyeDistance");
    if(eye && hit.hasPoint)
        json.value(distance_between(hit.point, *eye));
    else if(eye)
        json.null();
    if(hit.hasPoint)
        write_tuple(json, "point", hit.point, 3);
    else
        json.key("point").null();
}

void write_hit(JsonWriter &json, SelectionFunctor::HitT const &hit,
               std::optional<OSG::Pnt3f> const &eye, OSG::Node const *root)
{
    json.beginObject().member("node", node_path(root, hit.visitSubTreeNodes, hit.node)).key("name");
    write_name(json, hit.node);
    json.member("index", hit.index).member("distance", hit.distance);
    write_place(json, hit, eye);
    write_tuple(json, "normal", hit.normal, 3);
    json.key("matrix");
    write_matrix(json, hit.matrix);
    json.key("visitSubTree").beginArray();
    for(std::string const &path : visiting_paths(root, hit.visitSubTreeNodes))
        json.value(path);
    json.endArray().endObject();
}

void write_selection(JsonWriter &json, SelectOptions const &options, Selection const &selection,
                     OperationsResult const &operations, Scene const &scene)
{
    OSG::Node const *const root = scene.root;
    json.beginObject().member("file", options.file).key("hits").beginArray();
    for(SelectionFunctor::HitT const &hit : selection.hits)
        write_hit(json, hit, selection.eye, root);
    json.endArray().member("count", selection.hits.size()).member("seconds", selection.seconds);
    json.member("complete", scene.isComplete);
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
    for(SelectionFunctor::HitT const &hit : selection.hits)
    {
        out << std::setw(14) << hit.distance << std::setw(10) << hit.index << std::setw(36)
            << shown_place(hit) << node_path(root, hit.visitSubTreeNodes, hit.node);
        if(char const *const name = OSG::getName(hit.node))
            out << ' ' << OSG::shown_text(name);
        out << '\n';
    }
    out << selection.hits.size() << (selection.hits.size() == 1 ? " hit" : " hits") << " in "
        << selection.seconds << " s\n";
}

int run_select(SelectOptions const &options, Streams streams)
{
    VolumeChoice const volume(options.volume);
    Scene const scene = read_scene(options, streams);
    if(scene.root == nullptr)
        return Failed;
    OperationsResult const operations = run_operations(scene.root, options.operations, streams);
    if(!operations.done)
        return Failed;
    Selection const selection = select(options, volume, scene.root);
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

// Adds an option that accepts only the given names.
template <class Value>
void add_choice(CLI::App &command, char const *option, std::map<std::string, Value> const &names,
                Value &chosen, char const *help)
{
    std::set<std::string> words;
    std::string chosenBefore;
    for(auto const &[word, value] : names)
    {
        words.insert(word);
        if(value == chosen)
            chosenBefore = word;
    }
    command
        .add_option_function<std::string>(
            option, [&names, &chosen](std::string const &name) { chosen = names.at(name); }, help)
        ->default_str(chosenBefore)
        ->check(CLI::IsMember(words));
}
} // namespace

void add_select_command(CLI::App &program, ChosenCommand &chosen)
{
    auto const options = std::make_shared<SelectOptions>();
    CLI::App &command =
        add_command(program, "select", "Find what lies in a volume", options, run_select, chosen);
    add_file_argument(command, *options);
    add_operation_option(command, options->operations);
    add_volume_options(command, options->volume);
    auto *const kinds = command.add_option_function<std::string>(
        "--kinds",
        [options](std::string const &names)
        {
            options->kinds = mask_of(names);
            if(options->kinds == 0)
                throw CLI::ValidationError("--kinds", names + " is not of triangles,lines,points");
        },
        "Kinds of primitives: triangles,lines,points");
    kinds->default_str("triangles");
    add_choice(command, "--plane", PlaneNames, options->plane,
               "Side of the volume that distances count from");
    add_choice(command, "--hits", HitNames, options->hits,
               "The nearest or farthest of each node, or all");
    command.add_flag("--fast", options->fast,
                     "Only which nodes are hit, without places and distances");
}
} // namespace Tool
