#include "RunMain.h"

#include <csignal>
#include <cstdio>
#include <iostream>
#include <new>

#include "OSGSystem.h"

namespace Tool
{
namespace
{
int run_in_scene_graph(int argc, char **argv, int (*run)(int, char const *const *, Streams))
{
    std::ios::sync_with_stdio(false);
    // With this signal ignored, a file that exceeds the size limit gives an error, like a full
    // disk, instead of ending the program.
    std::signal(SIGXFSZ, SIG_IGN);
    OSG::startUp();
    int status = run(argc, argv, {std::cout, std::cerr});
    // The exit status is not 0 if the results could not be written.
    if(!std::cout.flush() && status == Success)
    {
        std::cerr << "tolvanite: cannot write the result\n";
        status = Failed;
    }
    OSG::shutDown();
    return status;
}
} // namespace

int run_main(int argc, char **argv, int (*run)(int, char const *const *, Streams))
{
    try
    {
        return run_in_scene_graph(argc, argv, run);
    }
    catch(std::bad_alloc const &)
    {
        std::fputs("tolvanite: out of memory\n", stderr);
        return Failed;
    }
}
} // namespace Tool
