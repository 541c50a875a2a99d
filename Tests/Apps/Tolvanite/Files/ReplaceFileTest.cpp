// A file is replaced as a whole or not at all, whatever interrupts the writing.

#include <cerrno>
#include <chrono>
#include <csignal>
#include <fstream>
#include <functional>
#include <sstream>
#include <thread>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "FileContent.h"
#include "ReplaceFile.h"
#include "TempFolder.h"

namespace Tool::Test
{
namespace
{
using OSG::Test::content_of;
namespace fs = std::filesystem;

bool write_text(std::string const &path, std::string const &text)
{
    std::ofstream out(path, std::ios::binary);
    out << text;
    return bool(out.flush());
}

class ReplaceFile : public testing::Test
{
  protected:
    std::size_t fileCount() const
    {
        return static_cast<std::size_t>(
            std::distance(fs::directory_iterator(folder.path("")), fs::directory_iterator()));
    }

    OSG::Test::TempFolder folder;
    std::string const target = folder.write("scene.osb", "old");
};

TEST_F(ReplaceFile, WritesInAFolderOfItsOwnUnderTheFinalName)
{
    fs::path written;
    EXPECT_EQ(replace_file(target,
                           [&written](std::string const &path)
                           {
                               written = path;
                               EXPECT_EQ(fs::status(written.parent_path()).permissions(),
                                         fs::perms::owner_all);
                               return write_text(path, "new");
                           }),
              "");
    EXPECT_EQ(written.filename(), "scene.osb");
    EXPECT_EQ(written.parent_path().parent_path(), fs::path(target).parent_path());
    EXPECT_EQ(content_of(target), "new");
    EXPECT_EQ(fileCount(), 1u);
}

TEST_F(ReplaceFile, TwoFoldersHaveNamesThatDiffer)
{
    std::vector<std::string> paths;
    auto const note = [&paths](std::string const &path)
    {
        paths.push_back(path);
        return write_text(path, "new");
    };
    replace_file(target, note);
    replace_file(target, note);
    ASSERT_EQ(paths.size(), 2u);
    EXPECT_NE(paths[0], paths[1]);
}

TEST_F(ReplaceFile, WhatBelongsToItGoesBesideTheTarget)
{
    EXPECT_EQ(replace_file(target,
                           [](std::string const &path) {
                               return write_text(path, "new") &&
                                      write_text(fs::path(path).replace_extension("mtl"), "more");
                           }),
              "");
    EXPECT_EQ(content_of(target), "new");
    EXPECT_EQ(content_of(folder.path("scene.mtl")), "more");
    EXPECT_EQ(fileCount(), 2u);
}

TEST_F(ReplaceFile, TakesNamesAsLongAsTheFileSystemDoes)
{
    for(std::size_t const length : {248u, 255u})
    {
        std::string const name = folder.path(std::string(length - 4, 'n') + ".osb");
        EXPECT_EQ(replace_file(name, [](std::string const &path) { return write_text(path, "x"); }),
                  "");
        EXPECT_EQ(content_of(name), "x");
    }
}

TEST_F(ReplaceFile, SaysWhyItCannot)
{
    auto const write = [](std::string const &path) { return write_text(path, "new"); };
    EXPECT_EQ(replace_file(folder.path("none/scene.osb"), write), "No such file or directory");
    EXPECT_EQ(replace_file(folder.path(""), write), "it is a folder");
    // A pipe of the test's own: where this fails, no device of the machine is replaced.
    std::string const pipe = folder.path("pipe");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_EQ(replace_file(pipe, write), "it is no regular file");
    fs::remove(pipe);
    EXPECT_EQ(replace_file(target,
                           [](std::string const &)
                           {
                               errno = ENOSPC;
                               return false;
                           }),
              "No space left on device");
    EXPECT_EQ(content_of(target), "old");
    EXPECT_EQ(fileCount(), 1u);
}

TEST_F(ReplaceFile, AnExceptionLeavesEverythingAsItWas)
{
    EXPECT_THROW(replace_file(target,
                              [](std::string const &path) -> bool
                              {
                                  write_text(path, "half");
                                  throw std::bad_alloc();
                              }),
                 std::bad_alloc);
    EXPECT_EQ(content_of(target), "old");
    EXPECT_EQ(fileCount(), 1u);
}

TEST_F(ReplaceFile, SignalsAreAsTheyWereAfterwards)
{
    sigset_t before;
    sigset_t after;
    pthread_sigmask(SIG_SETMASK, nullptr, &before);
    replace_file(target, [](std::string const &path) { return write_text(path, "new"); });
    pthread_sigmask(SIG_SETMASK, nullptr, &after);
    for(int const signal : {SIGHUP, SIGINT, SIGQUIT, SIGTERM})
        EXPECT_EQ(sigismember(&after, signal), sigismember(&before, signal));
}

// --- further files ---

/// Writes a text into the file and into one beside it that ends in "mtl".
std::function<bool(std::string const &path)> writer_of_two(std::string const &text)
{
    return [text](std::string const &path)
    { return write_text(path, text) && write_text(fs::path(path).replace_extension("mtl"), text); };
}

TEST_F(ReplaceFile, AFolderInTheWayOfOneFileLeavesAllAsTheyWere)
{
    folder.makeFolder("scene.mtl");
    folder.write("a.png", "old");
    folder.write("z.png", "old");
    auto const write = [](std::string const &path)
    {
        fs::path const parent = fs::path(path).parent_path();
        return writer_of_two("new")(path) && write_text(parent / "a.png", "new") &&
               write_text(parent / "z.png", "new");
    };
    EXPECT_EQ(replace_file(target, write), "scene.mtl: Is a directory");
    EXPECT_EQ(content_of(target), "old");
    EXPECT_EQ(content_of(folder.path("a.png")), "old");
    EXPECT_EQ(content_of(folder.path("z.png")), "old");
    EXPECT_EQ(fileCount(), 4u);
}

TEST_F(ReplaceFile, EachFileGetsThePermissionsOfTheOneThatItReplaces)
{
    fs::perms const own = fs::perms::owner_read | fs::perms::owner_write;
    fs::perms const all = fs::perms::all;
    fs::permissions(target, all);
    fs::permissions(folder.write("scene.mtl", "old"), own);
    EXPECT_EQ(replace_file(target, writer_of_two("new")), "");
    EXPECT_EQ(content_of(folder.path("scene.mtl")), "new");
    EXPECT_EQ(fs::status(target).permissions(), all);
    EXPECT_EQ(fs::status(folder.path("scene.mtl")).permissions(), own);
}

TEST_F(ReplaceFile, FurtherFilesOfALinkGoBesideTheLink)
{
    folder.write("store/real.osb", "old");
    fs::create_symlink("store/real.osb", folder.path("link.osb"));
    EXPECT_EQ(replace_file(folder.path("link.osb"), writer_of_two("new")), "");
    EXPECT_TRUE(fs::is_symlink(folder.path("link.osb")));
    EXPECT_EQ(content_of(folder.path("store/real.osb")), "new");
    EXPECT_EQ(content_of(folder.path("link.mtl")), "new");
    EXPECT_FALSE(fs::exists(folder.path("store/link.mtl")));
}

TEST_F(ReplaceFile, OfRunsAtOnceAllFilesAreThoseOfOneOfThem)
{
    for(int round = 0; round < 300; ++round)
    {
        std::vector<pid_t> children;
        for(char const *text : {"one", "two", "three"})
        {
            children.push_back(fork());
            if(children.back() == 0)
                _exit(replace_file(target, writer_of_two(text)).empty() ? 0 : 1);
        }
        for(pid_t const child : children)
        {
            int status = 0;
            waitpid(child, &status, 0);
            ASSERT_EQ(status, 0);
        }
        ASSERT_EQ(content_of(target), content_of(folder.path("scene.mtl"))) << round;
    }
}

// --- signals ---

// Writes file after file until a signal ends it. `ignored` does not.
[[noreturn]] void write_for_ever(std::string const &target, int started, int ignored)
{
    // Whoever runs the tests may have made them ignore signals.
    for(int const signal : {SIGHUP, SIGINT, SIGTERM})
        std::signal(signal, signal == ignored ? SIG_IGN : SIG_DFL);
    replace_file(target,
                 [started](std::string const &path)
                 {
                     write_text(path, "half");
                     if(write(started, "x", 1) != 1)
                         _exit(1);
                     for(int i = 0;; ++i)
                         write_text(path + std::to_string(i % 100), "more");
                     return true;
                 });
    _exit(0);
}

// Runs write_for_ever() and sends it signals, the first one after so many milliseconds. Gives the
// signal that ended it.
int signal_that_ends(std::string const &target, int milliseconds, std::vector<int> const &signals,
                     int ignored = 0)
{
    int started[2];
    EXPECT_EQ(pipe(started), 0);
    pid_t const child = fork();
    if(child == 0)
        write_for_ever(target, started[1], ignored);
    char byte;
    EXPECT_EQ(read(started[0], &byte, 1), 1);
    std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
    for(int const signal : signals)
        kill(child, signal);
    int status = 0;
    waitpid(child, &status, 0);
    close(started[0]);
    close(started[1]);
    return WIFSIGNALED(status) ? WTERMSIG(status) : 0;
}

TEST_F(ReplaceFile, ASignalInTheMiddleLeavesTheTargetAndNothingBesideIt)
{
    for(int const signal : {SIGHUP, SIGINT, SIGTERM})
    {
        for(int const milliseconds : {0, 1, 3, 10})
        {
            EXPECT_EQ(signal_that_ends(target, milliseconds, {signal}), signal);
            EXPECT_EQ(content_of(target), "old");
            EXPECT_EQ(fileCount(), 1u);
        }
    }
}

TEST_F(ReplaceFile, ASignalThatIsIgnoredDoesNotEndIt)
{
    EXPECT_EQ(signal_that_ends(target, 1, {SIGHUP, SIGTERM}, SIGHUP), SIGTERM);
    EXPECT_EQ(content_of(target), "old");
    EXPECT_EQ(fileCount(), 1u);
}
} // namespace
} // namespace Tool::Test
