#include "PanelCommands.h"

#include "OSGPointerTool.h"

namespace Viewer
{
namespace
{
constexpr OSG::UInt16 Control = OSG::PointerTool::Control;
constexpr OSG::UInt16 Shift = OSG::PointerTool::Shift;
constexpr OSG::Int16 F1 = 112;

void add_toggle(Commands &commands, char const *menu, char const *name, Chord const &key,
                bool &flag)
{
    commands.push_back({.menu = menu,
                        .name = name,
                        .key = key,
                        .run = [&flag] { flag = !flag; },
                        .isOn = [&flag] { return flag; }});
}
} // namespace

void add_dialog_commands(Commands &commands, Session &session, OpenPanels &open)
{
    using Purpose = FileChooser::Purpose;
    Settings &settings = session.settings;
    OSG::SceneDocument &document = session.document;
    commands.push_back({.menu = "File",
                        .name = "Open...",
                        .key = {'O', Control},
                        .run = [&]
                        {
                            bool const isFirst =
                                document.getFile().empty() && !settings.recentFiles.empty();
                            open.files.begin(Purpose::Open, isFirst ? settings.recentFiles.front()
                                                                    : document.getFile());
                        }});
    commands.push_back({.menu = "File",
                        .name = "Open recent",
                        .canRun = [&settings] { return !settings.recentFiles.empty(); },
                        .choices = [&settings] { return settings.recentFiles; },
                        .choose = [&session](std::string const &file) { session.open(file); }});
    commands.push_back({.menu = "File",
                        .name = "Save as...",
                        .key = {'S', Control},
                        .run = [&] { open.files.begin(Purpose::Save, document.getFile()); },
                        .canRun = [&document] { return document.getScene() != nullptr; }});
}

void add_show_commands(Commands &commands, Session &session)
{
    Picking &picking = session.picking;
    auto const hasSelection = [&picking] { return !picking.getSelection().isEmpty(); };
    commands.push_back({.menu = "Show",
                        .name = "Hide selection",
                        .key = {'H', 0},
                        .run =
                            [&session]
                        {
                            session.picking.hideSelection();
                            session.demand.request();
                        },
                        .canRun = hasSelection});
    commands.push_back({.menu = "Show",
                        .name = "Isolate selection",
                        .key = {'I', 0},
                        .run =
                            [&session]
                        {
                            session.picking.isolateSelection();
                            session.demand.request();
                        },
                        .canRun = hasSelection});
    commands.push_back({.menu = "Show",
                        .name = "Show all",
                        .key = {'A', 0},
                        .run =
                            [&session]
                        {
                            session.picking.showAll();
                            session.demand.request();
                        },
                        .canRun = [&picking] { return picking.isAnythingHidden(); }});
}

void add_style_commands(Commands &commands, Session &session)
{
    bool isFirst = true;
    for(StyleName const &name : style_names())
    {
        commands.push_back(
            {.menu = "Show",
             .name = name.title,
             .run =
                 [&session, style = name.style]
             {
                 session.settings.style = style;
                 session.applySettings();
             },
             .isOn = [&session, style = name.style] { return session.settings.style == style; },
             .beginsGroup = isFirst});
        isFirst = false;
    }
    commands.push_back({.menu = "Show",
                        .name = "Sharp edges",
                        .key = {'E', 0},
                        .run =
                            [&session]
                        {
                            session.settings.showsEdges = !session.settings.showsEdges;
                            session.applySettings();
                        },
                        .isOn = [&session] { return session.settings.showsEdges; }});
}

void add_panel_commands(Commands &commands, OpenPanels &open)
{
    add_toggle(commands, "Panels", "Scene tree", {'T', Shift}, open.tree);
    add_toggle(commands, "Panels", "Selection panel", {'S', Shift}, open.selection);
    add_toggle(commands, "Panels", "Sections", {'X', Shift}, open.sections);
    add_toggle(commands, "Panels", "Walk console", {'W', Shift}, open.walk);
    add_toggle(commands, "Panels", "Operations", {'O', Shift}, open.operations);
    add_toggle(commands, "Panels", "Settings", {'P', Shift}, open.settings);
    add_toggle(commands, "Panels", "View cube", {'C', Shift}, open.cube);
    add_toggle(commands, "Help", "Keys", {F1, 0}, open.help);
}
} // namespace Viewer
