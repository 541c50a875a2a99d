#include "NumberText.h"

#include <charconv>

namespace Tool
{
std::string number_text(float number)
{
    char text[32];
    return std::string(text, std::to_chars(text, text + sizeof text, number).ptr);
}
} // namespace Tool
