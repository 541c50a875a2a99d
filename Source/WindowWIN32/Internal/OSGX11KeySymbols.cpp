#include "OSGX11KeySymbols.h"

#ifdef OSG_WITH_XCB

#include <X11/keysym.h>

namespace OSG
{
namespace
{
struct KeyRow
{
    Int16 code;
    std::array<UInt32, 2> symbols;
};
KeyRow const Keys[] = {
    {8, {XK_BackSpace, 0}},
    {9, {XK_Tab, XK_ISO_Left_Tab}},
    {13, {XK_Return, 0}},
    {16, {XK_Shift_L, XK_Shift_R}},
    {17, {XK_Control_L, XK_Control_R}},
    {18, {XK_Alt_L, XK_Alt_R}},
    {19, {XK_Pause, 0}},
    {20, {XK_Caps_Lock, 0}},
    {27, {XK_Escape, 0}},
    {32, {XK_space, 0}},
    {33, {XK_Page_Up, 0}},
    {34, {XK_Page_Down, 0}},
    {35, {XK_End, 0}},
    {36, {XK_Home, 0}},
    {37, {XK_Left, 0}},
    {38, {XK_Up, 0}},
    {39, {XK_Right, 0}},
    {40, {XK_Down, 0}},
    {44, {XK_Print, 0}},
    {45, {XK_Insert, 0}},
    {46, {XK_Delete, 0}},
};

// Ranges of codes whose symbols follow one another as well.
struct KeyRange
{
    Int16 first;
    Int16 last;
    UInt32 symbol;
};
KeyRange const Ranges[] = {{'0', '9', XK_0}, {'A', 'Z', XK_a}, {112, 135, XK_F1}};
} // namespace

std::array<UInt32, 2> x11_key_symbols(Int16 code)
{
    for(KeyRange const &range : Ranges)
    {
        if(code >= range.first && code <= range.last)
            return {range.symbol + static_cast<UInt32>(code - range.first), 0};
    }
    for(KeyRow const &row : Keys)
    {
        if(row.code == code)
            return row.symbols;
    }
    return {};
}
} // namespace OSG

#endif
