#include "ViewerCommands.h"

#include "OSGPointerTool.h"
#include "PanelCommands.h"

namespace Viewer
{
namespace
{
constexpr OSG::UInt16 Control = OSG::PointerTool::Control;
constexpr OSG::UInt16 Shift = OSG::PointerTool::Shift;
constexpr OSG::Int16 Home = 36;
constexpr OSG::Int16 Left = 37;
constexpr OSG::Int16 Right = 39;
constexpr OSG::Int16 F5 = 116;

void add_file_commands(Commands &commands, Session &session, std::function<void()> const &quit)
{
    commands.push_back({.menu = "File",
                        .name = "Read again",
                        .key = {F5, 0},
                        .run = [&session] { session.open(session.document.getFile()); },
                        .canRun = [&session] { return !session.document.getFile().empty(); }});
    commands.push_back(
        {.menu = "File", .name = "Screenshot", .key = {'S', Control | Shift}, .run = [&session] {
             session.wantsScreenshot = true;
         }});
    commands.push_back(
        {.menu = "File", .name = "Quit", .key = {'Q', Control}, .run = quit, .beginsGroup = true});
}

void add_view_commands(Commands &commands, Session &session)
{
    OSG::ViewDriver &driver = session.driver;
    commands.push_back({.menu = "View", .name = "Whole scene", .key = {Home, 0}, .run = [&driver] {
                            driver.fit();
                        }});
    commands.push_back({.menu = "View", .name = "Selection", .key = {'F', 0}, .run = [&session] {
                            session.fitSelection();
                        }});
    std::pair<char const *, OSG::StandardView> const standard[] = {
        {"Front", OSG::StandardView::Front},
        {"Back", OSG::StandardView::Back},
        {"Left", OSG::StandardView::Left},
        {"Right", OSG::StandardView::Right},
        {"Top", OSG::StandardView::Top},
        {"Bottom", OSG::StandardView::Bottom},
        {"Isometric", OSG::StandardView::Isometric}};
    OSG::Int16 digit = '1';
    for(auto const &[name, view] : standard)
    {
        commands.push_back({.menu = "View",
                            .name = name,
                            .key = {digit, 0},
                            .run = [&driver, view = view] { driver.look(view); },
                            .beginsGroup = digit == '1'});
        ++digit;
    }
    commands.push_back({.menu = "View",
                        .name = "Perspective",
                        .key = {'P', 0},
                        .run = [&driver] { driver.setOrthographic(!driver.isOrthographic()); },
                        .isOn = [&driver] { return !driver.isOrthographic(); },
                        // A recording has one projection, and one engine.
                        .canRun = [&session] { return !session.recordings.isRecording(); },
                        .beginsGroup = true});
    commands.push_back({.menu = "View",
                        .name = "View before",
                        .key = {Left, OSG::PointerTool::Alt},
                        .run = [&driver] { driver.undo(); },
                        .canRun = [&driver] { return driver.canUndo(); },
                        .beginsGroup = true});
    commands.push_back({.menu = "View",
                        .name = "View after",
                        .key = {Right, OSG::PointerTool::Alt},
                        .run = [&driver] { driver.redo(); },
                        .canRun = [&driver] { return driver.canRedo(); }});
}

void add_tool_commands(Commands &commands, Session &session)
{
    using Kind = ToolBox::Tool;
    std::pair<Kind, OSG::Int16> const tools[] = {
        {Kind::Navigate, 'N'}, {Kind::Pick, 'K'},  {Kind::Band, 'B'}, {Kind::Lasso, 'L'},
        {Kind::Distance, 'M'}, {Kind::Angle, 'G'}, {Kind::Zoom, 'Z'}};
    for(auto const &[tool, letter] : tools)
        commands.push_back(
            {.menu = "Tool",
             .name = name_of(tool),
             .key = {letter, Shift},
             .run = [&session, tool = tool] { session.tools.take(tool); },
             .isOn = [&session, tool = tool] { return session.tools.getTool() == tool; }});
}

void add_engine_commands(Commands &commands, Session &session)
{
    constexpr OSG::Int16 F9 = 120; // a walk has F2, F3, F7 and F8 itself
    std::pair<char const *, char const *> const engines[] = {
        {"Trackball", "cad"}, {"Fly", "fly"}, {"Copter", "copter"}, {"Walk", "walk"}};
    OSG::Int16 key = F9;
    for(auto const &[title, name] : engines)
    {
        commands.push_back({.menu = "Move",
                            .name = title,
                            .key = {key, 0},
                            .run =
                                [&session, name = std::string(name)]
                            {
                                if(session.useEngine(name))
                                    session.settings.engine = name;
                            },
                            .isOn = [&session, name = std::string(name)]
                            { return session.engines.getName() == name; },
                            .canRun =
                                [&session, isWalk = std::string(name) == "walk"]
                            {
                                return !session.recordings.isRecording() &&
                                       (!isWalk || session.engines.walkMissing().empty());
                            }});
        ++key;
    }
}
// Also in the walk console: a person who walks has no pointer.
void add_walk_commands(Commands &commands, Session &session)
{
    OSG::WalkConsole &console = session.console;
    auto const hasScene = [&session] { return session.document.getScene() != nullptr; };
    auto const hasMarks = [&console] { return !console.getMarkLabels().empty(); };
    commands.push_back({.menu = "Walk",
                        .name = "Add mark",
                        .key = {'M', Control},
                        .run = [&session] { session.addMark({}); },
                        .canRun = hasScene});
    commands.push_back({.menu = "Walk",
                        .name = "First mark",
                        .key = {'1', Control},
                        .run = [&console] { console.goToFirstMark(); },
                        .canRun = hasMarks});
    commands.push_back({.menu = "Walk",
                        .name = "Next mark",
                        .key = {'N', Control},
                        .run = [&console] { console.goToNextMark(); },
                        .canRun = hasMarks});
    commands.push_back({.menu = "Walk",
                        .name = "Mark before",
                        .key = {'B', Control},
                        .run = [&console] { console.goToPreviousMark(); },
                        .canRun = hasMarks});
    commands.push_back({.menu = "Walk",
                        .name = "Record the way",
                        .key = {'W', Control},
                        .run = [&session] { session.toggleWay(); },
                        .isOn = [&console] { return console.isRecording(); },
                        .canRun = hasScene,
                        .beginsGroup = true});
    commands.push_back({.menu = "Walk",
                        .name = "Play the way",
                        .key = {'G', Control},
                        .run = [&console] { console.startPlaying(); },
                        .isOn = [&console] { return console.isPlaying(); },
                        .canRun = hasScene});
    commands.push_back({.menu = "Walk",
                        .name = "Go home",
                        .key = {'H', Control},
                        .run = [&console] { console.goHome(); },
                        .canRun = [&console] { return console.hasHome(); },
                        .beginsGroup = true});
}

void add_record_commands(Commands &commands, Session &session)
{
    Recordings &recordings = session.recordings;
    commands.push_back({.menu = "Record",
                        .name = "Record input",
                        .key = {'R', Control},
                        .run = [&session] { session.toggleRecording(); },
                        .isOn = [&recordings] { return recordings.isRecording(); },
                        .canRun = [&recordings] { return !recordings.isPlaying(); }});
    commands.push_back(
        {.menu = "Record",
         .name = "Play the last recording",
         .key = {'P', Control},
         .run = [&session]
         { session.play(Session::recordingFile().string(), Recordings::Pace::AsRecorded); },
         .canRun = [&recordings] { return !recordings.isBusy(); }});
    commands.push_back({.menu = "Record",
                        .name = "Stop playing",
                        .run = [&recordings] { recordings.stopPlaying(); },
                        .canRun = [&recordings] { return recordings.isPlaying(); }});
}

using Adder = void (*)(Commands &, Session &);

// The user does not move the camera of a recording that is played.
void add_held(Commands &commands, Session &session, Adder add)
{
    std::size_t const begin = commands.size();
    add(commands, session);
    for(std::size_t i = begin; i < commands.size(); ++i)
    {
        auto const canRun = commands[i].canRun;
        commands[i].canRun = [&session, canRun]
        { return !session.recordings.isPlaying() && (!canRun || canRun()); };
    }
}
} // namespace

Commands make_commands(Session &session, OpenPanels &open, std::function<void()> const &quit)
{
    Commands commands;
    add_dialog_commands(commands, session, open);
    add_file_commands(commands, session, quit);
    add_held(commands, session, add_view_commands);
    add_show_commands(commands, session);
    add_style_commands(commands, session);
    add_tool_commands(commands, session);
    add_held(commands, session, add_engine_commands);
    add_held(commands, session, add_walk_commands);
    add_record_commands(commands, session);
    add_panel_commands(commands, open);
    return commands;
}
} // namespace Viewer
