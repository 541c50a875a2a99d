#pragma once

#include <fstream>
#include <string>

namespace Tool
{
/// A file that takes its target's place only when it is complete. Until then it lies beside it
/// under another name; one that was not finished goes without a trace.
class OutputFile
{
  public:
    explicit OutputFile(std::string const &target);
    OutputFile(OutputFile const &) = delete;
    OutputFile &operator=(OutputFile const &) = delete;
    ~OutputFile();

    /// Fails from the start where the folder takes no file, or the target is something else than a
    /// file.
    std::ostream &stream() { return _out; }
    /// Closes the file and puts it into the target's place. False where anything went wrong.
    bool finish();

  private:
    std::string _target;
    std::string _beside;
    std::ofstream _out;
};
} // namespace Tool
