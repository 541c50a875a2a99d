#include "MenuCommand.h"

#include <string_view>
#include <utility>

#include "OSGPointerTool.h"

namespace Viewer
{
namespace
{
constexpr OSG::Int16 F1 = 112;
constexpr OSG::Int16 F12 = 123;

std::string key_name(OSG::Int16 code)
{
    constexpr std::pair<OSG::Int16, char const *> Names[] = {
        {8, "Backspace"}, {9, "Tab"},        {13, "Enter"}, {27, "Escape"}, {32, "Space"},
        {33, "Page Up"},  {34, "Page Down"}, {35, "End"},   {36, "Home"},   {37, "Left"},
        {38, "Up"},       {39, "Right"},     {40, "Down"},  {46, "Delete"}};
    if(code >= F1 && code <= F12)
        return 'F' + std::to_string(code - F1 + 1);
    for(auto const &[known, name] : Names)
        if(known == code)
            return name;
    return std::string(1, static_cast<char>(code));
}

bool is_letter_or_digit(OSG::Int16 code)
{
    return (code >= 'A' && code <= 'Z') || (code >= '0' && code <= '9');
}
} // namespace

std::string text_of(Chord const &chord)
{
    if(chord.code == 0)
        return {};
    std::string text;
    std::pair<OSG::UInt16, char const *> const names[] = {{OSG::PointerTool::Control, "Ctrl+"},
                                                          {OSG::PointerTool::Alt, "Alt+"},
                                                          {OSG::PointerTool::Shift, "Shift+"}};
    for(auto const &[bit, name] : names)
        if((chord.modifiers & bit) != 0)
            text += name;
    return text + key_name(chord.code);
}

bool is_plain(Chord const &chord)
{
    return is_letter_or_digit(chord.code) && (chord.modifiers & OSG::PointerTool::Control) == 0;
}

namespace
{
// Function keys and chords with Control and Alt are none of a text's, but for those of its edits.
bool is_typed(Chord const &chord)
{
    constexpr std::string_view Edits = "ACVXYZ";
    bool const hasControl = (chord.modifiers & OSG::PointerTool::Control) != 0;
    if(hasControl && chord.code < F1 &&
       (!is_letter_or_digit(chord.code) ||
        Edits.find(static_cast<char>(chord.code)) != std::string_view::npos))
        return true;
    bool const isFunction = chord.code >= F1 && chord.code <= F12;
    return !hasControl && !isFunction && (chord.modifiers & OSG::PointerTool::Alt) == 0;
}
} // namespace

bool run_key(Commands const &commands, Chord const &key, KeyOwner owner)
{
    bool const isTaken =
        (owner == KeyOwner::Engine && is_plain(key)) || (owner == KeyOwner::Text && is_typed(key));
    if(key.code == 0 || isTaken)
        return false;
    for(Command const &command : commands)
    {
        if(!(command.key == key))
            continue;
        if(command.run && command.isReady())
            command.run();
        return true;
    }
    return false;
}
} // namespace Viewer
