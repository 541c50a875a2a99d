#include <csignal>
#include <cstdio>
#include <iostream>
#include <new>

#include "OSGSystem.h"
#include "Viewer.h"

namespace
{
int run(int argc, char **argv)
{
    std::signal(SIGXFSZ, SIG_IGN); // a file beyond the size limit is an error like a full disk
    CLI::App program("Shows a scene in a window.", "tolvanite-view");
    Tool::ViewerOptions options;
    Tool::add_common_options(program, options);
    Tool::add_viewer_options(program, options);
    Tool::Streams const streams{std::cout, std::cerr};
    try
    {
        program.parse(argc, argv);
    }
    catch(CLI::ParseError const &error)
    {
        if(error.get_exit_code() == 0) // --help
            return program.exit(error, std::cout, std::cerr);
        Tool::complain(streams, error.what());
        return Tool::Misused;
    }
    OSG::startUp();
    int status = Tool::Failed;
    try
    {
        Tool::apply_log_level(options);
        status = Viewer::run_viewer(options, streams);
    }
    catch(std::bad_alloc const &)
    {
        Tool::complain(streams, "out of memory");
    }
    OSG::shutDown();
    return status;
}
} // namespace

int main(int argc, char **argv)
{
    try
    {
        return run(argc, argv);
    }
    catch(std::bad_alloc const &)
    {
        std::fputs("tolvanite: out of memory\n", stderr);
        return Tool::Failed;
    }
}
