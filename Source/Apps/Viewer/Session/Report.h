#pragma once

#include <fstream>
#include <optional>
#include <string>
#include <vector>

#include "OSGGraphOpAccount.h"
#include "OSGScenePicker.h"
#include "Picking.h"

namespace Viewer
{
/// What a saved file has become.
struct Saved
{
    std::string in; ///< the file that was shown; empty for none
    std::string out;
    OSG::UInt64 nodes = 0; ///< in the saved file
    double seconds = 0;
    bool isComplete = false;                          ///< the shown file was read to its end
    std::vector<OSG::GraphOpAccount> operations = {}; ///< since `in` was read or saved
};

/// A file with a line of JSON for each answer. The keys are those of `tolvanite select` and
/// `tolvanite convert`; "event" says what a line tells of, and "asked" is the question as a line
/// for `tolvanite select --queries`.
class Report
{
  public:
    /// False where the file cannot be written.
    bool open(std::string const &file);
    bool isOpen() const { return _out.is_open(); }
    /// Whether a line could not be written.
    bool hasFailed() const { return _hasFailed; }

    /// Answers the question once more, as `tolvanite select` would: the foremost hit of each node.
    void answer(Question const &question, std::optional<OSG::PickRegion> const &region,
                OSG::ScenePicker &picker, std::string const &file, bool isComplete);
    void saved(Saved const &saved);

  private:
    void endLine();

    std::ofstream _out;
    bool _hasFailed = false;
};
} // namespace Viewer
