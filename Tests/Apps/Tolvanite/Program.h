#pragma once

/// \file
/// Runs the program as a separate process.

#include <initializer_list>
#include <string>
#include <vector>

namespace Tool::Test
{
struct Outcome
{
    int status; ///< exit status; -1 if a signal ended the program
    std::string out;
    std::string err;
};

/// Runs the program with these arguments. Standard error is not a terminal.
Outcome run_program(std::vector<std::string> const &words);
/// The same with so much address space, which the caller need not have itself.
Outcome run_program_within(unsigned megabytes, std::vector<std::string> const &words);
/// The same with room for so many bytes in each file that it writes, a multiple of 512.
Outcome run_program_with_files_of(unsigned bytes, std::vector<std::string> const &words);
/// The same with standard output going to `file`.
Outcome run_program_into(std::string const &file, std::vector<std::string> const &words);

/// The model of ours.
std::string pavilion();

/// A file of that name and content in the folder for temporary files. The destructor removes it.
class TextFile
{
  public:
    TextFile(std::string const &name, std::string const &content);
    TextFile(TextFile const &) = delete;
    TextFile &operator=(TextFile const &) = delete;
    ~TextFile();
    std::string const &path() const { return _path; }

  private:
    std::string _path;
};
} // namespace Tool::Test
