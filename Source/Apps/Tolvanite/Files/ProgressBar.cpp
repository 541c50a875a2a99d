#include "ProgressBar.h"

#include <algorithm>
#include <string>

#include <unistd.h>

namespace Tool
{
ProgressBar::Show ProgressBar::whereWanted(bool quiet)
{
    return !quiet && isatty(STDERR_FILENO) != 0 ? Show::Always : Show::Never;
}

ProgressBar::~ProgressBar()
{
    if(_drawn >= 0)
        _out << "\r\033[K" << std::flush;
}

void ProgressBar::set(unsigned percent)
{
    int const wanted = static_cast<int>(std::min(percent, 100u));
    if(_show == Show::Never || wanted == _drawn)
        return;
    _drawn = wanted;
    std::string const filled(wanted / 2, '#');
    _out << "\r[" << filled << std::string(50 - filled.size(), ' ') << "] " << wanted << " %"
         << std::flush;
}
} // namespace Tool
