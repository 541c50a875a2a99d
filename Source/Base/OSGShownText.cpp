#include "OSGShownText.h"

namespace OSG
{
namespace
{
bool is_continuation(std::string_view text, std::size_t at)
{
    return at < text.size() && (static_cast<unsigned char>(text[at]) & 0xC0) == 0x80;
}

/// Size in bytes of the UTF-8 character at `at`; 1 for a byte that begins no character. Overlong
/// forms and surrogates do not count as characters, because some terminals decode them to control
/// characters.
std::size_t character_size(std::string_view text, std::size_t at)
{
    unsigned const lead = static_cast<unsigned char>(text[at]);
    std::size_t const size = lead >= 0xC2 && lead <= 0xDF   ? 2
                             : lead >= 0xE0 && lead <= 0xEF ? 3
                             : lead >= 0xF0 && lead <= 0xF4 ? 4
                                                            : 1;
    for(std::size_t i = 1; i < size; ++i)
    {
        if(!is_continuation(text, at + i))
            return 1;
    }
    unsigned const second = size > 1 ? static_cast<unsigned char>(text[at + 1]) : 0;
    bool const overlong = (lead == 0xE0 && second < 0xA0) || (lead == 0xF0 && second < 0x90);
    bool const beyond = (lead == 0xED && second > 0x9F) || (lead == 0xF4 && second > 0x8F);
    return overlong || beyond ? 1 : size;
}

void append_escaped(std::string &result, unsigned code)
{
    constexpr char Digits[] = "0123456789ABCDEF";
    result += {'\\', 'x', Digits[code >> 4], Digits[code & 15]};
}
} // namespace

std::string shown_text(std::string_view text)
{
    std::string result;
    result.reserve(text.size());
    for(std::size_t at = 0; at < text.size();)
    {
        std::size_t const size = character_size(text, at);
        unsigned const lead = static_cast<unsigned char>(text[at]);
        unsigned const last = static_cast<unsigned char>(text[at + size - 1]);
        // U+0080 to U+009F are the bytes C2 80 to C2 9F.
        if(size == 2 && lead == 0xC2 && last <= 0x9F)
            append_escaped(result, last);
        else if(size == 1 && (lead < 0x20 || lead == 0x7F || (lead >= 0x80 && lead <= 0x9F)))
            append_escaped(result, lead);
        else
            result.append(text, at, size);
        at += size;
    }
    return result;
}
} // namespace OSG
