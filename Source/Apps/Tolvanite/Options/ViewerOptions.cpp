#include "ViewerOptions.h"

#include "OSGFileSuffix.h"
#include "OSGNamedEngine.h"

namespace Tool
{
namespace
{
bool parse_size(std::string const &text, Pair &size)
{
    constexpr int Largest = 32767; // of positions in events
    return parse_pair(text, 'x', size) && size.first >= 1 && size.second >= 1 &&
           size.first <= Largest && size.second <= Largest;
}

std::string check_size(std::string const &text)
{
    Pair size;
    return parse_size(text, size) ? std::string() : text + " is not WxH in pixels up to 32767";
}

std::string check_picture(std::string const &file)
{
    return OSG::file_suffix(file) == "png" ? std::string() : file + " is no PNG file";
}
} // namespace

void add_viewer_options(CLI::App &command, ViewerOptions &options)
{
    command.add_option("FILE", options.file, "Scene file")->check(CLI::ExistingPath);
    command.add_option("--size", options.size, "Size of the window in pixels, WxH")
        ->check(check_size)
        ->capture_default_str();
    command
        .add_option("--engine", options.engine,
                    "Engine that moves the camera: cad, fly, copter or walk")
        ->check(CLI::IsMember(OSG::engine_names()));
    command.add_option("--play", options.play, "Play a recording of input events")
        ->check(CLI::ExistingFile);
    command.add_option("--report", options.report,
                       "Write each pick, band, lasso and saved file as a line of JSON");
    command.add_option("--screenshot", options.screenshot, "Save a picture after the recording")
        ->check(check_picture);
    command.add_flag("--exit", options.exit, "End after the recording and the screenshot");
}

Pair window_size(ViewerOptions const &options)
{
    Pair size;
    parse_size(options.size, size);
    return size;
}
} // namespace Tool
