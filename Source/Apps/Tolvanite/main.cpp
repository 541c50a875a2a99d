#include <cstdio>
#include <iostream>
#include <new>

#include "OSGSystem.h"
#include "Tool.h"

int main(int argc, char **argv)
try
{
    std::ios::sync_with_stdio(false);
    OSG::startUp();
    int status = Tool::runTool(argc, argv, {std::cout, std::cerr});
    // A result that did not get through is no success.
    if(!std::cout.flush() && status == Tool::Success)
    {
        std::cerr << "tolvanite: cannot write the result\n";
        status = Tool::Failed;
    }
    OSG::shutDown();
    return status;
}
catch(std::bad_alloc const &)
{
    // Before the commands, which say so themselves, or behind them.
    std::fputs("tolvanite: out of memory\n", stderr);
    return Tool::Failed;
}
