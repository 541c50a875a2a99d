#include "Report.h"

#include "JsonWriter.h"
#include "Operations.h"
#include "SelectionJson.h"
#include "Selector.h"
#include "Stopwatch.h"
#include "ValueJson.h"

namespace Viewer
{
namespace
{
char const *name_of(Question::Kind kind)
{
    switch(kind)
    {
    case Question::Kind::Band:
        return "band";
    case Question::Kind::Lasso:
        return "lasso";
    default:
        return "pick";
    }
}

char const *volume_key(Question::Kind kind)
{
    switch(kind)
    {
    case Question::Kind::Band:
        return "rect";
    case Question::Kind::Lasso:
        return "lasso";
    default:
        return "pixel";
    }
}

// The words of `--kinds`.
std::string words_of(OSG::UInt32 kinds)
{
    std::string words;
    std::pair<OSG::UInt32, char const *> const names[] = {
        {OSG::SelectionFunctor::SelectTriangles, "triangles"},
        {OSG::SelectionFunctor::SelectLines, "lines"},
        {OSG::SelectionFunctor::SelectPoints, "points"}};
    for(auto const &[kind, name] : names)
        if((kinds & kind) != 0)
            words += (words.empty() ? "" : ",") + std::string(name);
    return words;
}

void write_asked(Tool::JsonWriter &json, Question const &question, OSG::UInt32 kinds)
{
    OSG::WindowView const &view = question.view;
    json.key("asked").beginObject();
    Tool::write_tuple(json, "from", view.from, 3);
    Tool::write_tuple(json, "at", view.at, 3);
    Tool::write_tuple(json, "up", view.up, 3);
    if(view.orthographicHeight)
        json.member("ortho", *view.orthographicHeight);
    else
        json.member("fov", view.fieldOfView);
    OSG::UInt32 const size[] = {view.width, view.height};
    json.key("size").array(size, 2);
    json.key(volume_key(question.kind)).beginArray();
    for(OSG::Pnt2f const &corner : question.corners)
        json.value(corner[0]).value(corner[1]);
    json.endArray();
    if(question.kind == Question::Kind::Pick)
        json.member("radius", question.radius);
    if(question.enclosed)
        json.member("enclosed", true);
    if(kinds != OSG::SelectionFunctor::SelectTriangles)
        json.member("kinds", words_of(kinds));
    json.endObject();
}
} // namespace

bool Report::open(std::string const &file)
{
    _out.open(file, std::ios::binary | std::ios::trunc);
    return _out.is_open();
}

void Report::answer(Question const &question, std::optional<OSG::PickRegion> const &region,
                    OSG::ScenePicker &picker, std::string const &file, bool isComplete)
{
    if(!isOpen())
        return;
    Tool::Selection selection;
    selection.eye = question.view.from;
    OSG::PickSelector *const selector = picker.selector();
    if(region && selector != nullptr)
    {
        Tool::Stopwatch const watch;
        selection.hits = &selector->select(*region, picker.settings(question.enclosed));
        selection.seconds = watch.seconds();
        selection.isIndexed = selector->wasIndexed();
    }
    Tool::JsonWriter json(_out);
    json.beginObject().member("event", name_of(question.kind)).member("file", file);
    write_asked(json, question, picker.getKinds());
    Tool::write_hits(json, selection, selector != nullptr ? selector->getRoot() : nullptr);
    json.member("complete", isComplete).member("indexed", selection.isIndexed).endObject();
    endLine();
}

void Report::saved(Saved const &saved)
{
    if(!isOpen())
        return;
    Tool::JsonWriter json(_out);
    json.beginObject()
        .member("event", "saved")
        .member("in", saved.in)
        .member("out", saved.out)
        .member("nodesBefore",
                saved.operations.empty() ? saved.nodes : saved.operations.front().nodesBefore)
        .member("nodesAfter", saved.nodes)
        .member("seconds", saved.seconds)
        .member("complete", saved.isComplete);
    Tool::write_operations(json, saved.operations);
    json.endObject();
    endLine();
}

// A reader that waits for a line finds it whole.
void Report::endLine()
{
    _out << '\n' << std::flush;
    _hasFailed = _hasFailed || !_out;
}
} // namespace Viewer
