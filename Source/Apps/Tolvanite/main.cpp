#include <csignal>
#include <cstdio>
#include <iostream>
#include <new>

#include "OSGSystem.h"
#include "Tool.h"

namespace
{
int run(int argc, char **argv)
{
    std::ios::sync_with_stdio(false);
    // With this signal ignored, a file that exceeds the size limit gives an error, like a full
    // disk, instead of ending the program.
    std::signal(SIGXFSZ, SIG_IGN);
    OSG::startUp();
    int status = Tool::run_tool(argc, argv, {std::cout, std::cerr});
    // The exit status is not 0 if the results could not be written.
    if(!std::cout.flush() && status == Tool::Success)
    {
        std::cerr << "tolvanite: cannot write the result\n";
        status = Tool::Failed;
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
