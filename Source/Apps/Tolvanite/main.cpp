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
    // A file that grows too large fails as a full disk does, with its reason.
    std::signal(SIGXFSZ, SIG_IGN);
    OSG::startUp();
    int status = Tool::run_tool(argc, argv, {std::cout, std::cerr});
    // A result that did not get through is no success.
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
