#include "RunMain.h"
#include "Viewer.h"

namespace
{
int run(int argc, char const *const *argv, Tool::Streams streams)
{
    CLI::App program("Shows a scene in a window.", "tolvanite-view");
    Tool::ViewerOptions options;
    Tool::add_common_options(program, options);
    Tool::add_viewer_options(program, options);
    try
    {
        program.parse(argc, argv);
    }
    catch(CLI::ParseError const &error)
    {
        if(error.get_exit_code() == 0) // --help
            return program.exit(error, streams.out, streams.err);
        Tool::complain(streams, error.what());
        return Tool::Misused;
    }
    Tool::apply_log_level(options);
    return Viewer::run_viewer(options, streams);
}
} // namespace

int main(int argc, char **argv) { return Tool::run_main(argc, argv, run); }
