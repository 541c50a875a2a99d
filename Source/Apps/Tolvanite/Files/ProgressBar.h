#pragma once

#include <ostream>

namespace Tool
{
/// One line on a terminal that fills from 0 to 100 percent, and is wiped when the bar ends, so that
/// only what follows it remains.
class ProgressBar
{
  public:
    enum class Show
    {
        Never,
        Always
    };
    /// Always on a terminal behind standard error that nobody asked to be quiet, else Never.
    static Show whereWanted(bool quiet);

    ProgressBar(std::ostream &out, Show show)
        : _out(out)
        , _show(show)
    {
    }
    ~ProgressBar();
    ProgressBar(ProgressBar const &) = delete;
    ProgressBar &operator=(ProgressBar const &) = delete;

    /// Draws where the percentage differs from what stands there; beyond 100 counts as 100.
    void set(unsigned percent);

  private:
    std::ostream &_out;
    Show _show;
    int _drawn = -1;
};
} // namespace Tool
