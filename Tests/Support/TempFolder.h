#pragma once

/// \file
/// A folder for the files of one test.

#include <filesystem>
#include <fstream>
#include <string>

#include <gtest/gtest.h>
#include <unistd.h>

namespace OSG::Test
{
/// Made empty, removed with everything in it.
class TempFolder
{
  public:
    TempFolder()
        : _root(std::filesystem::canonical(testing::TempDir()) /
                ("tolvanite-" + std::to_string(getpid())))
    {
        std::filesystem::remove_all(_root);
        std::filesystem::create_directories(_root);
    }
    ~TempFolder()
    {
        std::error_code error;
        std::filesystem::remove_all(_root, error);
    }
    TempFolder(TempFolder const &) = delete;
    TempFolder &operator=(TempFolder const &) = delete;

    std::string path(std::string const &name) const { return (_root / name).string(); }
    /// Folders in the name are made. Gives the full path.
    std::string write(std::string const &name, std::string const &text) const
    {
        std::filesystem::create_directories((_root / name).parent_path());
        std::ofstream(_root / name, std::ios::binary) << text;
        return path(name);
    }
    std::string makeFolder(std::string const &name) const
    {
        std::filesystem::create_directories(_root / name);
        return path(name);
    }

  private:
    std::filesystem::path _root;
};
} // namespace OSG::Test
