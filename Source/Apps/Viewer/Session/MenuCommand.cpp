#include "MenuCommand.h"

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
        {33, "Page Up"},  {34, "Page Down"}, {35, "End"},   {36, "Home"},   {46, "Delete"}};
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

bool run_key(Commands const &commands, Chord const &key, bool lettersAreTaken)
{
    if(key.code == 0 || (lettersAreTaken && is_plain(key)))
        return false;
    for(Command const &command : commands)
    {
        if(!(command.key == key))
            continue;
        if(command.isReady())
            command.run();
        return true;
    }
    return false;
}
} // namespace Viewer
