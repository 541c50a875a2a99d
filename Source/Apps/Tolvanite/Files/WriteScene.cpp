#include "WriteScene.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <vector>

#include "NumberText.h"
#include "OSGFileSuffix.h"
#include "OSGImage.h"
#include "OSGImageFileHandler.h"
#include "OSGImageFileType.h"
#include "OSGReachableMaterials.h"
#include "OSGSceneBounds.h"
#include "OSGSceneFileHandler.h"
#include "ReplaceFile.h"

namespace Tool
{
namespace fs = std::filesystem;

namespace
{
/// The pictures that the images of a scene were read from. Writing one again would only compress it
/// once more.
class SourcePictures
{
  public:
    explicit SourcePictures(OSG::Node *root)
    {
        OSG::ReachableMaterials const materials = OSG::materials_of(root);
        for(OSG::Image const *const image : materials.getImages())
            _files.emplace_back(image->getName());
    }

    bool contains(fs::path const &file) const
    {
        return std::any_of(_files.begin(), _files.end(),
                           [&file](fs::path const &source)
                           {
                               std::error_code error;
                               return source.filename() == file.filename() &&
                                      fs::equivalent(source, file, error);
                           });
    }

  private:
    std::vector<fs::path> _files;
};

bool can_be_written(std::string const &file)
{
    std::string const suffix = OSG::file_suffix(file);
    OSG::ImageFileType const *const type =
        OSG::ImageFileHandlerBase::the()->getFileType(suffix.c_str());
    return suffix == "mtl" || (type != nullptr && type->canWrite());
}

// A picture whose format nobody writes is named and left out. Every other failure ends the write.
bool write_files(OSG::Node *root, std::string const &path, Streams streams)
{
    OSG::SceneFileHandlerBase &handler = *OSG::SceneFileHandlerBase::the();
    if(!handler.write(root, path.c_str()))
        return false;
    for(std::string const &file : handler.getUnwrittenFiles())
    {
        if(can_be_written(file))
            return false;
        complain(streams, "cannot write " + fs::path(file).filename().string() +
                              ": no format writes '" + OSG::file_suffix(file) + "'");
    }
    return true;
}
// Numbers in texts have six digits, whose unit is coarse far from the origin.
void warn_of_rounding(OSG::Node *root, Streams streams)
{
    constexpr OSG::Real64 Digits = 6;
    constexpr OSG::Real64 Noticeable = 1e-4; // of the scene's size
    OSG::BoxVolume const box = OSG::bounds_of(root).box;
    if(box.isEmpty())
        return;
    OSG::Real64 farthest = 0;
    OSG::Real64 size = 0;
    for(int i = 0; i < 3; ++i)
    {
        OSG::Real64 const min = box.getMin()[i];
        OSG::Real64 const max = box.getMax()[i];
        farthest = std::max({farthest, std::abs(min), std::abs(max)});
        size = std::max(size, max - min);
    }
    OSG::Real64 const rounding = std::pow(10, std::floor(std::log10(farthest)) - Digits + 1) / 2;
    if(farthest > 0 && rounding > Noticeable * size)
        warn(streams, "Numbers have six digits in this format: corners move by up to " +
                          number_text(static_cast<float>(rounding)) + " units.");
}

void warn_of_losses(OSG::Node *root, std::string const &target, Streams streams)
{
    for(std::string const &loss : OSG::SceneFileHandlerBase::the()->getLosses())
        warn(streams, loss);
    if(OSG::file_suffix(target) == "obj")
        warn_of_rounding(root, streams);
}
} // namespace

bool is_written(std::string const &suffix)
{
    return OSG::SceneFileHandlerBase::the()->getFileType(
               suffix.c_str(), OSG::IOFileTypeBase::WriteSupported) != nullptr;
}

std::string write_scene(OSG::Node *root, std::string const &target, Streams streams)
{
    SourcePictures const pictures(root);
    std::string reason = replace_file(
        target, [&](std::string const &path) { return write_files(root, path, streams); },
        [&pictures](fs::path const &file) { return pictures.contains(file); });
    if(reason.empty())
        warn_of_losses(root, target, streams);
    return reason;
}
} // namespace Tool
