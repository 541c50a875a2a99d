#include "ReadRecording.h"

#include <filesystem>
#include <fstream>

namespace Tool
{
OSG::RecordingResult read_recording_file(std::string const &file)
{
    std::error_code error;
    if(!std::filesystem::is_regular_file(file, error))
        return {std::nullopt, "is no regular file"};
    std::ifstream in(file, std::ios::binary);
    if(!in)
        return {std::nullopt, "cannot be opened"};
    return OSG::read_recording(in);
}
} // namespace Tool
