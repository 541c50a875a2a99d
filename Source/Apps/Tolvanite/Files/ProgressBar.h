#pragma once

#include <ostream>

namespace Tool
{
/// A line on a terminal that shows progress from 0 to 100 percent. The destructor wipes it.
class ProgressBar
{
  public:
    enum class Show
    {
        Never,
        Always
    };
    /// Always if standard error is a terminal and --quiet is not set, otherwise Never.
    static Show whereWanted(bool quiet);

    ProgressBar(std::ostream &out, Show show)
        : _out(out)
        , _show(show)
    {
    }
    ~ProgressBar();
    ProgressBar(ProgressBar const &) = delete;
    ProgressBar &operator=(ProgressBar const &) = delete;

    /// Draws the bar if the percentage has changed. Values above 100 count as 100.
    void set(unsigned percent);

  private:
    std::ostream &_out;
    Show _show;
    int _drawn = -1;
};
} // namespace Tool
